// A standard two-way stream over an io::IStream / io::OStream pair.
//
// Every wait is limited by `timeout` (kInfinite: none). A time-out while
// reading reads as end of file: the stream gets eofbit, and after clear() it
// reads on. A time-out (or a fault) while writing reaches the caller as the
// exception itself: io::iostream turns on exceptions for badbit, so that the
// standard stream passes io::ETimeout through instead of only setting a bit.
//
// The pair must outlive the stream. Single-threaded like the streams.
#pragma once

#include <istream>
#include <streambuf>

#include "io/clock.h"
#include "io/stream.h"

namespace io {

class StreamBuf : public std::streambuf {
 public:
  StreamBuf(IStream& input, OStream& output, Duration timeout);
  // Commits what is held on both sides and waits once more for committed
  // output; a failure then is logged, not raised.
  ~StreamBuf() override;
  StreamBuf(const StreamBuf&) = delete;
  StreamBuf& operator=(const StreamBuf&) = delete;

  // Sends what was written, waits until it is out, and closes the output
  // (the peer reads the end). Raises like a write.
  void close_output();

 protected:
  // The lent bytes of the input become the get area. End of the stream, a
  // time-out and any other failure give end of file; the text of the latter
  // goes to standard error as "I/O exception in io::StreamBuf::underflow(): "
  // + text.
  int_type underflow() override;
  // Commits the put area, waits until it is sent, and makes fresh space the
  // put area. With end of file: waits and closes the output. Raises
  // io::ETimeout and the faults of the output.
  int_type overflow(int_type c) override;
  // Commits the put area and waits until it is sent. Raises like overflow.
  int sync() override;

 private:
  void release_input();
  // Commits the put area, if held; returns whether anything was committed.
  bool commit_output();
  void wait_output();

  IStream& input_;
  bool input_held_ = false;
  OStream& output_;
  bool output_held_ = false;
  Duration timeout_;
};

class iostream : public StreamBuf, public std::iostream {
 public:
  iostream(IStream& input, OStream& output, Duration timeout);
};

}  // namespace io
