#include "protocol/fdio.h"

namespace protocol {

ioprim& operator<<(ioprim& io, bool v) { return io << static_cast<uint32_t>(v ? 1 : 0); }

ioprim& operator>>(ioprim& io, bool& v) {
  uint32_t word = 0;
  io >> word;
  v = word != 0;
  return io;
}

ioprim& operator<<(ioprim& io, const TimeValue& t) { return io << t.seconds << t.microseconds; }

// Taken as it comes: a sibling's value is not normalised here.
ioprim& operator>>(ioprim& io, TimeValue& t) { return io >> t.seconds >> t.microseconds; }

ioprim& operator<<(ioprim& io, const std::string& s) {
  io << static_cast<uint64_t>(s.size());
  io.write_bytes(s.data(), s.size());
  return io;
}

// The count comes from outside: the string grows one bounded piece at a time,
// so a false count ends in io::EEndOfStream, not in a huge allocation.
ioprim& operator>>(ioprim& io, std::string& s) {
  uint64_t left = 0;
  io >> left;
  s.clear();
  while (left > 0) {
    size_t piece = left < kStringPiece ? static_cast<size_t>(left) : kStringPiece;
    size_t at = s.size();
    s.resize(at + piece);
    io.read_bytes(s.data() + at, piece);
    left -= piece;
  }
  return io;
}

}  // namespace protocol
