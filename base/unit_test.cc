// Decoding units from blobs and texts, and their labels.
#include "base/unit.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace {

std::vector<uint8_t> bytes(std::initializer_list<int> list) {
  return std::vector<uint8_t>(list.begin(), list.end());
}

// "kB/s": divide, multiply, prefix k, type B, type s, stored backwards.
const std::vector<uint8_t> kKiloBytePerSecond =
    bytes({0x11, 0x01, 0x11, 0x09, 0x01, 0x09, 0x21, 0x01, 0x21, 0x02});

std::string plain(const Unit& u) { return getLabel(u, false, false); }
std::string display(const Unit& u) { return getLabel(u, false, true); }
std::string alternate(const Unit& u) { return getLabel(u, true, true); }

// The error text of decoding `blob`, or "parsed" when it decodes.
std::string blobError(const std::vector<uint8_t>& blob) {
  try {
    Unit u(blob);
    return "parsed";
  } catch (const error::EParseError& e) {
    return e.text();
  }
}

TEST(UnitBlob, DecodesAnExpression) {
  Unit u(kKiloBytePerSecond);
  EXPECT_EQ("KiB/s", plain(u));
  EXPECT_EQ("kB/s", alternate(u));
  Unit decimal = u;
  decimal.setBinary(false);
  EXPECT_EQ("kB/s", plain(decimal));
  EXPECT_TRUE(u.isBinary());
  EXPECT_EQ(0, u.version);
  ASSERT_EQ(2u, u.numerators.size());
  EXPECT_EQ(9, u.numerators[0].prefixIndex());
  EXPECT_EQ(9, u.numerators[1].typeIndex());
  EXPECT_EQ(1, u.denominators.at(0).typeIndex());
  EXPECT_EQ(Unit("kB/s").numerators, u.numerators);
}

TEST(UnitBlob, DivideWithinADivisorMovesBack) {
  // a / (b / c) is a*c / b: divide, string a, divide, string b, string c.
  Unit u(bytes({0x31, 'c', 0x31, 'b', 0x21, 0x02, 0x31, 'a', 0x21, 0x02}));
  EXPECT_EQ("a*c/b", plain(u));
}

TEST(UnitBlob, Header) {
  Unit v1(bytes({0x50, 0x01, 0x11, 0x01}));
  EXPECT_EQ(1, v1.version);
  EXPECT_EQ("s", plain(v1));
  Unit empty(bytes({0x5f, 0x00}));
  EXPECT_EQ(0, empty.version);
  EXPECT_TRUE(empty.numerators.empty());
  EXPECT_EQ("", plain(empty));
  // A later version is kept whole and not read, even when it is garbage.
  const std::vector<uint8_t> later = bytes({0x50, 0x02, 0xff, 0x41});
  Unit v2(later);
  EXPECT_EQ(2, v2.version);
  EXPECT_EQ("", plain(v2));
  Unit copy = v2;
  EXPECT_EQ(later, copy.rawBlob);
  // One byte with the header's nibble is no header but a version entry.
  EXPECT_EQ("Unexpected unit type in entryFromBlob: 80", blobError(bytes({0x50})));
  EXPECT_EQ("", plain(Unit(std::vector<uint8_t>{})));
}

TEST(UnitBlob, DamagedBlobsSayWhy) {
  EXPECT_EQ("entryFromBlob met eod", blobError(bytes({0x33, 'a'})));
  EXPECT_EQ("entryFromBlob met eod", blobError(bytes({0x11})));
  EXPECT_EQ("Wrong length for entry when decoding blob", blobError(bytes({0x12, 1, 1})));
  EXPECT_EQ("Wrong length for entry when decoding blob", blobError(bytes({0x00})));
  EXPECT_EQ("Unexpected unit type in entryFromBlob: 65", blobError(bytes({0x41, 0x01})));
  EXPECT_EQ("Error parsing blob, out of data", blobError(bytes({0x21, 0x02})));
  EXPECT_EQ("Error parsing blob, extra input", blobError(bytes({0x11, 0x01, 0x11, 0x02})));
  EXPECT_EQ("Unexpected operator: 3", blobError(bytes({0x11, 1, 0x11, 1, 0x21, 3})));
  // Unknown high nibbles are passed over on reading but can't be parsed.
  EXPECT_EQ("Met unexpected unit tag: 96", blobError(bytes({0x62, 0xaa, 0xbb})));
  EXPECT_EQ("Met unexpected unit tag: 240", blobError(bytes({0xf0})));
}

TEST(UnitBlob, EveryTruncationAndByteFlipFailsCleanly) {
  for (size_t n = 0; n <= kKiloBytePerSecond.size(); ++n) {
    std::vector<uint8_t> cut(kKiloBytePerSecond.begin(), kKiloBytePerSecond.begin() + n);
    const std::string result = blobError(cut);
    EXPECT_TRUE(result == "parsed" || result.find("eod") != std::string::npos ||
                result.find("Error parsing blob") != std::string::npos)
        << n << ": " << result;
  }
  for (size_t i = 0; i < kKiloBytePerSecond.size(); ++i) {
    for (int b = 0; b < 256; ++b) {
      std::vector<uint8_t> blob = kKiloBytePerSecond;
      blob[i] = static_cast<uint8_t>(b);
      blobError(blob);  // Must not crash or read outside the vector.
    }
  }
}

TEST(UnitBlob, DeepNestingNeedsNoStack) {
  std::vector<uint8_t> blob;
  for (int i = 0; i < 100001; ++i) blob.insert(blob.end(), {0x11, 0x01});
  for (int i = 0; i < 100000; ++i) blob.insert(blob.end(), {0x21, 0x01});
  Unit u(blob);
  EXPECT_EQ(100001u, u.numerators.size());
}

TEST(UnitText, WordsFindTheirTypesAndPrefixes) {
  const Unit ms("ms");
  EXPECT_EQ(4, ms.numerators.at(0).prefixIndex());
  EXPECT_EQ(1, ms.numerators.at(1).typeIndex());
  EXPECT_EQ(2, Unit("min").numerators.at(0).typeIndex());
  EXPECT_EQ(1u, Unit("min").numerators.size());
  EXPECT_EQ(17, Unit("m").numerators.at(0).typeIndex());
  EXPECT_EQ(19, Unit("%").numerators.at(0).typeIndex());
  EXPECT_EQ(20, Unit("1%").numerators.at(0).typeIndex());
  EXPECT_EQ(20, Unit("pct").numerators.at(0).typeIndex());
  EXPECT_EQ(3, Unit("hour").numerators.at(0).typeIndex());
  EXPECT_EQ(6, Unit("month").numerators.at(0).typeIndex());
  EXPECT_EQ(10, Unit("Volt").numerators.at(0).typeIndex());
  EXPECT_EQ(5, Unit("0.01").numerators.at(0).prefixIndex());
  EXPECT_EQ(6, Unit("0.1").numerators.at(0).prefixIndex());
  EXPECT_EQ(21, Unit("1.00RPM").numerators.at(0).typeIndex());
  const Unit kb("kB");
  EXPECT_EQ(9, kb.numerators.at(0).prefixIndex());
  EXPECT_EQ(9, kb.numerators.at(1).typeIndex());
  EXPECT_TRUE(kb.isBinary());
  EXPECT_FALSE(Unit("kW").isBinary());
  EXPECT_FALSE(Unit("1/B").isBinary());
  EXPECT_EQ(1, Unit("kW").version);
}

TEST(UnitText, LabelsOfParsedTexts) {
  EXPECT_EQ("KiB/s", plain(Unit("kB/s")));
  EXPECT_EQ("KiB/s", display(Unit("kB / s")));
  EXPECT_EQ("m/s", plain(Unit("m/s")));
  EXPECT_EQ("kW*h", plain(Unit("kW*h")));
  EXPECT_EQ("kW*h", plain(Unit("kW h")));
  EXPECT_EQ("B*KiB/s", display(Unit("B/s*kB")));  // '*' goes back to the numerators
  EXPECT_EQ("kW/s/h", plain(Unit("kW/s/h")));
  EXPECT_EQ("1/s", plain(Unit("/s")));
  EXPECT_EQ("/s", display(Unit("/s")));
  EXPECT_EQ("%", plain(Unit("%")));
  EXPECT_EQ("%", plain(Unit("pct")));
  EXPECT_EQ("1%", alternate(Unit("pct")));
  EXPECT_EQ("RPM", alternate(Unit("rpm")));
  EXPECT_EQ("0.01", alternate(Unit("0.01")));
  EXPECT_EQ("c", plain(Unit("0.01")));
  EXPECT_EQ("1s", display(Unit("1s")));  // no prefix "1" in a text
  // The prefix "1" of a blob is left out of the display label.
  const Unit oneSecond(bytes({0x11, 0x01, 0x01, 0x07, 0x21, 0x01}));
  EXPECT_EQ("1s", plain(oneSecond));
  EXPECT_EQ("s", display(oneSecond));
  EXPECT_EQ("s", alternate(oneSecond));
}

TEST(UnitText, UnknownWordsStayText) {
  EXPECT_EQ("furlongs/fortnight", plain(Unit("furlongs/fortnight")));
  EXPECT_EQ(UnitEntry::kString, Unit("foo").numerators.at(0).tag());
  EXPECT_EQ("abcdefghijklmno", plain(Unit("abcdefghijklmnopqrstuvwxyz")));
  EXPECT_EQ("  ", plain(Unit("  ")));
  EXPECT_EQ("", plain(Unit("")));
}

TEST(UnitBlob, WritesWhatItReads) {
  EXPECT_EQ(kKiloBytePerSecond, unitBlob(Unit(kKiloBytePerSecond)));
  for (const char* text : {"kB/s", "s", "W*h/min/m", "furlongs/fortnight", "", "a*b*c", "1%"}) {
    const Unit u(text);
    EXPECT_EQ(u, Unit(unitBlob(u))) << text;
  }
  const Unit later(bytes({0x50, 0x07, 0x01}));
  EXPECT_EQ(later.rawBlob, unitBlob(later));
  EXPECT_EQ(bytes({}), unitBlob(Unit(bytes({}))));
  EXPECT_THROW(unitBlob(Unit("/s")), error::EParseError);
  Unit converting;
  converting.numerators.push_back(UnitEntry::conversion({1, 2, 1.0 / 60}));
  EXPECT_THROW(unitBlob(converting), error::EParseError);
}

TEST(UnitLabel, ConversionAndOperatorEntries) {
  Unit u;
  u.numerators.push_back(UnitEntry::conversion({1, 2, 1.0 / 60}));
  EXPECT_EQ("(s/min)", plain(u));
  u.numerators.push_back(UnitEntry::op(1));
  EXPECT_THROW(plain(u), error::EParseError);
}

TEST(UnitEntryDeathTest, ReadingTheWrongKindIsFatal) {
  EXPECT_DEATH(UnitEntry::type(1).prefixIndex(), "entry is not a prefix");
  EXPECT_DEATH(UnitEntry::prefix(1).typeIndex(), "entry is not a type");
  EXPECT_DEATH(UnitEntry::prefix(1).text(), "entry is not an string");
  EXPECT_DEATH(UnitEntry::prefix(1).opValue(), "entry is not an operator");
  EXPECT_DEATH(UnitEntry::prefix(1).conversionCell(), "does not contain a conversion info");
}

}  // namespace
