#include "io/pipe_stream.h"

#include "base/fatal.h"

namespace io {

namespace {

const StreamTexts kPipeInputTexts = {"Overcommit in PipeIStream", true, "PipeIStream overflow",
                                     "PipeIStream unsolicited callback", nullptr};
const StreamTexts kPipeOutputTexts = {"Overcommit in PipeOStream", true,
                                      "PipeOStream excessive write",
                                      "PipeOSTream unsolicited callback", nullptr};

}  // namespace

PipeIStream::PipeIStream(std::string name, int fd)
    : DescriptorIStream(kPipeInputTexts), name_(std::move(name)), fd_(adopt_nonblocking(fd)) {}

PipeIStream::~PipeIStream() {
  if (fd_ >= 0) close_descriptor(fd_);
}

void PipeIStream::close() {
  TAVREL_ASSERT(fd_ >= 0, "Double close on PipeIStream");
  raise_fault();
  stop_transfer();
  close_descriptor(fd_);
  fd_ = -1;
}

std::string PipeIStream::fault_text() const { return "Error in PipeIStream(" + name_ + ")"; }

PipeOStream::PipeOStream(std::string name, int fd)
    : DescriptorOStream(kPipeOutputTexts), name_(std::move(name)), fd_(adopt_nonblocking(fd)) {}

PipeOStream::~PipeOStream() { close_descriptor_if_open(); }

void PipeOStream::close() {
  raise_fault();
  close_descriptor_if_open();
  discard_unsent();
}

void PipeOStream::set_handle(int fd) {
  close_descriptor_if_open();
  fd_ = adopt_nonblocking(fd);
  clear_fault();
}

void PipeOStream::close_descriptor_if_open() {
  stop_transfer();
  if (fd_ >= 0) close_descriptor(fd_);
  fd_ = -1;
}

TransferResult PipeOStream::transmit(const char* from, size_t n) {
  return write_some(fd_, from, n);
}

}  // namespace io
