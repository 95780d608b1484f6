#include "base/unit_tables.h"

#include <map>
#include <utility>

namespace unit_tables {

const PrefixRow& prefixRow(uint8_t index) {
  static const std::vector<PrefixRow> rows = {
      {"", {" "}, 0, 7, 7},          {"p", {"p"}, -12, 15, 2}, {"n", {"n"}, -9, 1, 3},
      {"u", {"u"}, -6, 2, 4},        {"m", {"m"}, -3, 3, 7},   {"c", {"0.01", "c"}, -2, 4, 7},
      {"d", {"d", "0.1"}, -1, 4, 7}, {"1", {"1"}, 0, 4, 9},    {"h", {"h"}, 2, 7, 9},
      {"k", {"k"}, 3, 7, 10},        {"M", {"M"}, 6, 9, 11},   {"G", {"G"}, 9, 10, 12},
      {"T", {"T"}, 12, 11, 13},      {"P", {"P"}, 15, 12, 15}, {"10", {"10"}, 1, 7, 9},
  };
  static const PrefixRow beyond = {"", {" "}, 0, kNoPrefix, kNoPrefix};
  return index <= kLastPrefix ? rows[index] : beyond;
}

const TypeRow& typeRow(uint8_t index) {
  static const std::vector<TypeRow> rows = {
      {"", {""}},
      {"s", {"s"}},
      {"min", {"min"}},
      {"h", {"h", "hour"}},
      {"day", {"day"}},
      {"week", {"week"}},
      {"mon", {"mon", "month"}},
      {"year", {"year"}},
      {"b", {"b", "bit"}},
      {"B", {"B", "byte"}},
      {"V", {"V", "Volt", "0.00V"}},
      {"A", {"A", "Amp"}},
      {"W", {"W", "Watt"}},
      {"Hz", {"Hz"}},
      {"C", {"C"}},
      {"F", {"F"}},
      {"K", {"K"}},
      {"m", {"m"}},
      {"\"", {"\"", "inch"}},
      {"%", {"%"}},
      {"%", {"1%", "pct"}},
      {"rpm", {"RPM", "rpm", "1.00RPM"}},
  };
  return rows[index <= kLastType ? index : 0];
}

namespace {

using Table = std::map<std::pair<uint8_t, uint8_t>, double>;

Table build_table() {
  Table table;
  // Time types 1 (s) to 7 (year) by their length in seconds.
  const double lengths[] = {0, 1, 60, 3600, 86400, 604800, 2678400, 31536000};
  for (uint8_t from = 1; from <= 7; ++from) {
    for (uint8_t to = 1; to <= 7; ++to) {
      if (from != to) table[{from, to}] = lengths[from] / lengths[to];
    }
  }
  // Calendar pairs that don't follow the lengths.
  table[{5, 6}] = 0.25;
  table[{6, 5}] = 4.0;
  table[{5, 7}] = 1.0 / 53;
  table[{7, 5}] = 53.0;
  table[{6, 7}] = 1.0 / 12;
  table[{7, 6}] = 12.0;
  table[{kBit, kByte}] = 0.125;
  table[{kByte, kBit}] = 8.0;
  table[{17, 18}] = 39.37007874;
  table[{18, 17}] = 0.0254;
  table[{kPercent, kFraction}] = 0.01;
  table[{kFraction, kPercent}] = 100.0;
  for (uint8_t from : {kCelsius, kFahrenheit, kKelvin}) {
    for (uint8_t to : {kCelsius, kFahrenheit, kKelvin}) {
      if (from != to) table[{from, to}] = 0;
    }
  }
  return table;
}

}  // namespace

std::optional<UnitConversion> conversionCell(uint8_t from, uint8_t to) {
  static const Table table = build_table();
  auto it = table.find({from, to});
  if (it == table.end()) return std::nullopt;
  return UnitConversion{from, to, it->second};
}

}  // namespace unit_tables
