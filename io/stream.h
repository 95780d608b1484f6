// Byte streams that lend their buffers instead of copying.
//
// A reader asks readBegin for the unread bytes, uses them in place and tells
// readCommit how many it consumed; a writer asks writeBegin for free space,
// fills it and tells writeCommit how much. Between a Begin and its Commit the
// caller may use the lent bytes and must call nothing else on the stream. The
// lent bytes stay valid until that Commit.
//
// A stream is a Selectable: an input is_ready() when readBegin would not
// return 0 (bytes, the end or a fault is there); an output is_ready() when
// nothing is left to send or a fault is there. Transfers run while the
// process waits in a selector. Faults of a transfer are stored and raised at
// the next readBegin, writeBegin, flushStep or close, and again at each use
// after that.
#pragma once

#include <cstddef>

#include "io/selectable.h"

namespace io {

class IStream : public virtual Selectable {
 public:
  // Lends the unread bytes: sets `ptr` to them and returns their number; 0
  // means nothing has come yet. Raises io::EEndOfStream at the end (only
  // after every earlier byte was lent and committed) and
  // error::ESystemError on a fault.
  virtual size_t readBegin(const char*& ptr) = 0;
  // The caller has consumed `n` of the lent bytes. More than was lent is a
  // fatal assertion.
  virtual void readCommit(size_t n) = 0;
  // Closes the reading side; raises a pending fault first.
  virtual void close() = 0;
};

class OStream : public virtual Selectable {
 public:
  // Lends the free space: sets `ptr` to it and returns its size, which is 0
  // while the buffer is full. Raises a pending fault (error::ESystemError).
  virtual size_t writeBegin(char*& ptr) = 0;
  // The caller has filled `n` of the lent bytes. More than was lent is a
  // fatal assertion.
  virtual void writeCommit(size_t n) = 0;
  // Starts a transfer if none runs, lets finished transfers report, and
  // returns is_ready(). Raises a pending fault. The default returns false.
  virtual bool flushStep();
  // Closes the writing side; raises a pending fault first. Bytes committed
  // but not yet sent are the caller's to flush before.
  virtual void close() = 0;
};

}  // namespace io
