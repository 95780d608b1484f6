// The fixed tables behind Unit: prefixes, types and conversion factors.
// Internal to the unit code of base/.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/unit.h"

namespace unit_tables {

inline constexpr uint8_t kNoPrefix = 15;  // "no neighbour" in the prefix table
inline constexpr uint8_t kPrefixOne = 7;  // the prefix "1"
inline constexpr uint8_t kPrefixCenti = 5;
inline constexpr uint8_t kLastPrefix = 14;
inline constexpr uint8_t kLastType = 21;

// Types by name where the code needs them.
enum Type : uint8_t {
  kSecond = 1,
  kBit = 8,
  kByte = 9,
  kHertz = 13,
  kCelsius = 14,
  kFahrenheit = 15,
  kKelvin = 16,
  kPercent = 19,
  kFraction = 20,
};

struct PrefixRow {
  const char* label;
  // The alternate first, then the further synonyms: every string that a
  // word may use.
  std::vector<const char*> strings;
  int exponent;
  uint8_t smaller;
  uint8_t larger;
  const char* alternate() const { return strings.front(); }
};

struct TypeRow {
  const char* label;
  std::vector<const char*> strings;  // alternate first, as above
  const char* alternate() const { return strings.front(); }
};

// Rows by index; an index past the table reads as row 0 (for a prefix:
// with exponent 0 and no neighbours).
const PrefixRow& prefixRow(uint8_t index);
const TypeRow& typeRow(uint8_t index);

// The factor of converting type `from` to type `to`, if the pair converts.
std::optional<UnitConversion> conversionCell(uint8_t from, uint8_t to);

// True when `unit` holds a bit or byte type among its numerators.
bool hasBinaryType(const Unit& unit);

}  // namespace unit_tables
