// A generic view of BER data for tools and tests: reads one constructed
// value of any tag, keeping every element, and renders it as an indented
// tree, one value per line:
//
//   [APPLICATION 0] {
//     [UNIVERSAL 2] BE_INTEGER: 00 80
//     [UNIVERSAL 4] BE_STRING_CURRENT: 61 62 "ab"
//   }
//
// Content is shown in hex (the first 64 bytes, then "... (N bytes)"), and
// as text in quotes when all of it is printable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace protocol {

// The longest primitive content the tree keeps.
inline constexpr size_t kTreeMaxContent = 1 << 20;

// Reads one value from `data` and renders it. `consumed` gets the number of
// bytes read. Raises EBer on malformed data (see ber_reader.h).
std::string dump_ber(const uint8_t* data, size_t size, bool legacy, size_t* consumed);

// "[UNIVERSAL 2]", "[APPLICATION 0]", "[CONTEXT 3]" or "[PRIVATE 1]" for a
// tag value.
std::string tag_class_text(uint32_t tag);

}  // namespace protocol
