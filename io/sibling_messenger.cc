#include "io/sibling_messenger.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/error.h"
#include "base/fatal.h"
#include "base/log.h"
#include "io/errors.h"
#include "io/selector.h"
#include "io/system_error.h"

namespace io {

namespace {

void check_id(int id) { TAVREL_ASSERT(id >= -127 && id <= 128, "my_sibling_id is out of range."); }

}  // namespace

SiblingImplementation::SiblingImplementation(SiblingMessenger& messenger, int id)
    : messenger_(messenger),
      id_(id),
      writer_("OutputSignalWriter", -1),
      input_(*this),
      output_(*this) {}

// The parent is watched from before its FIFO is opened: a parent that
// ends after that open is seen by the watch.
SiblingMessenger::SiblingMessenger(int id, const std::string& prefix)
    : SiblingMessenger(id, siblingmessenger_conf_t::from_environment(prefix),
                       std::make_unique<ParentWatch>()) {}

SiblingMessenger::SiblingMessenger(int id, const siblingmessenger_conf_t& conf)
    : SiblingMessenger(id, conf, nullptr) {}

SiblingMessenger::SiblingMessenger(int id, const siblingmessenger_conf_t& conf,
                                   std::unique_ptr<ParentWatch> parent_watch)
    : my_sibling_id_((check_id(id), id)),
      conf_(conf),
      memory_(conf.mapfile, conf.mapsize),
      pool_(memory_.base(), memory_.size()),
      some_sibling_(*this) {
  uint32_t magic;
  std::memcpy(&magic, memory_.base(), sizeof(magic));
  TAVREL_ASSERT(magic == kPoolMagic, "Wrong header of shared memory pool");
  if (parent_watch && parent_watch->is_ready())
    throw error::ESystemError("Parent process has ended");
  fifo_ = std::make_unique<OwnFifo>(fifo_path(conf_.fifoprefix, id));
  input_reader_ = std::make_unique<PipeIStream>("InputSignalReader", fifo_->take_reader());
  set_underlying(input_reader_.get(), true);
  parent_watch_ = std::move(parent_watch);
  if (parent_watch_) set_underlying(parent_watch_.get(), true);
  if (id == 0) return;
  openFifo(0);
  TAVREL_ASSERT(has_sibling(0), "No parent siblingimplementation");
  send_signal(0, own_signal(SignalKind::IAmUp, 0));
}

SiblingMessenger::~SiblingMessenger() {
  for (auto& [id, peer] : siblings_) {
    if (peer->watched_) set_underlying(&peer->writer_, false);
  }
  set_underlying(input_reader_.get(), false);
  if (parent_watch_) set_underlying(parent_watch_.get(), false);
}

SiblingImplementation& SiblingMessenger::sibling(int id) {
  auto it = siblings_.find(id);
  if (it == siblings_.end()) {
    it = siblings_.emplace(id, std::make_unique<SiblingImplementation>(*this, id)).first;
  }
  return *it->second;
}

int SiblingMessenger::next_ready_sibling() {
  auto parent = siblings_.find(0);
  if (parent != siblings_.end() && parent->second->failed_) return 0;
  TAVREL_ASSERT(!input_.empty(), "dequeue SomeSibling on empty list without process error");
  return input_.front().sibling;
}

// --- Signals in ---

void SiblingMessenger::underlyingIsReady(Selectable& s) {
  if (&s == input_reader_.get()) {
    read_signals();
    return;
  }
  if (parent_watch_ && &s == parent_watch_.get()) {
    parent_ended();
    return;
  }
  for (auto& [id, peer] : siblings_) {
    if (&s == &peer->writer_) {
      pump(*peer);
      pump_queue();
      return;
    }
  }
  assertion_failed("io::SiblingMessenger::underlyingIsReady called with unknown selectable " +
                   name_of(s));
}

void SiblingMessenger::read_signals() {
  for (;;) {
    const char* data;
    size_t n = input_reader_->readBegin(data);
    if (n == 0) return;
    TAVREL_ASSERT(n % sizeof(Signal) == 0,
                  "Signal read of " + std::to_string(n) + " bytes is not a multiple of 8");
    // Copy the signals out first: handling one may read the FIFO again.
    std::vector<Signal> signals(n / sizeof(Signal));
    std::memcpy(signals.data(), data, n);
    input_reader_->readCommit(n);
    for (const Signal& s : signals) handle_signal(s);
  }
}

bool SiblingMessenger::handle_parent_signal(const Signal&) { return false; }

void SiblingMessenger::handle_signal(const Signal& signal) {
  if (my_sibling_id_ == 0 && handle_parent_signal(signal)) return;
  switch (signal.kind()) {
    case SignalKind::MessageAt: {
      SiblingImplementation& from = sibling(signal.sender);
      input_.push_back({signal.sender, signal.value(), pool_.size_at(signal.value())});
      update_input(from);
      break;
    }
    case SignalKind::AckMessageAt:
      on_ack_message(signal);
      break;
    case SignalKind::ExtraOffset:
    case SignalKind::ExtraSize:
    case SignalKind::ExtraSiblingId:
      stack_.push_back(signal);
      if (stack_.size() >= 3) {
        std::string text = "Too big a stack: ";
        for (const Signal& s : stack_) text += s.text() + " ";
        std::fprintf(stderr, "%s\n", text.c_str());
        std::abort();
      }
      break;
    case SignalKind::SiblingAt:
      on_sibling_at(signal.id());
      break;
    case SignalKind::InitShutdown:
      on_init_shutdown(signal.id());
      break;
    case SignalKind::AckShutdown:
      TAVREL_ASSERT(shutdown_.has_value(), "Protocol violation; got AckShutdown unexpectedly");
      shutdown_->acknowledged = true;
      shutdown_check();
      break;
    case SignalKind::SiblingDied:
      sibling_died(signal.id());
      break;
    case SignalKind::RequestPeer:
      assertion_failed("Got RequestPeer but we're a child");
    case SignalKind::IAmUp:
      assertion_failed("Got IAmUp but we're a child");
  }
}

void SiblingMessenger::on_sibling_at(int id) {
  TAVREL_ASSERT(stack_.size() == 2,
                "Stack size is " + std::to_string(stack_.size()) + " on SiblingAt");
  TAVREL_ASSERT(stack_[0].kind() == SignalKind::ExtraOffset, "No ExtraOffset on SiblingAt");
  TAVREL_ASSERT(stack_[1].kind() == SignalKind::ExtraSize, "No ExtraSize on SiblingAt");
  uint64_t start = stack_[0].value();
  uint64_t size = stack_[1].value();
  stack_.clear();
  enter_area(id, start, size);
  if (id == my_sibling_id_) take_own_area(start, size);
  if (id == 0 || my_sibling_id_ == 0 || id == my_sibling_id_) return;
  openFifo(id);
  SiblingImplementation& peer = sibling(id);
  if (!peer.acks_.empty()) pump(peer);
  while (!peer.output_.waiting_.empty()) {
    uint64_t offset = peer.output_.waiting_.front();
    peer.output_.waiting_.pop_front();
    send_signal(id, make_value_signal(SignalKind::MessageAt, offset, my_sibling_id_));
  }
}

void SiblingMessenger::enter_area(int owner, uint64_t start, uint64_t size) {
  TAVREL_ASSERT(start % 8 == 0 && size % 8 == 0 && start + size <= pool_.pool_size(),
                "Bad write area " + std::to_string(start) + "+" + std::to_string(size));
  auto [it, inserted] = write_areas_.emplace(start, owner);
  TAVREL_ASSERT(inserted || it->second == owner, "Failed insertion in into write_areas");
}

void SiblingMessenger::take_own_area(uint64_t start, uint64_t size) {
  chain_ = std::make_unique<BlockChain>(memory_.base(), memory_.size(), start, size);
  chain_->init();
}

void SiblingMessenger::on_ack_message(const Signal& signal) {
  free_block(signal.value(), signal.sender);
  shutdown_check();
}

void SiblingMessenger::free_block(uint64_t offset, int from) {
  auto peer = siblings_.find(from);
  if (peer != siblings_.end() && peer->second->failed_ && peer->second->shutdown_pending_) return;
  auto it = outstanding_.find(offset);
  TAVREL_ASSERT(it != outstanding_.end(),
                "Not one of my messages: " +
                    make_value_signal(SignalKind::AckMessageAt, offset, from).text());
  outstanding_.erase(it);
  chain_->release(offset);
}

void SiblingMessenger::on_init_shutdown(int id) {
  auto it = siblings_.find(id);
  TAVREL_ASSERT(it != siblings_.end(), "si is end");
  SiblingImplementation& peer = *it->second;
  if (under_way(peer)) {
    peer.shutdown_pending_ = true;
    return;
  }
  clear_state(peer);
  send_signal(0, own_signal(SignalKind::AckShutdown, id));
}

void SiblingMessenger::sibling_died(int id) {
  std::vector<uint64_t> sent_to_dead;
  for (auto [offset, reader] : outstanding_) {
    if (reader == id) sent_to_dead.push_back(offset);
  }
  for (uint64_t offset : sent_to_dead) {
    outstanding_.erase(offset);
    chain_->release(offset);
  }
  SiblingImplementation& peer = sibling(id);
  peer.failed_ = true;
  append_null(peer);
  shutdown_check();
}

void SiblingMessenger::parent_ended() {
  set_underlying(parent_watch_.get(), false);
  if (!sibling(0).failed_) sibling_died(0);
}

// --- Input lists ---

void SiblingMessenger::append_null(SiblingImplementation& peer) {
  input_.push_back({peer.id_, 0, 0});
  update_input(peer);
}

void SiblingMessenger::update_input(SiblingImplementation& peer) {
  SiblingIStream& in = peer.input_;
  if (!in.has_current_) {
    for (auto it = input_.begin(); it != input_.end(); ++it) {
      if (it->sibling == peer.id_) {
        in.current_ = it;
        in.has_current_ = true;
        in.consumed_ = 0;
        break;
      }
    }
  }
  check_shutdown_pending(peer);
}

void SiblingMessenger::check_shutdown_pending(SiblingImplementation& peer) {
  if (!peer.shutdown_pending_ || under_way(peer)) return;
  peer.shutdown_pending_ = false;
  clear_state(peer);
  send_signal(0, own_signal(SignalKind::AckShutdown, peer.id_));
}

bool SiblingMessenger::under_way(const SiblingImplementation& peer) const {
  if (!peer.acks_.empty()) return true;
  for (const InputEntry& e : input_) {
    if (e.sibling == peer.id_) return true;
  }
  for (const auto& [to, signal] : signal_queue_) {
    if (to == peer.id_) return true;
  }
  return false;
}

void SiblingMessenger::clear_state(SiblingImplementation& peer) {
  input_.remove_if([&](const InputEntry& e) { return e.sibling == peer.id_; });
  peer.input_.reset();
  std::erase_if(signal_queue_, [&](const auto& item) { return item.first == peer.id_; });
  peer.acks_.clear();
}

void SiblingMessenger::take_end_of_stream(int id) {
  SiblingIStream& in = sibling(id).input_;
  if (in.has_current_ && in.current_->is_null()) {
    input_.erase(in.current_);
    in.reset();
    update_input(sibling(id));
  }
}

// --- Signals out ---

void SiblingMessenger::openFifo(int id, bool reconnect) {
  SiblingImplementation& peer = sibling(id);
  TAVREL_ASSERT(reconnect || !peer.has_fifo_, "Sibling " + std::to_string(my_sibling_id_) +
                                                  " openFifo called with open FIFO for sibling " +
                                                  std::to_string(id));
  int fd = open_fifo_for_writing(fifo_path(conf_.fifoprefix, id));
  if (fd < 0) {
    raise_system_error("Cannot open sibling id " + std::to_string(id) + " FIFO for writing", -fd);
  }
  if (peer.watched_) watch(peer, false);
  if (blocked_sibling_ == id) blocked_sibling_ = kNoSibling;
  peer.writer_.set_handle(fd);
  peer.has_fifo_ = true;
  peer.failed_ = false;
  // A peer's first message may arrive before we hear where it lives: it and
  // its pending acknowledgement are kept for the newly opened FIFO. Only a
  // reconnect to a restarted peer drops what the old one left.
  if (reconnect) clear_state(peer);
}

void SiblingMessenger::send_signal(int peer_id, Signal signal) {
  TAVREL_ASSERT(peer_id != my_sibling_id_, "We could not write ourselves");
  SiblingImplementation& peer = sibling(peer_id);
  if (signal.kind() == SignalKind::AckMessageAt) {
    peer.acks_.push_back(signal.value());
    if (!peer.has_fifo_) return;  // Sent once the peer's FIFO is opened.
  } else {
    if (!peer.has_fifo_) throw ENoConnection("No connection to other SiblingMessenger");
    signal_queue_.emplace_back(peer_id, signal);
  }
  if (blocked_sibling_ != kNoSibling && blocked_sibling_ != peer_id) return;
  pump(peer);
  pump_queue();
}

void SiblingMessenger::pump_queue() {
  while (!signal_queue_.empty() && blocked_sibling_ == kNoSibling) {
    int next = signal_queue_.front().first;
    size_t before = signal_queue_.size();
    pump(sibling(next));
    if (signal_queue_.size() == before) return;  // Nothing moved: wait for the writer.
  }
}

void SiblingMessenger::pump(SiblingImplementation& peer) {
  try {
    char* buffer;
    size_t room = peer.writer_.writeBegin(buffer);
    size_t used = 0;
    auto put = [&](const Signal& s) {
      std::memcpy(buffer + used, &s, sizeof(s));
      used += sizeof(s);
    };
    while (room - used >= sizeof(Signal) && !peer.acks_.empty()) {
      put(make_value_signal(SignalKind::AckMessageAt, peer.acks_.front(), my_sibling_id_));
      peer.acks_.pop_front();
    }
    while (room - used >= sizeof(Signal) && !signal_queue_.empty() &&
           signal_queue_.front().first == peer.id_) {
      put(signal_queue_.front().second);
      signal_queue_.pop_front();
    }
    peer.writer_.writeCommit(used);
    bool flushed = peer.writer_.flushStep();
    bool left =
        !peer.acks_.empty() || (!signal_queue_.empty() && signal_queue_.front().first == peer.id_);
    if (left || !flushed) {
      watch(peer, true);
      TAVREL_ASSERT(blocked_sibling_ == kNoSibling || blocked_sibling_ == peer.id_,
                    "Two blocked siblings at once");
      blocked_sibling_ = peer.id_;
      return;
    }
    watch(peer, false);
    if (blocked_sibling_ == peer.id_) blocked_sibling_ = kNoSibling;
    check_shutdown_pending(peer);
  } catch (const error::Exception& e) {
    if (log_tracing()) {
      log("Caught exception: '" + e.text() +
              "' while flushing sibling: " + std::to_string(peer.id_),
          kLogTrace);
    }
    siblingGone(peer.id_);
  }
}

void SiblingMessenger::watch(SiblingImplementation& peer, bool on) {
  if (peer.watched_ == on) return;
  peer.watched_ = on;
  set_underlying(&peer.writer_, on);
}

void SiblingMessenger::siblingGone(int id) {
  SiblingImplementation& peer = sibling(id);
  bool parent_involved = id == 0 || my_sibling_id_ == 0;
  if (parent_involved && peer.failed_) return;
  if (blocked_sibling_ == id) {
    watch(peer, false);
    blocked_sibling_ = kNoSibling;
  }
  // The peer's queued signals and unread input are of no use any more; the
  // null message then tells its reader that the stream has ended.
  clear_state(peer);
  if (parent_involved) {
    peer.failed_ = true;
    append_null(peer);
  }
}

// --- Writing messages ---

void SiblingMessenger::commit_message(SiblingImplementation& peer, uint64_t n) {
  uint64_t offset = chain_->commit(n);
  outstanding_[offset] = peer.id_;
  announce(peer, offset);
}

void SiblingMessenger::announce(SiblingImplementation& peer, uint64_t offset) {
  try {
    send_signal(peer.id_, make_value_signal(SignalKind::MessageAt, offset, my_sibling_id_));
  } catch (const ENoConnection&) {
    peer.output_.waiting_.push_back(offset);
    send_signal(0, own_signal(SignalKind::RequestPeer, peer.id_));
  }
}

// --- Shutdown ---

void SiblingMessenger::initiateShutdown() {
  TAVREL_ASSERT(!shutdown_.has_value(), "Shutdown already in progress...");
  shutdown_ = ShutdownState{};
  send_signal(0, own_signal(SignalKind::InitShutdown, my_sibling_id_));
}

void SiblingMessenger::shutdown_check() {
  if (!shutdown_ || !shutdown_->acknowledged || !outstanding_.empty()) return;
  for (auto& [id, peer] : siblings_) {
    bool has_null = false;
    for (const InputEntry& e : input_) has_null |= e.sibling == id && e.is_null();
    if (!has_null) append_null(*peer);
  }
}

void SiblingMessenger::completeShutdown() {
  TAVREL_ASSERT(shutdown_ && shutdown_->acknowledged,
                "Protocol violation; premature completeShutdown()");
  TAVREL_ASSERT(!shutdown_->completed, "Protocol violation; duplicate completeShutdown()");
  SiblingImplementation& parent = sibling(0);
  try {
    send_signal(0, own_signal(SignalKind::AckShutdown, my_sibling_id_));
    shutdown_->completed = true;
    for (auto& [id, peer] : siblings_) peer->output_.ready_ = false;
    while (!parent.failed_ && parent.watched_) {
      waitReady(parent.writer_);
      pump(parent);
    }
  } catch (const error::Exception&) {
    if (log_tracing()) log("completeShutdown has no parent connection", kLogTrace);
  }
}

}  // namespace io
