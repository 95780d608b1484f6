// The event queue of a child process: sends events to siblings and hands
// out the events that arrive, over the sibling messenger.
//
// Events that arrive while a dialog waits for its reply are kept on the
// pending list, in arrival order, and come out of next_event() afterwards;
// the pending index finds a reply on that list by (request number, sender).
// The queue is the back of a stacked selectable whose front, in_front(), is
// ready while events wait on the pending list or the messenger has input;
// an outer selector may wait on it.
//
// One thread. The process has one queue; its main hands it to what talks to
// the siblings (queues/qdialog.h) and to the logger (set_log_queue).
#pragma once

#include <array>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <set>

#include "io/selector.h"
#include "io/sibling_messenger.h"
#include "io/stacked.h"
#include "protocol/ioprim.h"
#include "queues/event.h"

namespace queues {

class childqueue : public io::StackedSelectableBack {
 public:
  // The selectable through which an outer selector waits for an event.
  class InFront : public io::StackedSelectableFront {
   public:
    explicit InFront(childqueue& q) : io::StackedSelectableFront(q), q_(q) {}
    ~InFront() override { leaveSelectors(); }
    void name(std::string& out) const override { out = "childqueue"; }
    bool is_ready() const override { return q_.ready_; }

   private:
    childqueue& q_;
  };

  // The messenger must outlive the queue.
  explicit childqueue(io::SiblingMessenger& messenger);
  ~childqueue() override;
  childqueue(const childqueue&) = delete;
  childqueue& operator=(const childqueue&) = delete;

  // A fresh request number; never 0.
  uint32_t new_request_number();
  // Writes `e` to its `dest` and flushes. Raises what the stream raises:
  // io::EEndOfStream for a sibling that is gone, error::ESystemError.
  void send(const event& e);
  // The next event for the main loop, oldest pending first, else read from
  // the messenger (blocking). Null when the sibling read from has reached
  // the end of its stream; is_at_end() tells which.
  std::unique_ptr<event> next_event();
  // Blocks until the reply numbered `request` from `peer` has come. Other
  // events go on the pending list meanwhile. Null when `peer` reaches the
  // end of its stream, and when the parent does: with the parent gone no
  // sibling answers any more (the stand-in host's siblings die with it).
  std::unique_ptr<event> wait_reply(uint32_t request, queue_t peer);
  bool is_at_end(queue_t q) const;
  // Starts the messenger's shutdown towards the parent.
  void shutdown();

  io::Selectable& in_front() { return front_; }
  io::SiblingMessenger& messenger() { return messenger_; }
  size_t pending() const { return pending_.size(); }

  void underlyingIsReady(io::Selectable& s) override;

 private:
  struct Key {
    uint32_t inresponse;
    int32_t dest;
    bool operator<(const Key& o) const {
      return inresponse != o.inresponse ? inresponse < o.inresponse : dest < o.dest;
    }
  };
  using Pending = std::list<std::unique_ptr<event>>;

  protocol::ioprim& prim(queue_t q);
  std::unique_ptr<event> read_one();
  std::unique_ptr<event> take_pending(Pending::iterator it);
  void rearm();

  io::SiblingMessenger& messenger_;
  io::BareSelector selector_;
  std::map<int32_t, std::unique_ptr<protocol::ioprim>> prims_;
  Pending pending_;
  std::multimap<Key, Pending::iterator> index_;
  uint32_t next_request_ = 1;
  std::array<bool, 23> at_end_{};
  bool ready_ = false;
  InFront front_;
};

// Sends log messages to the parent as SYSTEM_LOG_REQUEST events over `q`;
// null sends them to standard error again.
void set_log_queue(childqueue* q);

}  // namespace queues
