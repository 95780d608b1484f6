#include "host/frames.h"

#include <algorithm>
#include <cstring>

#include "io/selector.h"

namespace host {
namespace {

void write_bytes(io::OStream& out, const char* data, size_t n) {
  while (n > 0) {
    io::waitReady(out);
    char* room;
    size_t size = out.writeBegin(room);
    size_t chunk = std::min(size, n);
    std::memcpy(room, data, chunk);
    out.writeCommit(chunk);
    data += chunk;
    n -= chunk;
  }
}

void read_bytes(io::IStream& in, char* to, size_t n) {
  while (n > 0) {
    io::waitReady(in);
    const char* data;
    size_t size = in.readBegin(data);
    size_t chunk = std::min(size, n);
    std::memcpy(to, data, chunk);
    in.readCommit(chunk);
    to += chunk;
    n -= chunk;
  }
}

}  // namespace

void write_frame(io::OStream& out, const std::string& text) {
  uint32_t length = static_cast<uint32_t>(text.size());
  std::string frame(reinterpret_cast<const char*>(&length), sizeof(length));
  frame += text;
  write_bytes(out, frame.data(), frame.size());
  while (!out.flushStep()) io::waitReady(out);
}

std::string read_frame(io::IStream& in) {
  uint32_t length;
  read_bytes(in, reinterpret_cast<char*>(&length), sizeof(length));
  std::string text(length, '\0');
  read_bytes(in, text.data(), length);
  return text;
}

}  // namespace host
