#include "protocol/memory_stream.h"

#include "base/fatal.h"
#include "io/errors.h"

namespace protocol {

MemoryPipe::MemoryPipe(size_t write_area, size_t read_area, std::string initial)
    : write_area_(write_area), read_area_(read_area), bytes_(std::move(initial)) {
  TAVREL_ASSERT(write_area_ > 0 && read_area_ > 0, "MemoryPipe with an area of 0 bytes");
}

size_t MemoryPipe::In::readBegin(const char*& ptr) {
  size_t left = pipe_.bytes_.size() - pipe_.read_pos_;
  if (left == 0) throw io::EEndOfStream("MemoryPipe");
  area_ = pipe_.bytes_.substr(pipe_.read_pos_, pipe_.read_area_);
  ptr = area_.data();
  return area_.size();
}

void MemoryPipe::In::readCommit(size_t n) {
  TAVREL_ASSERT(n <= area_.size(), "MemoryPipe: more committed than lent");
  pipe_.read_pos_ += n;
  area_.clear();
}

size_t MemoryPipe::Out::writeBegin(char*& ptr) {
  area_.assign(pipe_.write_area_, '\0');
  ptr = area_.data();
  return area_.size();
}

void MemoryPipe::Out::writeCommit(size_t n) {
  TAVREL_ASSERT(n <= area_.size(), "MemoryPipe: more committed than lent");
  pipe_.bytes_.append(area_, 0, n);
  area_.clear();
}

}  // namespace protocol
