// The input and output streams of one sibling, over the messenger's pool.
#include "base/fatal.h"
#include "io/errors.h"
#include "io/sibling_messenger.h"

namespace io {

SiblingIStream::SiblingIStream(SiblingImplementation& peer)
    : StackedSelectableFront(peer.messenger()), peer_(peer) {}

void SiblingIStream::name(std::string& out) const {
  out = "SiblingIStream[" + std::to_string(peer_.id()) + "]";
}

bool SiblingIStream::is_ready() const { return has_current_ || peer_.failed(); }

size_t SiblingIStream::readBegin(const char*& ptr) {
  if (!is_ready()) throw ENotReady(name_of(*this));
  if (!has_current_)
    throw EEndOfStream(name_of(*this), "readBegin had empty queue and process error");
  if (current_->is_null())
    throw EEndOfStream(name_of(*this), "readBegin encountered the null message");
  TAVREL_ASSERT(current_->sibling == peer_.id(), "curr_msg does not hold a message for us");
  TAVREL_ASSERT(current_->size > consumed_, "Message not larger than number of bytes read");
  const PoolView& pool = peer_.messenger().pool();
  ptr = reinterpret_cast<const char*>(pool.payload(current_->offset)) + consumed_;
  return current_->size - consumed_;
}

void SiblingIStream::readCommit(size_t n) {
  TAVREL_ASSERT(has_current_, "Read committed with no messages in queue");
  TAVREL_ASSERT(consumed_ + n <= current_->size,
                "Cannot commit more read data than what there was");
  consumed_ += n;
  if (consumed_ < current_->size) return;
  SiblingMessenger& m = peer_.messenger();
  uint64_t offset = current_->offset;
  m.input_.erase(current_);
  reset();
  m.send_signal(peer_.id(), make_value_signal(SignalKind::AckMessageAt, offset, m.id()));
  m.update_input(peer_);
}

SiblingOStream::SiblingOStream(SiblingImplementation& peer)
    : StackedSelectableFront(peer.messenger()), peer_(peer) {}

void SiblingOStream::name(std::string& out) const {
  out = "SiblingOStream[" + std::to_string(peer_.id()) + "]";
}

bool SiblingOStream::is_ready() const {
  return peer_.failed() || (ready_ && peer_.messenger().write_ready());
}

size_t SiblingOStream::writeBegin(char*& ptr) {
  if (!is_ready()) throw ENotReady(name_of(*this));
  SiblingMessenger& m = peer_.messenger();
  if (peer_.failed()) throw EEndOfStream(name_of(*this), "Write to failed process");
  if (m.shutdown_ && m.shutdown_->acknowledged) {
    throw EEndOfStream(name_of(*this), "Write disabled due to acknowledged shutdown");
  }
  if (m.shutdown_ && peer_.id() != 0) {
    throw EEndOfStream(name_of(*this), "Write to non-parent disabled during shutdown");
  }
  TAVREL_ASSERT(!peer_.write_in_progress_, "Multiple OStreams writing");
  peer_.write_in_progress_ = true;
  BlockChain& chain = *m.chain_;
  uint64_t block = chain.block_off();
  TAVREL_ASSERT(block != kNoBlock, "SiblingOStream::writeBegin(), ready but no free blocks");
  TAVREL_ASSERT(block >= chain.area_start() && block < chain.area_end(),
                "SiblingOStream::writeBegin(): Invalid block_off: " + std::to_string(block) +
                    " mastart: " + std::to_string(chain.area_start()) + " masize: " +
                    std::to_string(chain.area_end() - chain.area_start()) + " bsize: 16");
  uint64_t room = chain.room();
  TAVREL_ASSERT(room > 0, "No space available in SiblingOStream::writeBegin()");
  ptr = reinterpret_cast<char*>(chain.payload(block));
  return room;
}

void SiblingOStream::writeCommit(size_t n) {
  TAVREL_ASSERT(peer_.write_in_progress_, "Commit without an OStream writing");
  peer_.write_in_progress_ = false;
  if (n == 0) return;
  SiblingMessenger& m = peer_.messenger();
  TAVREL_ASSERT(n <= m.chain_->room(),
                "write offset " + std::to_string(n) + " above current block size " +
                    std::to_string(m.chain_->room()) + " after adding " + std::to_string(n));
  m.commit_message(peer_, n);
}

}  // namespace io
