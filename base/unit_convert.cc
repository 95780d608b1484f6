// Conversion of values between units, and prefix steps.
#include <cmath>
#include <optional>

#include "base/error.h"
#include "base/fatal.h"
#include "base/unit.h"
#include "base/unit_tables.h"

namespace {

using namespace unit_tables;
using Side = std::vector<UnitEntry>;

// Deeper than any prefix chain; a guard against a loop, never reached by
// the tables as they stand.
constexpr int kMaxScaleDepth = 16;

// 10 to the power `n`, by repeated squaring on doubles.
double power10(int n) {
  double result = 1.0;
  double base = 10.0;
  for (int e = std::abs(n); e > 0; e >>= 1) {
    if (e & 1) result *= base;
    base *= base;
  }
  return n < 0 ? 1.0 / result : result;
}

int exponentOf(const std::optional<uint8_t>& prefix) {
  return prefix ? prefixRow(*prefix).exponent : 0;
}

double temperature(uint8_t from, uint8_t to, double v) {
  if (from != kCelsius && from != kFahrenheit && from != kKelvin) {
    throw error::EParseError("Unknown in temperature type: " + std::to_string(from));
  }
  if (to != kCelsius && to != kFahrenheit && to != kKelvin) {
    throw error::EParseError("Unknown out temperature type: " + std::to_string(to));
  }
  if (from == to) return v;
  const double celsius = from == kCelsius ? v : from == kFahrenheit ? (v - 32) / 1.8 : v - 273.15;
  if (to == kCelsius) return from == kKelvin ? v - 273.15 : celsius;
  if (to == kKelvin) return celsius + 273.15;
  return from == kKelvin ? (v - 273.15) * 1.8 + 32 : v * 1.8 + 32;
}

double applyConversion(const UnitEntry& e, double value, bool forwards) {
  TAVREL_ASSERT(e.tag() == UnitEntry::kConversion,
                "Can only apply conversions using unit conversion nodes");
  const UnitConversion& c = e.conversionCell();
  if (c.factor == 0) {
    return forwards ? temperature(c.from, c.to, value) : temperature(c.to, c.from, value);
  }
  return forwards ? value * c.factor : (1.0 / c.factor) * value;
}

// The first stage of a conversion, for one side: notes the target's prefix
// and puts a pending conversion in front of the first source type that converts to
// each target type. False when the target holds two prefixes.
bool matchTypes(const Side& target, Side& source, bool autoScale,
                std::optional<uint8_t>& toPrefix) {
  for (const UnitEntry& t : target) {
    if (t.tag() == UnitEntry::kPrefix) {
      if (toPrefix) return false;
      const uint8_t p = t.prefixIndex();
      toPrefix = autoScale && p == kPrefixCenti ? kPrefixOne : p;
    } else if (t.tag() == UnitEntry::kType) {
      uint8_t want = t.typeIndex();
      if (autoScale && want == kPercent) want = kFraction;
      for (size_t i = 0; i < source.size(); ++i) {
        if (source[i].tag() != UnitEntry::kType) continue;
        auto cell = conversionCell(source[i].typeIndex(), want);
        if (!cell) continue;
        source[i] = UnitEntry::conversion(*cell);
        source.insert(source.begin() + i + 1, UnitEntry::type(want));
        break;
      }
    }
  }
  return true;
}

// For one side: the source's prefix gives way to the target's.
// False when the source holds two prefixes.
bool swapPrefix(Side& source, const std::optional<uint8_t>& toPrefix,
                std::optional<uint8_t>& fromPrefix) {
  for (size_t i = 0; i < source.size(); ++i) {
    if (source[i].tag() != UnitEntry::kPrefix) continue;
    if (fromPrefix) return false;
    fromPrefix = source[i].prefixIndex();
    if (toPrefix) {
      source[i] = UnitEntry::prefix(*toPrefix);
    } else {
      source.erase(source.begin() + i);
      --i;
    }
  }
  if (!fromPrefix && toPrefix) source.insert(source.begin(), UnitEntry::prefix(*toPrefix));
  return true;
}

// Applies and removes the pending conversions of one side.
double applyConversions(Side& side, double value, bool forwards) {
  for (size_t i = 0; i < side.size();) {
    if (side[i].tag() == UnitEntry::kConversion) {
      value = applyConversion(side[i], value, forwards);
      side.erase(side.begin() + i);
    } else {
      ++i;
    }
  }
  return value;
}

struct Prefixes {
  std::optional<uint8_t> fromNum, fromDen, toNum, toDen;
};

// The value scaled out of the source prefixes and into the target prefixes.
// A binary unit scales by 1024 per third of the prefix's exponent. For a
// prefix whose exponent isn't a multiple of 3 (our decision): out of it, the
// truncated third counts and the rest is dropped; into it, the truncated
// third in powers of 1/1024 and the rest as factors of 10; a negative
// prefix isn't scaled at all on a binary unit.
double scale(double value, const Prefixes& p, bool fromBinary, bool toBinary) {
  if (fromBinary) {
    for (int i = 0; i < exponentOf(p.fromNum) / 3; ++i) value *= 1024;
  } else {
    value *= power10(exponentOf(p.fromNum));
  }
  value *= power10(-exponentOf(p.fromDen));
  if (!toBinary) return value * power10(-exponentOf(p.toNum)) * power10(exponentOf(p.toDen));
  const int k = exponentOf(p.toNum) / 3;
  if (k < 0) return value;
  const int r = std::abs(exponentOf(p.toNum) % 3);
  for (int i = 0; i < k; ++i) value *= 1.0 / 1024;
  for (int i = 0; i < r; ++i) value *= 10;
  return value * power10(exponentOf(p.toDen));
}

std::pair<double, Unit> convertAt(const Unit& from, double value, const Unit& to, bool autoScale,
                                  int depth) {
  Unit a = from;
  Unit b = to;
  const double incoming = value;
  Prefixes p;
  if (!matchTypes(b.numerators, a.numerators, autoScale, p.toNum) ||
      !matchTypes(b.denominators, a.denominators, autoScale, p.toDen) ||
      !swapPrefix(a.numerators, p.toNum, p.fromNum) ||
      !swapPrefix(a.denominators, p.toDen, p.fromDen)) {
    return {incoming, from};
  }
  value = applyConversions(a.numerators, value, true);
  value = applyConversions(a.denominators, value, false);
  value = scale(value, p, from.binary, to.binary);
  a.compact = to.compact;
  a.binary = to.binary;
  if (!autoScale || depth >= kMaxScaleDepth) return {value, a};
  const double base = to.binary ? 1024 : 1000;
  bool larger;
  if (value >= base) {
    larger = true;
  } else if (value > 0 && value < 1) {
    larger = false;
  } else {
    return {value, a};
  }
  auto [stepped, ok] = stepPrefix(to, larger);
  if (!ok) return {value, to};
  return convertAt(from, incoming, stepped, true, depth + 1);
}

}  // namespace

std::pair<Unit, bool> stepPrefix(const Unit& unit, bool larger) {
  Unit copy = unit;
  uint8_t current = kPrefixOne;
  Side& num = copy.numerators;
  for (size_t i = 0; i < num.size(); ++i) {
    if (num[i].tag() == UnitEntry::kPrefix) {
      current = num[i].prefixIndex();
      num.erase(num.begin() + i);
      break;
    }
  }
  bool hasCenti = false, hasType = false, banLarger = false, banSmaller = false;
  for (const UnitEntry& e : unit.numerators) {
    if (e.tag() == UnitEntry::kPrefix && e.prefixIndex() == kPrefixCenti) hasCenti = true;
    if (e.tag() != UnitEntry::kType) continue;
    hasType = true;
    const uint8_t t = e.typeIndex();
    if (t == kSecond) banLarger = true;
    if ((t >= 2 && t <= 7) || (t >= 14 && t <= 16) || (t >= 18 && t <= 21)) {
      banLarger = banSmaller = true;
    }
    if (t == kBit || t == kByte || t == kHertz) banSmaller = true;
  }
  const bool mayGoLarger = hasType && !hasCenti && !banLarger;
  const bool mayGoSmaller = hasType && !hasCenti && !banSmaller;
  const PrefixRow& row = prefixRow(current);
  const uint8_t next = larger ? row.larger : row.smaller;
  if (next == kNoPrefix) return {copy, false};
  const int exponent = prefixRow(next).exponent;
  if (larger && exponent >= 1 && !mayGoLarger) return {copy, false};
  if (!larger && exponent < 0 && !mayGoSmaller) return {copy, false};
  if (next != kPrefixOne) num.insert(num.begin(), UnitEntry::prefix(next));
  return {copy, true};
}

std::pair<double, Unit> convert(const Unit& from, double value, const Unit& to, bool autoScale) {
  return convertAt(from, value, to, autoScale, 0);
}

double convertValue(const Unit& from, double value, const Unit& to) {
  return convert(from, value, to, false).first;
}
