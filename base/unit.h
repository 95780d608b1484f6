// Units of measured values: the decoded `unit` blob (or a short text such
// as "kB/s"), its labels, and conversion between units with an automatic
// choice of decimal or binary prefix.
//
// A unit is an expression: numerator and denominator lists of prefix,
// type and string entries. "kB/s" is the prefix k and the type B over the
// type s. The blob format is written down in base/README.md.
//
// Unit is a plain value; the tables behind it are built once and never
// change. Not thread-safe on first use (the process has one thread).
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// One cell of the conversion table: a pending conversion of a value from
// type `from` to type `to`. A factor of 0 marks a temperature pair.
struct UnitConversion {
  uint8_t from = 0;
  uint8_t to = 0;
  double factor = 0;
  bool operator==(const UnitConversion&) const = default;
};

// One entry of a unit expression: a tagged value.
class UnitEntry {
 public:
  static constexpr uint32_t kPrefix = 0;       // index into the prefix table
  static constexpr uint32_t kType = 16;        // index into the type table
  static constexpr uint32_t kOperator = 32;    // 1 multiply, 2 divide
  static constexpr uint32_t kString = 48;      // free text, up to 15 chars
  static constexpr uint32_t kConversion = 64;  // only inside a conversion
  static constexpr uint32_t kVersion = 80;     // blob header only

  static UnitEntry prefix(uint8_t index) { return UnitEntry(kPrefix, index); }
  static UnitEntry type(uint8_t index) { return UnitEntry(kType, index); }
  static UnitEntry op(uint8_t value) { return UnitEntry(kOperator, value); }
  // Keeps the first 15 characters of `text`.
  static UnitEntry string(const std::string& text);
  static UnitEntry conversion(const UnitConversion& cell);
  // An entry whose tag is no tag of the format (high nibble 6 to 15 in a
  // blob); it has no value.
  static UnitEntry undefined(uint32_t tag, uint8_t length);

  uint32_t tag() const { return tag_; }
  uint8_t length() const { return length_; }

  // The value by kind. Asking an entry for a kind that it is not is a
  // fatal assertion ("Tried to decode unit prefix, but entry is not a
  // prefix" and so on).
  uint8_t prefixIndex() const;
  uint8_t typeIndex() const;
  uint8_t opValue() const;
  const std::string& text() const;
  const UnitConversion& conversionCell() const;

  bool operator==(const UnitEntry& b) const = default;

 private:
  UnitEntry(uint32_t tag, uint8_t index) : tag_(tag), length_(1), index_(index) {}
  UnitEntry() = default;

  uint32_t tag_ = kPrefix;
  uint8_t length_ = 0;
  uint8_t index_ = 0;
  std::string text_;
  UnitConversion conversion_;
};

struct Unit {
  // Empty unit, `version` 1.
  Unit() = default;
  // Decodes a `unit` blob. A header `version` above 1 is kept unparsed in
  // `rawBlob` (both lists empty; the label is empty). Raises
  // error::EParseError with the reader's words for a damaged blob; never
  // reads outside `blob`.
  explicit Unit(const std::vector<uint8_t>& blob);
  // Parses a text like "s", "kB/s" or "m/s"; words that name no unit
  // become string entries, so any text gives a unit. Never raises.
  explicit Unit(const std::string& text);

  bool isBinary() const { return binary; }
  void setBinary(bool b) { binary = b; }
  bool isCompact() const { return compact; }
  void setCompact(bool c) { compact = c; }

  bool operator==(const Unit& b) const = default;

  std::vector<UnitEntry> numerators;
  std::vector<UnitEntry> denominators;
  // Asks for the short forms of value texts (small charts).
  bool compact = false;
  // Scales by 1024 and labels prefixes "Ki", "Mi", ...; worked out when
  // parsed (a bit or byte type among the numerators).
  bool binary = false;
  // 1 for a unit built empty or from text, 0 for a blob without header.
  uint8_t version = 1;
  // The blob of a unit whose `version` is above 1; empty otherwise.
  std::vector<uint8_t> rawBlob;
};

// The `unit` blob of `unit`, which Unit(blob) reads back to an equal unit:
// the kept blob for a `version` above 1; otherwise a header for version 1
// (none for version 0) and the entries, products as multiplies and the
// denominators behind one divide. Raises error::EParseError "Unit can't be
// written as a blob" for conversion, operator or undefined entries, and
// for denominators without numerators, which the format can't hold.
std::vector<uint8_t> unitBlob(const Unit& unit);

// The unit's text. Plain label: (false, false); alternate label: (true,
// true); display label: (false, true). Raises error::EParseError "Version
// tag encountered in getLabel" for an operator or version entry.
std::string getLabel(const Unit& unit, bool useAlternate, bool omitOne);

// Converts `value` from `from` to `to`; gives the value and the unit it is
// now in. Incompatible types stay as they are and only the prefixes scale;
// two prefixes on one side give the value and `from` unchanged. With
// `autoScale` the prefix is chosen so that the value lies between 1 and
// the base (1000, or 1024 for a binary `to`) where the unit allows it.
// Raises error::EParseError only for a damaged temperature conversion.
std::pair<double, Unit> convert(const Unit& from, double value, const Unit& to, bool autoScale);
// convert() without automatic scaling, giving the value alone.
double convertValue(const Unit& from, double value, const Unit& to);

// One prefix step up (`larger`) or down from the unit's first numerator
// prefix, where the unit's types allow it (seconds only scale down, bytes
// only up). Gives the stepped unit and true; on failure the unit without
// its prefix and false.
std::pair<Unit, bool> stepPrefix(const Unit& unit, bool larger);
