#include "io/iostream.h"

#include <iostream>

#include "base/log.h"
#include "io/errors.h"
#include "io/selector.h"

namespace io {

StreamBuf::StreamBuf(IStream& input, OStream& output, Duration timeout)
    : input_(input), output_(output), timeout_(timeout) {}

StreamBuf::~StreamBuf() {
  try {
    release_input();
    if (commit_output()) wait_output();
  } catch (const error::Exception& e) {
    log("I/O exception in io::StreamBuf::~StreamBuf(): " + e.text());
  }
}

void StreamBuf::release_input() {
  if (!input_held_) return;
  input_.readCommit(gptr() - eback());
  input_held_ = false;
  setg(nullptr, nullptr, nullptr);
}

StreamBuf::int_type StreamBuf::underflow() {
  try {
    release_input();
    for (;;) {
      waitReady(input_, timeout_);
      const char* bytes = nullptr;
      size_t n = input_.readBegin(bytes);
      input_held_ = true;
      if (n == 0) {
        // Woken without bytes: nothing to lend yet, wait again.
        release_input();
        continue;
      }
      // The get area is only read; putback of another character fails.
      char* begin = const_cast<char*>(bytes);
      setg(begin, begin, begin + n);
      return traits_type::to_int_type(*begin);
    }
  } catch (const EEndOfStream&) {
  } catch (const ETimeout&) {
  } catch (const error::Exception& e) {
    std::cerr << "I/O exception in io::StreamBuf::underflow(): " << e.text() << std::endl;
  }
  input_held_ = false;
  setg(nullptr, nullptr, nullptr);
  return traits_type::eof();
}

bool StreamBuf::commit_output() {
  if (!output_held_) return false;
  size_t n = pptr() - pbase();
  output_held_ = false;
  setp(nullptr, nullptr);
  output_.writeCommit(n);
  return n > 0;
}

void StreamBuf::wait_output() {
  // A transfer that can finish at once needs no selector.
  if (output_.flushStep()) return;
  waitReady(output_, timeout_);
}

StreamBuf::int_type StreamBuf::overflow(int_type c) {
  if (output_held_) {
    commit_output();
    wait_output();
  }
  if (traits_type::eq_int_type(c, traits_type::eof())) {
    wait_output();
    wait_output();
    output_.close();
    return traits_type::eof();
  }
  for (;;) {
    char* space = nullptr;
    size_t n = output_.writeBegin(space);
    output_held_ = true;
    if (n > 0) {
      setp(space, space + n);
      *pptr() = traits_type::to_char_type(c);
      pbump(1);
      return c;
    }
    // A full buffer: hand it back and wait until it has room.
    commit_output();
    wait_output();
  }
}

int StreamBuf::sync() {
  if (output_held_) {
    commit_output();
    wait_output();
  }
  return 0;
}

void StreamBuf::close_output() { overflow(traits_type::eof()); }

iostream::iostream(IStream& input, OStream& output, Duration timeout)
    : StreamBuf(input, output, timeout), std::iostream(static_cast<StreamBuf*>(this)) {
  exceptions(std::ios::badbit);
}

}  // namespace io
