#include "io/block_chain.h"

#include <string>

#include "base/fatal.h"

namespace io {

void PoolView::check_offset(uint64_t offset) const {
  TAVREL_ASSERT(offset < pool_size_, "Offset out of range: " + std::to_string(offset) + " !< " +
                                         std::to_string(pool_size_));
}

uint64_t& PoolView::word(uint64_t offset, int index) const {
  check_offset(offset);
  return reinterpret_cast<uint64_t*>(base_ + offset)[index];
}

uint64_t PoolView::size_at(uint64_t offset) const { return word(offset, 1); }

BlockChain::BlockChain(uint8_t* base, uint64_t pool_size, uint64_t area_start, uint64_t area_size)
    : PoolView(base, pool_size), area_start_(area_start), area_size_(area_size) {}

uint64_t BlockChain::next_offset(uint64_t offset) const {
  uint64_t head = word(offset, 0);
  uint64_t next = (offset + word(offset, 1) + 23) & ~uint64_t{7};
  return (head & 2) ? next + 8 : next;
}

void BlockChain::lay_block(uint64_t offset, uint64_t prev, uint64_t size, uint64_t flags) {
  TAVREL_ASSERT((prev & 3) == 0, "Misaligned prev_offset: " + std::to_string(prev));
  word(offset, 0) = prev | flags;
  word(offset, 1) = size;
}

void BlockChain::set_prev(uint64_t offset, uint64_t prev) {
  TAVREL_ASSERT((prev & 3) == 0, "prev_offset misaligned");
  uint64_t& head = word(offset, 0);
  head = prev | (head & 3);
}

void BlockChain::init() {
  lay_block(area_start_, 0, area_size_ - kBlockHeader, 0);
  TAVREL_ASSERT(next_offset(area_start_) == area_end(), "block_header init error");
  block_off_ = area_start_;
}

uint64_t BlockChain::room() const {
  if (block_off_ == kNoBlock) return 0;
  return next_offset(block_off_) - block_off_ - kBlockHeader;
}

uint64_t BlockChain::commit(uint64_t n) {
  uint64_t block = block_off_;
  uint64_t next = next_offset(block);
  uint64_t length = next - block;
  TAVREL_ASSERT(n <= length - kBlockHeader, "Overcommit in SiblingOStream");
  uint64_t prev = prev_offset(block);
  if (n + 32 > length) {
    // Too little would be left for another block: take it whole.
    uint64_t end = (block + n + 23) & ~uint64_t{7};
    lay_block(block, prev, n, end == next ? 1 : 3);
  } else {
    uint64_t split = (block + n + 23) & ~uint64_t{7};
    lay_block(block, prev, n, 1);
    lay_block(split, block, next - split - kBlockHeader, 0);
    if (next < area_end()) set_prev(next, split);
    block_off_ = split;
  }
  find_free_block();
  return block;
}

void BlockChain::find_free_block() {
  uint64_t start = block_off_;
  uint64_t at = start;
  do {
    if (!used(at) && has_room(at)) {
      block_off_ = at;
      return;
    }
    at = next_offset(at);
    if (at >= area_end()) at = area_start_;
  } while (at != start);
  block_off_ = kNoBlock;
}

void BlockChain::release(uint64_t offset) {
  uint64_t start = offset;
  uint64_t prev = prev_offset(offset);
  bool was_full = block_off_ == kNoBlock;
  if (prev != 0 && !used(prev)) start = prev;
  if (block_off_ == offset) block_off_ = start;

  uint64_t end = next_offset(offset);
  TAVREL_ASSERT(end <= area_end() && end > offset,
                "Bad new_free_next_offset: " + std::to_string(end));
  if (end < area_end() && !used(end)) {
    uint64_t after = next_offset(end);
    TAVREL_ASSERT(after <= area_end() && after > end,
                  "Bad2 new_free_next_offset: " + std::to_string(after));
    if (block_off_ == end) block_off_ = start;
    end = after;
  }
  TAVREL_ASSERT(end - start >= kBlockHeader, "new_free_next_offset out of bounds");
  lay_block(start, prev_offset(start), end - start - kBlockHeader, 0);
  if (end < area_end()) set_prev(end, start);
  if (was_full) block_off_ = start;
}

}  // namespace io
