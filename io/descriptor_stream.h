// The common part of the pipe and socket streams: a 4096-byte buffer over a
// non-blocking descriptor, one transfer at a time.
//
// On Linux a transfer runs like this: before_wait() states that a read (or a
// write) is wanted, which makes the descriptor part of the next poll(); when
// poll() reports it, absorbs_signal() moves the bytes with one non-blocking
// call on the main thread. Faults are stored and raised at the next use, and
// at every use after it; is_ready() is true on a fault so that a waiter
// wakes and finds it. No copy is made between the buffer and a lending
// reader or writer.
#pragma once

#include <cstddef>
#include <string>

#include "io/descriptor.h"
#include "io/stream.h"

namespace io {

inline constexpr size_t kStreamBufferSize = 4096;

// The words of the fatal assertions, which differ between pipes and sockets.
struct StreamTexts {
  const char* overcommit;   // "Overcommit in ..."
  bool overcommit_counts;   // Append " N is X bytes past end of buffer".
  const char* overflow;     // A transfer larger than was asked.
  const char* unsolicited;  // A completion without a transfer.
  const char* invalid;      // A completion on no descriptor; null: stored.
};

class DescriptorIStream : public IStream {
 public:
  WaitHandle wait_handle() const override;
  // A fault, the end, or bytes in the buffer.
  bool is_ready() const override;
  // Wants a read when the buffer is empty and nothing has ended.
  void before_wait() override;
  // Reads; true when there is still nothing for the caller.
  bool absorbs_signal() override;

  // Raises io::EEndOfStream at the end and the stored fault, once the buffer
  // is empty; otherwise lends the buffered bytes (maybe none).
  size_t readBegin(const char*& ptr) override;
  void readCommit(size_t n) override;

 protected:
  explicit DescriptorIStream(const StreamTexts& texts) : texts_(texts) {}

  // The descriptor, or -1 once closed.
  virtual int descriptor() const = 0;
  // The caller's words for a stored fault.
  virtual std::string fault_text() const = 0;

  int fault() const { return error_; }
  void set_fault(int code) { error_ = code; }
  bool at_end() const { return eof_; }
  // Raises the stored fault, if any.
  void raise_fault() const;
  // Forgets a wanted read, for a descriptor that goes away.
  void stop_transfer() { in_transfer_ = false; }

 private:
  const StreamTexts& texts_;
  char buffer_[kStreamBufferSize];
  size_t read_ = 0;  // First unread byte.
  size_t end_ = 0;   // One past the last byte that came.
  bool in_transfer_ = false;
  bool eof_ = false;
  int error_ = 0;  // The system's code of a fault, 0 for none.
};

class DescriptorOStream : public OStream {
 public:
  WaitHandle wait_handle() const override;
  // Nothing left to send, or a fault.
  bool is_ready() const override;
  // Wants a write when bytes wait and no fault is there.
  void before_wait() override;
  // Writes; true while bytes are left.
  bool absorbs_signal() override;

  // Raises a stored fault; otherwise lends the space after the filled part,
  // 0 bytes while the buffer is full. New bytes wait until everything before
  // them was sent.
  size_t writeBegin(char*& ptr) override;
  void writeCommit(size_t n) override;
  // Raises a stored fault, tries to send without waiting, returns is_ready().
  bool flushStep() override;

 protected:
  explicit DescriptorOStream(const StreamTexts& texts) : texts_(texts) {}

  virtual int descriptor() const = 0;
  virtual std::string fault_text() const = 0;
  // One non-blocking write of the descriptor's kind.
  virtual TransferResult transmit(const char* from, size_t n) = 0;

  void raise_fault() const;
  void clear_fault() { error_ = 0; }
  void stop_transfer() { in_transfer_ = false; }
  // Drops bytes not yet sent, for a descriptor that is gone for good.
  void discard_unsent() { sent_ = filled_ = 0; }

 private:
  void send_buffered();

  const StreamTexts& texts_;
  char buffer_[kStreamBufferSize];
  size_t sent_ = 0;    // First byte not yet sent.
  size_t filled_ = 0;  // One past the last byte committed.
  bool in_transfer_ = false;
  int error_ = 0;
};

}  // namespace io
