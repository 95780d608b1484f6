// Hexadecimal byte strings on the command line ("0109" is {0x01, 0x09}).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tools {

// Two hex digits per byte, either case. Raises error::EParseError for an
// odd length or a character that is no hex digit.
std::vector<uint8_t> from_hex(const std::string& text);

}  // namespace tools
