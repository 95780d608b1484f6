#include "io/descriptor_stream.h"

#include "base/fatal.h"
#include "io/errors.h"
#include "io/system_error.h"

namespace io {

namespace {

[[noreturn]] void overcommit(const StreamTexts& texts, size_t n, size_t excess) {
  std::string text = texts.overcommit;
  if (texts.overcommit_counts)
    text += " " + std::to_string(n) + " is " + std::to_string(excess) + " bytes past end of buffer";
  assertion_failed(text);
}

// A completion code that says the descriptor isn't one is an impossible
// state for a socket stream; a pipe stream stores it like any fault.
void check_descriptor_code(const StreamTexts& texts, int code) {
  if (texts.invalid != nullptr && code > 0 && is_invalid_descriptor_code(code))
    assertion_failed(texts.invalid);
}

}  // namespace

// ---- Input

WaitHandle DescriptorIStream::wait_handle() const {
  return {descriptor(), in_transfer_ ? kWaitRead : kWaitNone};
}

bool DescriptorIStream::is_ready() const { return error_ != 0 || eof_ || end_ > read_; }

void DescriptorIStream::before_wait() {
  if (!in_transfer_ && end_ == 0 && !eof_ && error_ == 0 && descriptor() >= 0) in_transfer_ = true;
}

bool DescriptorIStream::absorbs_signal() {
  TAVREL_ASSERT(in_transfer_, texts_.unsolicited);
  TransferResult r = read_some(descriptor(), buffer_, sizeof buffer_);
  if (r.error == kTransferPending) return true;
  in_transfer_ = false;
  check_descriptor_code(texts_, r.error);
  if (r.error != 0) {
    error_ = r.error;
  } else if (r.bytes == 0) {
    eof_ = true;
  } else {
    TAVREL_ASSERT(r.bytes <= sizeof buffer_, texts_.overflow);
    end_ = r.bytes;
  }
  return false;
}

void DescriptorIStream::raise_fault() const {
  if (error_ != 0) raise_system_error(fault_text(), error_);
}

size_t DescriptorIStream::readBegin(const char*& ptr) {
  if (read_ == end_) {
    if (eof_) throw EEndOfStream(name_of(*this));
    raise_fault();
  }
  ptr = buffer_ + read_;
  return end_ - read_;
}

void DescriptorIStream::readCommit(size_t n) {
  if (n > end_ - read_) overcommit(texts_, n, n - (end_ - read_));
  read_ += n;
  if (read_ == end_) read_ = end_ = 0;
}

// ---- Output

WaitHandle DescriptorOStream::wait_handle() const {
  return {descriptor(), in_transfer_ ? kWaitWrite : kWaitNone};
}

bool DescriptorOStream::is_ready() const {
  if (in_transfer_) return false;
  return error_ != 0 || sent_ == filled_;
}

void DescriptorOStream::before_wait() {
  if (!in_transfer_ && sent_ != filled_ && error_ == 0 && descriptor() >= 0) in_transfer_ = true;
}

bool DescriptorOStream::absorbs_signal() {
  TAVREL_ASSERT(in_transfer_, texts_.unsolicited);
  send_buffered();
  return !is_ready();
}

void DescriptorOStream::send_buffered() {
  size_t pending = filled_ - sent_;
  TransferResult r = transmit(buffer_ + sent_, pending);
  if (r.error == kTransferPending) return;
  check_descriptor_code(texts_, r.error);
  if (r.error != 0) {
    error_ = r.error;
    in_transfer_ = false;
    return;
  }
  TAVREL_ASSERT(r.bytes <= pending, texts_.overflow);
  sent_ += r.bytes;
  // The buffer is reused only after a full pass, so new bytes wait.
  if (sent_ == filled_) {
    sent_ = filled_ = 0;
    in_transfer_ = false;
  }
}

void DescriptorOStream::raise_fault() const {
  if (error_ != 0) raise_system_error(fault_text(), error_);
}

size_t DescriptorOStream::writeBegin(char*& ptr) {
  raise_fault();
  ptr = buffer_ + filled_;
  return sizeof buffer_ - filled_;
}

void DescriptorOStream::writeCommit(size_t n) {
  size_t room = sizeof buffer_ - filled_;
  if (n > room) overcommit(texts_, n, n - room);
  filled_ += n;
}

bool DescriptorOStream::flushStep() {
  raise_fault();
  if (!in_transfer_) before_wait();
  if (in_transfer_) send_buffered();
  return is_ready();
}

}  // namespace io
