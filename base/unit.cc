// Unit entries and the decoding of the `unit` blob.
#include "base/unit.h"

#include <algorithm>

#include "base/error.h"
#include "base/fatal.h"
#include "base/unit_tables.h"

UnitEntry UnitEntry::string(const std::string& text) {
  UnitEntry e;
  e.tag_ = kString;
  e.text_ = text.substr(0, 15);
  e.length_ = static_cast<uint8_t>(e.text_.size());
  return e;
}

UnitEntry UnitEntry::conversion(const UnitConversion& cell) {
  UnitEntry e;
  e.tag_ = kConversion;
  e.conversion_ = cell;
  return e;
}

UnitEntry UnitEntry::undefined(uint32_t tag, uint8_t length) {
  UnitEntry e;
  e.tag_ = tag;
  e.length_ = length;
  return e;
}

uint8_t UnitEntry::prefixIndex() const {
  TAVREL_ASSERT(tag_ == kPrefix, "Tried to decode unit prefix, but entry is not a prefix");
  return index_;
}

uint8_t UnitEntry::typeIndex() const {
  TAVREL_ASSERT(tag_ == kType, "Tried to decode unit type, but entry is not a type");
  return index_;
}

uint8_t UnitEntry::opValue() const {
  TAVREL_ASSERT(tag_ == kOperator, "Tried to decode unit operator, but entry is not an operator");
  return index_;
}

const std::string& UnitEntry::text() const {
  TAVREL_ASSERT(tag_ == kString, "Tried to decode unit string, but entry is not an string");
  return text_;
}

const UnitConversion& UnitEntry::conversionCell() const {
  TAVREL_ASSERT(tag_ == kConversion,
                "Tried to decode conversion info, but entry does not contain a conversion info");
  return conversion_;
}

namespace {

using error::EParseError;

// Reads the entry at `cursor` and moves the cursor behind it.
UnitEntry entryFromBlob(const std::vector<uint8_t>& blob, size_t& cursor, size_t end) {
  if (cursor > end) throw EParseError("entryFromBlob past eod");
  if (cursor == end) throw EParseError("entryFromBlob at eod");
  const uint8_t byte = blob[cursor++];
  const uint32_t tag = (byte >> 4) * 16u;
  const uint8_t length = byte & 0x0f;
  if (tag == UnitEntry::kConversion || tag == UnitEntry::kVersion) {
    throw EParseError("Unexpected unit type in entryFromBlob: " + std::to_string(byte));
  }
  const bool oneByte =
      tag == UnitEntry::kPrefix || tag == UnitEntry::kType || tag == UnitEntry::kOperator;
  if (oneByte && length != 1) throw EParseError("Wrong length for entry when decoding blob");
  if (length > end - cursor) throw EParseError("entryFromBlob met eod");
  const uint8_t* value = blob.data() + cursor;
  cursor += length;
  if (cursor > end) throw EParseError("entryFromBlob past eod at exit");
  switch (tag) {
    case UnitEntry::kPrefix:
      return UnitEntry::prefix(value[0]);
    case UnitEntry::kType:
      return UnitEntry::type(value[0]);
    case UnitEntry::kOperator:
      return UnitEntry::op(value[0]);
    case UnitEntry::kString:
      return UnitEntry::string(std::string(value, value + length));
    default:  // No tag of this format: its bytes are passed over.
      return UnitEntry::undefined(tag, length);
  }
}

// Reads the prefix expression (already in reading order) into the two
// lists. An explicit stack of pending operands keeps deep nesting in a
// damaged blob off the call stack.
void parseExpression(const std::vector<UnitEntry>& entries, std::vector<UnitEntry>& num,
                     std::vector<UnitEntry>& den) {
  struct Target {
    std::vector<UnitEntry>* num;
    std::vector<UnitEntry>* den;
  };
  std::vector<Target> pending = {{&num, &den}};
  size_t next = 0;
  while (!pending.empty()) {
    const Target t = pending.back();
    pending.pop_back();
    if (next == entries.size()) throw EParseError("Error parsing blob, out of data");
    const UnitEntry& e = entries[next++];
    switch (e.tag()) {
      case UnitEntry::kPrefix:
      case UnitEntry::kType:
      case UnitEntry::kString:
        t.num->push_back(e);
        break;
      case UnitEntry::kOperator:
        if (e.opValue() == 1) {
          pending.push_back(t);
          pending.push_back(t);
        } else if (e.opValue() == 2) {
          // The dividend comes first; the divisor's lists are swapped.
          pending.push_back({t.den, t.num});
          pending.push_back(t);
        } else {
          throw EParseError("Unexpected operator: " + std::to_string(e.opValue()));
        }
        break;
      default:
        throw EParseError("Met unexpected unit tag: " + std::to_string(e.tag()));
    }
  }
  if (next != entries.size()) throw EParseError("Error parsing blob, extra input");
}

}  // namespace

bool unit_tables::hasBinaryType(const Unit& unit) {
  return std::any_of(unit.numerators.begin(), unit.numerators.end(), [](const UnitEntry& e) {
    return e.tag() == UnitEntry::kType && (e.typeIndex() == kBit || e.typeIndex() == kByte);
  });
}

Unit::Unit(const std::vector<uint8_t>& blob) : version(0) {
  size_t cursor = 0;
  if (blob.size() >= 2 && (blob[0] >> 4) == 0x5) {
    version = blob[1];
    cursor = 2;
    if (version > 1) {
      rawBlob = blob;
      return;
    }
  }
  std::vector<UnitEntry> entries;
  while (cursor < blob.size()) entries.push_back(entryFromBlob(blob, cursor, blob.size()));
  if (entries.empty()) return;
  std::reverse(entries.begin(), entries.end());
  parseExpression(entries, numerators, denominators);
  binary = unit_tables::hasBinaryType(*this);
}

namespace {

// Appends the entries of one side in reading order, joined by multiplies.
void appendProduct(const std::vector<UnitEntry>& side, std::vector<UnitEntry>& out) {
  for (size_t i = 0; i + 1 < side.size(); ++i) out.push_back(UnitEntry::op(1));
  out.insert(out.end(), side.begin(), side.end());
}

void appendEntry(const UnitEntry& e, std::vector<uint8_t>& blob) {
  switch (e.tag()) {
    case UnitEntry::kPrefix:
    case UnitEntry::kType:
    case UnitEntry::kOperator:
      blob.push_back(static_cast<uint8_t>(e.tag() | 1));
      blob.push_back(e.tag() == UnitEntry::kPrefix ? e.prefixIndex()
                     : e.tag() == UnitEntry::kType ? e.typeIndex()
                                                   : e.opValue());
      break;
    case UnitEntry::kString:
      blob.push_back(static_cast<uint8_t>(UnitEntry::kString | e.text().size()));
      blob.insert(blob.end(), e.text().begin(), e.text().end());
      break;
    default:
      throw EParseError("Unit can't be written as a blob");
  }
}

}  // namespace

std::vector<uint8_t> unitBlob(const Unit& unit) {
  if (unit.version > 1) return unit.rawBlob;
  if (unit.numerators.empty() && !unit.denominators.empty()) {
    throw EParseError("Unit can't be written as a blob");
  }
  std::vector<UnitEntry> reading;
  if (!unit.denominators.empty()) reading.push_back(UnitEntry::op(2));
  appendProduct(unit.numerators, reading);
  appendProduct(unit.denominators, reading);
  std::vector<uint8_t> blob;
  if (unit.version == 1) blob = {0x50, 0x01};
  for (auto it = reading.rbegin(); it != reading.rend(); ++it) appendEntry(*it, blob);
  return blob;
}
