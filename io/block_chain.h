// The block chain of one write area of the shared memory pool.
//
// Pool layout: bytes 0..3 hold the magic number 0x71178228; the rest is cut
// by the parent into write areas, one per sibling, each a multiple of 8 in
// start and size. A write area is a chain of blocks without gaps:
//
//   offset 0  u64  prev_offset | flags   bits 2..: pool offset of the previous
//                                         block (0 for the area's first);
//                                         bit 0: used; bit 1: 8 bytes of
//                                         padding follow the payload
//   offset 8  u64  size                  payload bytes
//   offset 16      payload
//
// next_offset(o) = ((o + size + 23) & ~7) + (padding ? 8 : 0). A free block
// whose next_offset is o + 16 has no room. Only the area's owner writes its
// headers; readers only read a payload between MessageAt and AckMessageAt.
// A broken chain is a fatal assertion: the pool can't be trusted then.
#pragma once

#include <cstdint>

namespace io {

inline constexpr uint32_t kPoolMagic = 0x71178228;
inline constexpr uint64_t kNoBlock = ~uint64_t{0};
inline constexpr uint64_t kBlockHeader = 16;

// Read access to any block of the pool, own area or not.
class PoolView {
 public:
  PoolView(uint8_t* base, uint64_t pool_size) : base_(base), pool_size_(pool_size) {}

  uint8_t* base() const { return base_; }
  uint64_t pool_size() const { return pool_size_; }
  // Payload size of the block at `offset`; fatal on an offset out of range.
  uint64_t size_at(uint64_t offset) const;
  uint8_t* payload(uint64_t offset) const { return base_ + offset + kBlockHeader; }

 protected:
  void check_offset(uint64_t offset) const;
  uint64_t& word(uint64_t offset, int index) const;

  uint8_t* base_;
  uint64_t pool_size_;
};

// The owner's view of its own write area: where the next message goes,
// committing messages and freeing acknowledged blocks.
class BlockChain : public PoolView {
 public:
  BlockChain(uint8_t* base, uint64_t pool_size, uint64_t area_start, uint64_t area_size);

  // Lays one free block over the whole area and makes it the write block.
  void init();

  // The free block the next write uses, or kNoBlock when the area is full.
  uint64_t block_off() const { return block_off_; }
  bool ready() const { return block_off_ != kNoBlock; }
  // Payload capacity of the write block (0 when there is none).
  uint64_t room() const;

  // Turns the first n bytes of the write block into a used block (splitting
  // off the rest when 16 or more bytes remain) and moves the write block to
  // the next free block with room, wrapping at the area's end. Returns the
  // used block's offset.
  uint64_t commit(uint64_t n);

  // Frees the used block at `offset`, merged with free neighbours.
  void release(uint64_t offset);

  bool used(uint64_t offset) const { return (word(offset, 0) & 1) != 0; }
  uint64_t next_offset(uint64_t offset) const;
  uint64_t prev_offset(uint64_t offset) const { return word(offset, 0) & ~uint64_t{3}; }
  uint64_t area_start() const { return area_start_; }
  uint64_t area_end() const { return area_start_ + area_size_; }

 private:
  void lay_block(uint64_t offset, uint64_t prev, uint64_t size, uint64_t flags);
  void set_prev(uint64_t offset, uint64_t prev);
  bool has_room(uint64_t offset) const { return next_offset(offset) != offset + kBlockHeader; }
  void find_free_block();

  uint64_t area_start_;
  uint64_t area_size_;
  uint64_t block_off_ = kNoBlock;
};

}  // namespace io
