// Streams over pipe descriptors.
//
// Each stream owns its descriptor, puts it in non-blocking mode, and closes
// it at close() or destruction. `name` serves messages only. Since every
// transfer is one non-blocking call on the main thread, nothing runs in the
// background once a stream is destroyed: the destructor just closes.
#pragma once

#include <string>

#include "io/descriptor_stream.h"

namespace io {

class PipeIStream : public DescriptorIStream {
 public:
  // Takes ownership of `fd`. Raises error::ESystemError when it can't be made
  // non-blocking (the descriptor is closed then).
  PipeIStream(std::string name, int fd);
  ~PipeIStream() override;

  void name(std::string& out) const override { out = name_; }
  // Raises a stored fault, then closes the descriptor. A second call is the
  // fatal assertion "Double close on PipeIStream".
  void close() override;

 protected:
  int descriptor() const override { return fd_; }
  // "Error in PipeIStream(" + name + ")".
  std::string fault_text() const override;

 private:
  std::string name_;
  int fd_;
};

class PipeOStream : public DescriptorOStream {
 public:
  // Takes ownership of `fd` (may be -1: none yet, see set_handle). Raises
  // error::ESystemError when it can't be made non-blocking.
  PipeOStream(std::string name, int fd);
  ~PipeOStream() override;

  void name(std::string& out) const override { out = name_; }
  // Raises a stored fault, then closes the descriptor and drops bytes not
  // yet sent (flush first); a second call does nothing.
  void close() override;
  // Closes the old descriptor, takes ownership of `fd` and forgets a stored
  // fault. Bytes not yet sent go to the new descriptor. Raises like the
  // constructor.
  void set_handle(int fd);

 protected:
  int descriptor() const override { return fd_; }
  // name + " write".
  std::string fault_text() const override { return name_ + " write"; }
  TransferResult transmit(const char* from, size_t n) override;

 private:
  void close_descriptor_if_open();

  std::string name_;
  int fd_;
};

}  // namespace io
