// The parent's end of the sibling messenger, as the stand-in host plays it:
// it makes the shared pool, gives each sibling a write area when it says
// IAmUp, introduces the siblings to one another, answers RequestPeer, tells
// the others when a child dies, and runs the shutdown handshake.
//
// Siblings may be child processes (ChildProcess, with child_environment())
// or messengers inside the host's own process (built with configuration());
// both announce themselves with IAmUp. One thread.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "io/sibling_messenger.h"

namespace host {

class ParentMessenger : public io::SiblingMessenger {
 public:
  // A pool of `pool_size` bytes whose write areas are `area_size` bytes each
  // (both multiples of 8), with FIFOs at `fifoprefix` + "." + id. Raises
  // error::ESystemError when the system refuses the pool or the FIFO.
  static std::unique_ptr<ParentMessenger> create(const std::string& fifoprefix, uint64_t pool_size,
                                                 uint64_t area_size);
  // Closes the pool and removes every FIFO that a sibling left behind.
  ~ParentMessenger() override;

  // What a sibling in this process is built with.
  const io::siblingmessenger_conf_t& configuration() const { return conf(); }
  // The variables that a child process finds its siblings by ("smem::...").
  std::map<std::string, std::string> child_environment() const;
  int pool_descriptor() const { return conf().mapfile; }

  // Asked on RequestPeer for a sibling that isn't running: true means it is
  // being started and will say IAmUp (its SiblingAt then delivers what waits
  // for it); false, or no function, answers SiblingDied.
  void set_peer_starter(std::function<bool(int id)> starter) { starter_ = std::move(starter); }

  // A child has ended: its area is taken back, the others get SiblingDied,
  // and its FIFO is removed.
  void child_died(int id);
  // The sibling said IAmUp and has not ended or finished its shutdown.
  bool running(int id) const { return running_.count(id) != 0; }
  // The sibling's shutdown is complete (its final AckShutdown came).
  bool finished(int id) const { return finished_.count(id) != 0; }

 protected:
  bool handle_parent_signal(const io::Signal& signal) override;

 private:
  struct Area {
    uint64_t start;
    uint64_t size;
  };

  ParentMessenger(const io::siblingmessenger_conf_t& conf, uint64_t area_size);
  Area allocate(int id);
  void introduce(int to, int owner);
  void on_i_am_up(int id);
  void on_request_peer(int from, int id);
  void on_init_shutdown(int id);
  void on_ack_shutdown(int from, int id);

  const uint64_t area_size_;
  std::map<int, Area> areas_;  // Sibling -> its write area.
  std::set<int> running_;
  std::set<int> finished_;
  std::set<int> known_;                    // Every id whose FIFO may exist.
  std::set<int> starting_;                 // Started on RequestPeer, not yet up.
  std::map<int, std::set<int>> shutting_;  // Sibling -> peers yet to acknowledge.
  std::function<bool(int)> starter_;
};

}  // namespace host
