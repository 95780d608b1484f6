// The sibling messenger: event streams between the server's processes over
// one shared memory pool and one FIFO per process.
//
// Each process writes only into its own write area of the pool (see
// block_chain.h) and tells the reader with a MessageAt signal on the
// reader's FIFO; the reader reads the block in place and answers
// AckMessageAt, after which the writer frees it. The parent (id 0) hands out
// the areas and tells every sibling of every other (sibling_signal.h).
//
// This class is the child's side; the parent's side derives from it (the
// stand-in host does that) and handles the signals that only a parent gets.
//
// One thread. The messenger is the back of a stacked selectable: its fronts
// are SomeSibling (ready while any input waits), and each sibling's input
// and output stream. Its underlying selectables are its own FIFO's reader
// and, while they have something to send, the FIFO writers to its peers.
//
// Misuse and a corrupted pool are fatal assertions with the words given in
// the .cc files; a peer that is gone shows as io::EEndOfStream on its
// streams, a peer not yet connected as io::ENoConnection inside.
#pragma once

#include <cstdint>
#include <deque>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "io/block_chain.h"
#include "io/parent_watch.h"
#include "io/pipe_stream.h"
#include "io/sibling_config.h"
#include "io/sibling_signal.h"
#include "io/stacked.h"
#include "io/stream.h"

namespace io {

class SiblingImplementation;
class SiblingMessenger;

// One message (or part of one) waiting to be read: the block at `offset` of
// `size` bytes from `sibling`. Offset and size both 0: the null message,
// which stands for the end of that sibling's stream.
struct InputEntry {
  int sibling;
  uint64_t offset;
  uint64_t size;
  bool is_null() const { return offset == 0 && size == 0; }
};
using InputList = std::list<InputEntry>;

// The input stream from one sibling: lends the blocks of its messages in
// order, in place in the pool.
class SiblingIStream : public IStream, public StackedSelectableFront {
 public:
  explicit SiblingIStream(SiblingImplementation& peer);
  void name(std::string& out) const override;
  // A message is there, or the peer has failed.
  bool is_ready() const override;
  // Raises io::ENotReady when not ready, io::EEndOfStream at the null
  // message or after the peer failed.
  size_t readBegin(const char*& ptr) override;
  // When a message is used up, acknowledges it to the writer.
  void readCommit(size_t n) override;
  void close() override {}

 private:
  friend class SiblingMessenger;
  void reset() {
    has_current_ = false;
    consumed_ = 0;
  }

  SiblingImplementation& peer_;
  bool has_current_ = false;
  InputList::iterator current_;
  uint64_t consumed_ = 0;
};

// The output stream to one sibling: lends the free block of the own write
// area; each commit becomes one message block.
class SiblingOStream : public OStream, public StackedSelectableFront {
 public:
  explicit SiblingOStream(SiblingImplementation& peer);
  void name(std::string& out) const override;
  // The own area has a free block, or the peer has failed (so that a writer
  // gets the error instead of waiting).
  bool is_ready() const override;
  // Raises io::ENotReady when not ready, io::EEndOfStream when the peer has
  // failed or a shutdown forbids writing.
  size_t writeBegin(char*& ptr) override;
  // Announces the block to the peer; a commit of 0 bytes announces nothing.
  void writeCommit(size_t n) override;
  bool flushStep() override { return is_ready(); }
  void close() override {}

 private:
  friend class SiblingMessenger;
  SiblingImplementation& peer_;
  std::deque<uint64_t> waiting_;  // Blocks whose MessageAt waits for the peer's FIFO.
  bool ready_ = true;             // Cleared for good by completeShutdown.
};

// Everything about one peer.
class SiblingImplementation {
 public:
  SiblingImplementation(SiblingMessenger& messenger, int id);
  SiblingImplementation(const SiblingImplementation&) = delete;
  SiblingImplementation& operator=(const SiblingImplementation&) = delete;

  int id() const { return id_; }
  SiblingMessenger& messenger() const { return messenger_; }
  SiblingIStream& input() { return input_; }
  SiblingOStream& output() { return output_; }
  bool failed() const { return failed_; }
  bool has_fifo() const { return has_fifo_; }

 private:
  friend class SiblingMessenger;
  friend class SiblingIStream;
  friend class SiblingOStream;

  SiblingMessenger& messenger_;
  const int id_;
  bool write_in_progress_ = false;
  bool shutdown_pending_ = false;
  bool has_fifo_ = false;
  bool failed_ = false;
  bool watched_ = false;       // The FIFO writer is an underlying selectable.
  std::deque<uint64_t> acks_;  // AckMessageAt offsets to send.
  PipeOStream writer_;         // "OutputSignalWriter", to the peer's FIFO.
  SiblingIStream input_;
  SiblingOStream output_;
};

class SiblingMessenger : public StackedSelectableBack {
 public:
  // A child: reads the environment under `prefix`, maps the pool, makes its
  // FIFO, connects to the parent and sends IAmUp. It watches its parent
  // process: when that ends, the parent counts as failed and its stream
  // ends, as on SiblingDied(0). Raises error::ESystemError or
  // error::EParseError when the environment or the system fails it, and
  // error::ESystemError "Parent process has ended" when the parent is gone
  // already.
  SiblingMessenger(int id, const std::string& prefix);
  // The same with the configuration given: a sibling that lives in the
  // parent's own process (the stand-in host), or, with id 0, the parent,
  // which makes its FIFO and does nothing more.
  SiblingMessenger(int id, const siblingmessenger_conf_t& conf);
  ~SiblingMessenger() override;

  int id() const { return my_sibling_id_; }
  // The peer `id`, made when first needed; lives as long as the messenger.
  SiblingImplementation& sibling(int id);
  // The sibling to read from next: 0 when the parent has failed, else the
  // sender of the oldest input. Fatal on an empty input list.
  int next_ready_sibling();
  // Ready while any input waits; what the event queue waits on.
  Selectable& some_sibling() { return some_sibling_; }
  // The reader of `id` has caught the end of its stream: the null message is
  // removed, so that other siblings' input behind it comes forward.
  void take_end_of_stream(int id);

  // Asks the parent to shut this process down; fatal when one is running.
  void initiateShutdown();
  // After the main loop: the final word to the parent. Fatal unless the
  // shutdown was acknowledged, and when called twice.
  void completeShutdown();
  bool shutdown_acknowledged() const { return shutdown_ && shutdown_->acknowledged; }

  void underlyingIsReady(Selectable& s) override;

  // The own area has a free block.
  bool write_ready() const { return chain_ && chain_->ready(); }
  const PoolView& pool() const { return pool_; }
  // Blocks sent and not yet acknowledged.
  size_t outstanding() const { return outstanding_.size(); }

 protected:
  // A signal that only the parent gets (IAmUp, RequestPeer, and InitShutdown
  // and AckShutdown from children). Returns false in a child, where they are
  // fatal or handled as a child handles them.
  virtual bool handle_parent_signal(const Signal& signal);

  // Sends a signal to `peer`: AckMessageAt on the peer's own list, the rest
  // in order on the signal queue. Raises io::ENoConnection when the peer has
  // no FIFO.
  void send_signal(int peer, Signal signal);
  // Connects to the FIFO of peer `id`. Raises error::ESystemError "Cannot
  // open sibling id N FIFO for writing". With `reconnect`, a peer that had a
  // FIFO before (a restarted child) is connected anew, and what its old self
  // left is dropped, instead of being a fatal assertion; a first connection
  // keeps what the peer sent before its introduction came.
  void openFifo(int id, bool reconnect = false);
  // Takes the area as this process's own write area.
  void take_own_area(uint64_t start, uint64_t size);
  // Notes the write area of `owner` (own or a peer's).
  void enter_area(int owner, uint64_t start, uint64_t size);
  // What a SiblingDied(id) does.
  void sibling_died(int id);
  // A write to peer `id` failed.
  void siblingGone(int id);
  // Forgets the peer's input, queued signals and acknowledgements.
  void clear_state(SiblingImplementation& peer);
  // True while input, queued signals or acknowledgements concern `peer`.
  bool under_way(const SiblingImplementation& peer) const;
  Signal own_signal(SignalKind kind, int id) const {
    return make_id_signal(kind, id, my_sibling_id_);
  }
  bool has_sibling(int id) const { return siblings_.count(id) != 0; }
  const siblingmessenger_conf_t& conf() const { return conf_; }

 private:
  friend class SiblingIStream;
  friend class SiblingOStream;

  // "SomeSibling": ready while the input list isn't empty.
  class SomeSibling : public StackedSelectableFront {
   public:
    explicit SomeSibling(SiblingMessenger& m) : StackedSelectableFront(m), m_(m) {}
    ~SomeSibling() override { leaveSelectors(); }
    void name(std::string& out) const override { out = "SomeSibling"; }
    bool is_ready() const override { return !m_.input_.empty(); }

   private:
    SiblingMessenger& m_;
  };

  struct ShutdownState {
    bool acknowledged = false;
    bool completed = false;
  };

  SiblingMessenger(int id, const siblingmessenger_conf_t& conf,
                   std::unique_ptr<ParentWatch> parent_watch);
  // The parent process has ended: what SiblingDied(0) does, once.
  void parent_ended();
  void read_signals();
  void handle_signal(const Signal& signal);
  void on_sibling_at(int id);
  void on_ack_message(const Signal& signal);
  void on_init_shutdown(int id);
  void free_block(uint64_t offset, int from);
  void shutdown_check();
  void pump(SiblingImplementation& peer);
  void pump_queue();
  void watch(SiblingImplementation& peer, bool on);
  void append_null(SiblingImplementation& peer);
  void update_input(SiblingImplementation& peer);
  // Commits n bytes of the write block for `peer` and announces them.
  void commit_message(SiblingImplementation& peer, uint64_t n);
  void announce(SiblingImplementation& peer, uint64_t offset);
  void check_shutdown_pending(SiblingImplementation& peer);

  // Constant after construction.
  const int my_sibling_id_;
  const siblingmessenger_conf_t conf_;
  SharedMemory memory_;
  PoolView pool_;
  std::unique_ptr<OwnFifo> fifo_;
  std::unique_ptr<PipeIStream> input_reader_;  // "InputSignalReader".
  // A child process's watch on its parent, underlying until it fired; null
  // in the parent and in siblings that live in the parent's process.
  std::unique_ptr<ParentWatch> parent_watch_;

  // Write side.
  std::unique_ptr<BlockChain> chain_;  // The own area, once the parent gave it.
  std::map<uint64_t, int> write_areas_;
  std::map<uint64_t, int> outstanding_;  // Own block -> reader.

  // Signals.
  std::map<int, std::unique_ptr<SiblingImplementation>> siblings_;
  std::deque<std::pair<int, Signal>> signal_queue_;
  std::vector<Signal> stack_;
  int blocked_sibling_ = kNoSibling;
  std::optional<ShutdownState> shutdown_;

  // Read side.
  InputList input_;
  SomeSibling some_sibling_;

  static constexpr int kNoSibling = -1000;
};

}  // namespace io
