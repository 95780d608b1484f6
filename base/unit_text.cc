// Units as text: parsing a short text into a Unit, and the unit's labels.
#include <cctype>
#include <string_view>

#include "base/error.h"
#include "base/fatal.h"
#include "base/unit.h"
#include "base/unit_tables.h"

namespace {

using namespace unit_tables;

// Adds the entries for one word to `side`: the first type string (from
// the last type down) that the word holds, with a prefix row that makes
// the word whole; a word that matches nothing becomes a string entry.
void addWord(std::string_view word, std::vector<UnitEntry>& side) {
  for (int type = kLastType; type >= 0; --type) {
    for (std::string_view typeText : typeRow(type).strings) {
      if (word.find(typeText) == std::string_view::npos) continue;
      for (uint8_t row = 1; row <= kLastPrefix; ++row) {
        for (std::string_view prefixText : prefixRow(row).strings) {
          if (row == kPrefixOne) {
            if (word != typeText) continue;
            side.push_back(UnitEntry::type(type));
            return;
          }
          if (type != 0) {
            if (!word.starts_with(prefixText) || word.substr(prefixText.size()) != typeText) {
              continue;
            }
            side.push_back(UnitEntry::prefix(row));
            side.push_back(UnitEntry::type(type));
            return;
          }
          if (word != prefixText) continue;
          side.push_back(UnitEntry::prefix(row));
          return;
        }
      }
    }
  }
  side.push_back(UnitEntry::string(std::string(word)));
}

}  // namespace

Unit::Unit(const std::string& text) {
  std::vector<UnitEntry>* side = &numerators;
  size_t start = 0;
  while (start <= text.size()) {
    const size_t stop = std::min(text.find_first_of("*/ ", start), text.size());
    if (stop > start) addWord(std::string_view(text).substr(start, stop - start), *side);
    if (stop == text.size()) break;
    switch (text[stop]) {
      case '*':
        side = &numerators;
        break;
      case '/':
        side = &denominators;
        break;
      case ' ':
        break;
      default:
        assertion_failed("Tokenization error");
    }
    start = stop + 1;
  }
  if (!text.empty() && numerators.empty() && denominators.empty()) {
    numerators.push_back(UnitEntry::string(text));
  }
  binary = hasBinaryType(*this);
}

namespace {

std::string prefixText(uint8_t index, bool useAlternate, bool omitOne, bool binaryNumerator) {
  if (omitOne && index == kPrefixOne) return "";
  const PrefixRow& row = prefixRow(index);
  if (useAlternate) return row.alternate();
  if (!binaryNumerator) return row.label;
  std::string text = row.label;
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text + "i";
}

// The entries of one side, joined with `separator`; a type directly after
// a prefix is written behind it without one.
std::string sideLabel(const std::vector<UnitEntry>& side, char separator, bool useAlternate,
                      bool omitOne, bool binaryNumerator) {
  std::string text;
  bool afterPrefix = false;
  for (size_t i = 0; i < side.size(); ++i) {
    const UnitEntry& e = side[i];
    const bool joined = afterPrefix && e.tag() == UnitEntry::kType;
    if (i > 0 && !joined) text += separator;
    afterPrefix = e.tag() == UnitEntry::kPrefix;
    switch (e.tag()) {
      case UnitEntry::kPrefix:
        text += prefixText(e.prefixIndex(), useAlternate, omitOne, binaryNumerator);
        break;
      case UnitEntry::kType: {
        const TypeRow& row = typeRow(e.typeIndex());
        text += useAlternate ? row.alternate() : row.label;
        break;
      }
      case UnitEntry::kString:
        text += e.text();
        break;
      case UnitEntry::kConversion: {
        const UnitConversion& c = e.conversionCell();
        text += std::string("(") + typeRow(c.from).label + "/" + typeRow(c.to).label + ")";
        break;
      }
      default:
        throw error::EParseError("Version tag encountered in getLabel");
    }
  }
  return text;
}

}  // namespace

std::string getLabel(const Unit& unit, bool useAlternate, bool omitOne) {
  std::string text = sideLabel(unit.numerators, '*', useAlternate, omitOne, unit.binary);
  if (!unit.denominators.empty()) {
    if (text.empty() && !omitOne) text = "1";
    text += "/" + sideLabel(unit.denominators, '/', useAlternate, omitOne, false);
  }
  return text;
}
