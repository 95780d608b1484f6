// Helpers of the BER tests: values to hex text and hex text to bytes, so a
// check reads EXPECT_EQ("02 02 00 80", encode(value)).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "protocol/ber_reader.h"
#include "protocol/ber_value.h"

namespace protocol::testing {

inline std::string hex(const std::vector<uint8_t>& bytes) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string out;
  for (uint8_t b : bytes) {
    if (!out.empty()) out += ' ';
    out += kHex[b >> 4];
    out += kHex[b & 15];
  }
  return out;
}

// "02 01 FF" to its bytes; blanks are ignored.
inline std::vector<uint8_t> unhex(const std::string& text) {
  std::vector<uint8_t> out;
  std::string digits;
  for (char c : text) {
    if (c != ' ') digits += c;
  }
  for (size_t i = 0; i + 1 < digits.size(); i += 2) {
    out.push_back(static_cast<uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  }
  return out;
}

inline std::vector<uint8_t> encode_bytes(const BerValue& value, bool legacy = false) {
  BerBuffer out;
  value.write(out, legacy);
  return out.bytes();
}

inline std::string encode(const BerValue& value, bool legacy = false) {
  return hex(encode_bytes(value, legacy));
}

// Reads `bytes` into `value`; all bytes must be used.
inline void decode(BerValue& value, const std::vector<uint8_t>& bytes, bool legacy = false) {
  BerReader reader(bytes.data(), bytes.size(), legacy);
  reader.read(value);
  if (!reader.at_end()) throw EBer("trailing bytes");
}

inline void decode(BerValue& value, const std::string& hex_text, bool legacy = false) {
  decode(value, unhex(hex_text), legacy);
}

// The text of the EBer that `f` raises, or "no error".
template <class F>
std::string fault(F f) {
  try {
    f();
  } catch (const EBer& e) {
    return e.text();
  }
  return "no error";
}

}  // namespace protocol::testing
