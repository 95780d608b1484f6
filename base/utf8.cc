#include "base/utf8.h"

#include <algorithm>
#include <cstdint>

namespace text {
namespace {

unsigned char byte(std::string_view s, size_t i) { return static_cast<unsigned char>(s[i]); }

bool continuation(unsigned char c) { return (c & 0xC0) == 0x80; }

void append_latin1(std::string& out, unsigned char c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// Whether `bytes`, too short to be judged, may still become a valid sequence.
bool may_continue(std::string_view bytes) {
  if (bytes.empty() || bytes.size() > 3) return false;
  const unsigned char lead = byte(bytes, 0);
  size_t need = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (need <= bytes.size() || lead > 0xF4) return false;
  for (size_t i = 1; i < bytes.size(); ++i) {
    if (!continuation(byte(bytes, i))) return false;
  }
  // The second byte decides overlong forms, surrogates and the upper bound.
  if (bytes.size() >= 2) {
    const unsigned char second = byte(bytes, 1);
    if (lead == 0xE0 && second < 0xA0) return false;
    if (lead == 0xED && second > 0x9F) return false;
    if (lead == 0xF0 && second < 0x90) return false;
    if (lead == 0xF4 && second > 0x8F) return false;
  }
  return true;
}

// Converts `bytes` into `out`; returns how many bytes at the end were left,
// when `hold_tail` and they may still become a sequence.
size_t convert(std::string_view bytes, std::string& out, bool hold_tail) {
  size_t i = 0;
  while (i < bytes.size()) {
    if (byte(bytes, i) < 0x80) {
      out += bytes[i++];
      continue;
    }
    const size_t n = utf8_sequence_length(bytes.substr(i));
    if (n > 0) {
      out.append(bytes.data() + i, n);
      i += n;
    } else if (hold_tail && may_continue(bytes.substr(i))) {
      return bytes.size() - i;
    } else {
      append_latin1(out, byte(bytes, i++));
    }
  }
  return 0;
}

}  // namespace

size_t utf8_sequence_length(std::string_view bytes) {
  if (bytes.empty()) return 0;
  const unsigned char lead = byte(bytes, 0);
  if (lead < 0x80) return 1;
  size_t n;
  uint32_t code;
  if (lead >= 0xC2 && lead <= 0xDF) {
    n = 2, code = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    n = 3, code = lead & 0x0F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    n = 4, code = lead & 0x07;
  } else {
    return 0;
  }
  if (bytes.size() < n) return 0;
  for (size_t i = 1; i < n; ++i) {
    if (!continuation(byte(bytes, i))) return 0;
    code = code << 6 | (byte(bytes, i) & 0x3F);
  }
  const bool overlong = (n == 3 && code < 0x800) || (n == 4 && code < 0x10000);
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (overlong || surrogate || code > 0x10FFFF) return 0;
  return n;
}

bool is_valid_utf8(std::string_view bytes) {
  for (size_t i = 0; i < bytes.size();) {
    const size_t n = utf8_sequence_length(bytes.substr(i));
    if (n == 0) return false;
    i += n;
  }
  return true;
}

std::string to_utf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  convert(bytes, out, false);
  return out;
}

Utf8Streambuf::Utf8Streambuf(std::streambuf& target) : target_(target) {
  setp(buffer_, buffer_ + sizeof buffer_);
}

Utf8Streambuf::~Utf8Streambuf() { finish(); }

bool Utf8Streambuf::drain(bool final) {
  held_.append(pbase(), pptr() - pbase());
  setp(buffer_, buffer_ + sizeof buffer_);
  out_.clear();
  const size_t kept = convert(held_, out_, !final);
  held_.erase(0, held_.size() - kept);
  const auto n = static_cast<std::streamsize>(out_.size());
  return target_.sputn(out_.data(), n) == n;
}

Utf8Streambuf::int_type Utf8Streambuf::overflow(int_type c) {
  if (!drain(false)) return traits_type::eof();
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  *pptr() = traits_type::to_char_type(c);
  pbump(1);
  return c;
}

std::streamsize Utf8Streambuf::xsputn(const char* s, std::streamsize n) {
  std::streamsize done = 0;
  while (done < n) {
    if (pptr() == epptr() && !drain(false)) return done;
    const std::streamsize room = std::min<std::streamsize>(epptr() - pptr(), n - done);
    std::copy(s + done, s + done + room, pptr());
    pbump(static_cast<int>(room));
    done += room;
  }
  return done;
}

int Utf8Streambuf::sync() { return drain(false) && target_.pubsync() == 0 ? 0 : -1; }

bool Utf8Streambuf::finish() { return drain(true); }

}  // namespace text
