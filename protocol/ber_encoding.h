// The low-level BER forms that every value's write() uses: tags, definite
// lengths, primitive values and the indefinite-length frame of constructed
// values, plus the content of two's complement integers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "protocol/ber_value.h"

namespace protocol {

// A tag value below 248 takes one byte (its low 3 bits on top, tag >> 3
// below); others take the byte (tag & 7) x 32 + 31 and then tag >> 3 in base
// 128, most significant group first. Tag number 0 in the long form is the
// fatal assertion "Tag encoding failed".
void write_tag(BerOutput& out, uint32_t tag);
// 0 to 127 in one byte; otherwise 0x80 + k and k bytes, k as small as
// possible (at most 4).
void write_length(BerOutput& out, size_t length);
// Tag, definite length, content.
void write_primitive(BerOutput& out, uint32_t tag, const uint8_t* content, size_t n);
// Constructed values are always written with the indefinite length: the tag
// and 0x80, the elements, then two zero bytes.
void open_constructed(BerOutput& out, uint32_t tag);
void close_constructed(BerOutput& out);

// Two's complement content in the fewest bytes (empty never: 0 is one byte).
std::vector<uint8_t> signed_content(int64_t value);
// An unsigned value as a positive two's complement number: a zero byte goes
// first when the top bit would otherwise be set.
std::vector<uint8_t> unsigned_content(uint64_t value);

}  // namespace protocol
