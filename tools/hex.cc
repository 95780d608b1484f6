#include "tools/hex.h"

#include "base/error.h"

namespace tools {
namespace {

int digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::vector<uint8_t> from_hex(const std::string& text) {
  if (text.size() % 2 != 0) throw error::EParseError("odd number of hex digits: " + text);
  std::vector<uint8_t> bytes;
  for (size_t i = 0; i < text.size(); i += 2) {
    const int high = digit(text[i]);
    const int low = digit(text[i + 1]);
    if (high < 0 || low < 0) throw error::EParseError("not a hex byte string: " + text);
    bytes.push_back(static_cast<uint8_t>(high * 16 + low));
  }
  return bytes;
}

}  // namespace tools
