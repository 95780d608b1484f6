// The reader loop over a byte buffer: the counterpart of write() for tests
// and tools (the report generator itself receives no BER).
//
// It reads a tag and a length, asks a constructed value for each element by
// index and tag (element()), feeds a primitive's content through reserve()
// and append(), calls readDone() when a value is complete, and checks that a
// constructed value saw at least required_elements(). Lengths may be definite
// (short or long form, up to 4 bytes) or, for constructed values only,
// indefinite, ended by two zero bytes. Nesting deeper than kMaxDepth is
// refused, so no input can exhaust the stack.
//
// Faults raise EBer: "Unexpected end of BER data", "Bad tag encoding", "Bad
// length encoding", "Indefinite length of a primitive value", "Length exceeds
// the enclosing value", "Primitive encoding of a constructed value",
// "Constructed encoding of a primitive value", "Too few elements, got N
// required M", "BER nesting too deep", and the values' own faults.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "protocol/ber_protocol.h"
#include "protocol/ber_value.h"

namespace protocol {

class BerReader {
 public:
  static constexpr int kMaxDepth = 64;

  // Reads from `data`, which the caller keeps alive, in the given generation.
  BerReader(const uint8_t* data, size_t size, bool legacy)
      : data_(data), size_(size), legacy_(legacy) {}

  // Reads the next top-level message: its tag, protocol.make(tag, legacy),
  // then its content. The message belongs to the caller.
  std::unique_ptr<BerConstructed> read_message(const BerProtocol& protocol);
  // Reads the next value into `value`; its tag must be value.tag(legacy),
  // else "Tag mismatch, got <tag> expected <words>".
  void read(BerValue& value);

  bool at_end() const { return pos_ == size_; }
  size_t position() const { return pos_; }

 private:
  uint32_t read_tag();
  // The definite length, or nullopt for the indefinite form.
  std::optional<size_t> read_length();
  void read_content(BerValue& value, uint32_t tag, std::optional<size_t> length, int depth);
  void read_primitive(BerPrimitive& value, std::optional<size_t> length);
  void read_elements(BerConstructed& value, std::optional<size_t> length, int depth);
  // Raises unless `length` bytes are left in the data and the enclosing value.
  void check_available(size_t length) const;
  // True (and consumes them) at the two zero bytes of an indefinite length.
  bool at_end_of_contents();
  uint8_t next_byte();

  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
  // The end of the innermost enclosing definite length.
  size_t limit_ = SIZE_MAX;
  bool legacy_;
};

}  // namespace protocol
