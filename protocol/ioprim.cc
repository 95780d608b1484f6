#include "protocol/ioprim.h"

#include <cstring>
#include <string>

#include "base/error.h"
#include "base/fatal.h"
#include "io/stream.h"
#include "protocol/wait.h"

namespace protocol {

ioprim::ioprim(io::IStream& in, io::OStream& out) : in_(in), out_(out) {}

ioprim::Nesting::Nesting(ioprim& io) : io_(io) {
  if (++io_.nesting_ > kMaxNesting) {
    --io_.nesting_;
    io_.mark_broken("fdio: records nested deeper than " + std::to_string(kMaxNesting));
    throw error::EParseError(*io_.broken_);
  }
}

void ioprim::mark_broken(const std::string& text) {
  if (!broken_) broken_ = text;
}

ioprim::~ioprim() {
  if (rsize_ > 0) in_.readCommit(rpos_);
  commit_write();
}

void ioprim::commit_write() {
  if (wptr_ == nullptr) return;
  out_.writeCommit(wpos_);
  wptr_ = nullptr;
  wsize_ = wpos_ = 0;
}

void ioprim::next_write_area() {
  commit_write();
  wait_ready(out_);
  wsize_ = out_.writeBegin(wptr_);
  wpos_ = 0;
}

void ioprim::write_primitive(const void* bytes, size_t n) {
  if (wptr_ == nullptr || wsize_ - wpos_ < n) {
    next_write_area();
    TAVREL_ASSERT(wsize_ >= n, "New write area of size " + std::to_string(wsize_) +
                                   " too small for primitive write");
  }
  std::memcpy(wptr_ + wpos_, bytes, n);
  wpos_ += n;
}

void ioprim::write_bytes(const void* bytes, size_t n) {
  const char* from = static_cast<const char*>(bytes);
  while (n > 0) {
    if (wptr_ == nullptr || wpos_ == wsize_) {
      next_write_area();
      TAVREL_ASSERT(wsize_ > 0, "New write area of size 0 too small for primitive write");
    }
    size_t k = n < wsize_ - wpos_ ? n : wsize_ - wpos_;
    std::memcpy(wptr_ + wpos_, from, k);
    wpos_ += k;
    from += k;
    n -= k;
  }
}

void ioprim::flush() {
  commit_write();
  if (!out_.flushStep()) wait_ready(out_);
}

void ioprim::next_read_area() {
  rpos_ = 0;
  do {
    wait_ready(in_);
    rsize_ = in_.readBegin(rptr_);
  } while (rsize_ == 0);
}

void ioprim::read_bytes(void* bytes, size_t n) {
  if (broken_) throw error::EParseError(*broken_);
  char* to = static_cast<char*>(bytes);
  while (n > 0) {
    if (rsize_ == 0) next_read_area();
    size_t k = n < rsize_ - rpos_ ? n : rsize_ - rpos_;
    std::memcpy(to, rptr_ + rpos_, k);
    rpos_ += k;
    bytes_read_ += k;
    to += k;
    n -= k;
    // An area that is used up goes back at once, so that the stream may
    // lend the next one.
    if (rpos_ == rsize_) {
      in_.readCommit(rsize_);
      rsize_ = rpos_ = 0;
    }
  }
}

}  // namespace protocol
