// Helpers for tests of fdio forms: round trips through a MemoryPipe with
// small areas, so that values cross area boundaries on both sides.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>

#include "protocol/fdio.h"
#include "protocol/memory_stream.h"
#include "protocol/print.h"

namespace protocol::testing {

// Bytes as lower-case hex.
inline std::string hex(const std::string& bytes) {
  std::string out;
  char buf[4];
  for (unsigned char c : bytes) {
    std::snprintf(buf, sizeof buf, "%02x", c);
    out += buf;
  }
  return out;
}

// The fdio bytes of `v` as lower-case hex.
template <class T>
std::string hex_of(const T& v) {
  MemoryPipe pipe(64);
  {
    ioprim io(pipe.in(), pipe.out());
    io << v;
    io.flush();
  }
  return hex(pipe.all());
}

// Writes `v` over 8-byte write areas and reads it back over 3-byte read
// areas; the reader must use up exactly what was written.
template <class T>
T round_trip(const T& v, size_t write_area = 8, size_t read_area = 3) {
  MemoryPipe pipe(write_area, read_area);
  T out{};
  {
    ioprim io(pipe.in(), pipe.out());
    io << v;
    io.flush();
    io >> out;
  }
  if (!pipe.unread().empty()) ADD_FAILURE() << "bytes left after reading";
  return out;
}

// The printed form of a value at indent 0.
template <class T>
std::string printed(const T& v) {
  std::ostringstream os;
  print_value(os, v, 0);
  return os.str();
}

}  // namespace protocol::testing
