// Tags of the outside protocol's BER coding.
//
// A tag is held as one unsigned 32-bit number:
//   tag number x 8 + class x 2 + constructed bit
// with class 0 universal, 1 application, 2 context-specific. Two generations
// of tags live side by side: "current" (proper ASN.1 universal tags) and
// "legacy" (the older coding); the flag `legacy` picks one in every read and
// write. The wire forms are described in protocol/README.md.
#pragma once

#include <cstdint>
#include <string>

namespace protocol {

inline constexpr uint32_t BE_BOOLEAN = 8;          // 0x01 BOOLEAN
inline constexpr uint32_t BE_INTEGER = 16;         // 0x02 INTEGER, also big numbers
inline constexpr uint32_t BE_STRING_CURRENT = 32;  // 0x04 OCTET STRING
inline constexpr uint32_t BE_STRING_LEGACY = 176;  // 0x16 IA5String
inline constexpr uint32_t BE_NULL = 40;            // 0x05 NULL
inline constexpr uint32_t BE_REAL = 72;            // 0x09 REAL
inline constexpr uint32_t BE_ENUMERATED = 80;      // 0x0A ENUMERATED
inline constexpr uint32_t BE_SEQ_CURRENT = 129;    // 0x30 SEQUENCE
inline constexpr uint32_t BE_SEQ_LEGACY = 1;       // 0x20 constructed, number 0
inline constexpr uint32_t BE_SET_CURRENT = 137;    // 0x31 SET
inline constexpr uint32_t BE_SET_LEGACY = 9;       // 0x21 constructed, number 1

inline constexpr uint32_t kTagConstructed = 1;
inline constexpr uint32_t kTagClassApplication = 1 << 1;
inline constexpr uint32_t kTagClassContext = 2 << 1;

constexpr uint32_t string_tag(bool legacy) { return legacy ? BE_STRING_LEGACY : BE_STRING_CURRENT; }
constexpr uint32_t seq_tag(bool legacy) { return legacy ? BE_SEQ_LEGACY : BE_SEQ_CURRENT; }
constexpr uint32_t set_tag(bool legacy) { return legacy ? BE_SET_LEGACY : BE_SET_CURRENT; }
// Alternative n of a choice: context-specific constructed in the current
// generation, application constructed in the legacy one.
constexpr uint32_t choice_tag(uint32_t n, bool legacy) { return n * 8 + (legacy ? 3 : 5); }
// A top-level message n: application constructed in both generations.
constexpr uint32_t message_tag(uint32_t n) { return n * 8 + 3; }

constexpr bool is_constructed(uint32_t tag) { return (tag & kTagConstructed) != 0; }

// The words for a tag in error texts: the base tag's name ("BE_INTEGER") or,
// for any other tag, its number in decimal.
std::string tag_words(uint32_t tag);

}  // namespace protocol
