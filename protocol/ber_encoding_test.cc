// The byte forms of tags, lengths and primitive values, written and read.
#include "protocol/ber_encoding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "protocol/ber_bignum.h"
#include "protocol/ber_integer.h"
#include "protocol/ber_primitives.h"
#include "protocol/ber_skipper.h"
#include "protocol/ber_test_util.h"
#include "protocol/ber_tree.h"

namespace protocol {
namespace {

using testing::decode;
using testing::encode;
using testing::fault;
using testing::hex;
using testing::unhex;

std::string tag_bytes(uint32_t tag) {
  BerBuffer out;
  write_tag(out, tag);
  return hex(out.bytes());
}

std::string length_bytes(size_t length) {
  BerBuffer out;
  write_length(out, length);
  return hex(out.bytes());
}

TEST(BerTags, BaseTagsGiveTheirWireBytes) {
  EXPECT_EQ("01", tag_bytes(BE_BOOLEAN));
  EXPECT_EQ("02", tag_bytes(BE_INTEGER));
  EXPECT_EQ("04", tag_bytes(BE_STRING_CURRENT));
  EXPECT_EQ("16", tag_bytes(BE_STRING_LEGACY));
  EXPECT_EQ("05", tag_bytes(BE_NULL));
  EXPECT_EQ("09", tag_bytes(BE_REAL));
  EXPECT_EQ("0A", tag_bytes(BE_ENUMERATED));
  EXPECT_EQ("30", tag_bytes(BE_SEQ_CURRENT));
  EXPECT_EQ("20", tag_bytes(BE_SEQ_LEGACY));
  EXPECT_EQ("31", tag_bytes(BE_SET_CURRENT));
  EXPECT_EQ("21", tag_bytes(BE_SET_LEGACY));
  EXPECT_EQ("A3", tag_bytes(choice_tag(3, false)));
  EXPECT_EQ("63", tag_bytes(choice_tag(3, true)));
  EXPECT_EQ("7E", tag_bytes(message_tag(30)));
}

TEST(BerTags, NumberThirtyTakesOneByteAndThirtyOneTwo) {
  EXPECT_EQ("1E", tag_bytes(30 * 8));
  EXPECT_EQ("1F 1F", tag_bytes(31 * 8));
  EXPECT_EQ("7F 1F", tag_bytes(message_tag(31)));
  EXPECT_EQ("BF 1F", tag_bytes(choice_tag(31, false)));
  EXPECT_EQ("1F 81 00", tag_bytes(128 * 8));
  EXPECT_EQ("DF 81 FF FF FF 7F", tag_bytes(0xFFFFFFFFu - 1));
}

TEST(BerTags, LongTagsReadBack) {
  for (uint32_t tag : {message_tag(31), message_tag(33), choice_tag(200, false), 0xFFFFFFFBu}) {
    BerBuffer out;
    open_constructed(out, tag);
    close_constructed(out);
    size_t used = 0;
    std::string text = dump_ber(out.bytes().data(), out.bytes().size(), false, &used);
    EXPECT_EQ(tag_class_text(tag) + " {\n}\n", text) << tag;
    EXPECT_EQ(out.bytes().size(), used);
  }
}

TEST(BerTags, BadLongTagsAreRefused) {
  // A long form for a number below 31, and a number beyond 32 bits.
  EXPECT_EQ("Bad tag encoding",
            fault([] { dump_ber(unhex("3F 05 80 00 00").data(), 5, false, nullptr); }));
  std::vector<uint8_t> huge = unhex("3F 8F FF FF FF FF 7F 80 00 00");
  EXPECT_EQ("Bad tag encoding", fault([&] { dump_ber(huge.data(), huge.size(), false, nullptr); }));
}

TEST(BerLengths, ShortAndLongForms) {
  EXPECT_EQ("00", length_bytes(0));
  EXPECT_EQ("7F", length_bytes(127));
  EXPECT_EQ("81 80", length_bytes(128));
  EXPECT_EQ("81 FF", length_bytes(255));
  EXPECT_EQ("82 01 00", length_bytes(256));
  EXPECT_EQ("83 01 00 00", length_bytes(65536));
  EXPECT_EQ("84 FF FF FF FF", length_bytes(0xFFFFFFFFu));
}

TEST(BerLengths, StringsOfEachLengthFormRoundTrip) {
  for (size_t n : {0, 1, 127, 128, 255, 256, 1024}) {
    BerString out(1024, std::string(n, 'x'));
    std::vector<uint8_t> bytes = testing::encode_bytes(out);
    BerString in(1024);
    decode(in, bytes);
    EXPECT_EQ(out.value(), in.value()) << n;
  }
  EXPECT_EQ("04 81 80", encode(BerString(128, std::string(128, 'x'))).substr(0, 8));
  EXPECT_EQ("04 82 01 00", encode(BerString(256, std::string(256, 'x'))).substr(0, 11));
}

TEST(BerIntegers, FewestTwosComplementBytes) {
  EXPECT_EQ("02 01 00", encode(BerIntegerTemplate<int32_t>(0)));
  EXPECT_EQ("02 01 7F", encode(BerIntegerTemplate<int32_t>(127)));
  EXPECT_EQ("02 02 00 80", encode(BerIntegerTemplate<int32_t>(128)));
  EXPECT_EQ("02 01 FF", encode(BerIntegerTemplate<int32_t>(-1)));
  EXPECT_EQ("02 01 80", encode(BerIntegerTemplate<int32_t>(-128)));
  EXPECT_EQ("02 02 FF 7F", encode(BerIntegerTemplate<int32_t>(-129)));
  EXPECT_EQ("02 04 80 00 00 00", encode(BerIntegerTemplate<int32_t>(INT32_MIN)));
  EXPECT_EQ("02 08 80 00 00 00 00 00 00 00", encode(BerIntegerTemplate<int64_t>(INT64_MIN)));
  EXPECT_EQ("02 08 7F FF FF FF FF FF FF FF", encode(BerIntegerTemplate<int64_t>(INT64_MAX)));
}

TEST(BerIntegers, UnsignedKindsGetALeadingZeroForTheTopBit) {
  EXPECT_EQ("02 05 00 FF FF FF FF", encode(BerIntegerTemplate<uint32_t>(0xFFFFFFFFu)));
  EXPECT_EQ("02 04 7F FF FF FF", encode(BerIntegerTemplate<uint32_t>(0x7FFFFFFFu)));
  EXPECT_EQ("02 02 00 80", encode(BerIntegerTemplate<uint32_t>(128)));
  EXPECT_EQ("02 09 00 FF FF FF FF FF FF FF FF", encode(BerIntegerTemplate<uint64_t>(UINT64_MAX)));
}

template <class T>
T read_int(const std::string& content_hex) {
  BerIntegerTemplate<T> value;
  decode(value, content_hex);
  return value.value();
}

TEST(BerIntegers, ReadSignedAndUnsigned) {
  EXPECT_EQ(0, read_int<int32_t>("02 00"));
  EXPECT_EQ(0u, read_int<uint64_t>("02 00"));
  EXPECT_EQ(-1, read_int<int32_t>("02 04 FF FF FF FF"));
  EXPECT_EQ(-1, read_int<int64_t>("02 01 FF"));
  EXPECT_EQ(128, read_int<int32_t>("02 02 00 80"));
  EXPECT_EQ(255u, read_int<uint32_t>("02 01 FF"));  // Unsigned kinds start at 0.
  EXPECT_EQ(0xFFFFFFFFu, read_int<uint32_t>("02 05 00 FF FF FF FF"));
  EXPECT_EQ(UINT64_MAX, read_int<uint64_t>("02 09 00 FF FF FF FF FF FF FF FF"));
}

TEST(BerIntegers, OverlongContentIsRefused) {
  EXPECT_EQ("data out of range in BerIntegerTemplate",
            fault([] { read_int<uint32_t>("02 05 01 00 00 00 00"); }));
  EXPECT_EQ("data out of range in BerIntegerTemplate",
            fault([] { read_int<uint64_t>("02 09 80 00 00 00 00 00 00 00 00"); }));
  EXPECT_EQ("Data value exceeds maximum allowed length 5 > 4",
            fault([] { read_int<int32_t>("02 05 00 FF FF FF FF"); }));
  EXPECT_EQ("Data value exceeds maximum allowed length 6 > 5",
            fault([] { read_int<uint32_t>("02 06 00 00 FF FF FF FF"); }));
}

TEST(BerIntegers, BoundsAreCheckedInReadAndWrite) {
  BerIntegerTemplate<int32_t> port(70000, 0, 65535);
  EXPECT_EQ("data out of range in BerIntegerTemplate<int32_t>::write 0 <= 70000 <= 65535",
            fault([&] { encode(port); }));
  BerIntegerTemplate<int32_t> in(int32_t{0}, -1, 86400);
  EXPECT_EQ("data out of range in BerIntegerTemplate<int32_t>::readDone -1 <= -2 <= 86400",
            fault([&] { decode(in, "02 01 FE"); }));
  decode(in, "02 01 FF");
  EXPECT_EQ(-1, in.value());
  BerIntegerTemplate<uint64_t> big(uint64_t{0}, 0, 10);
  EXPECT_EQ("data out of range in BerIntegerTemplate<uint64_t>::readDone 0 <= 11 <= 10",
            fault([&] { decode(big, "02 01 0B"); }));
}

TEST(BerIntegers, TargetIsFilledOnlyByAGoodValue) {
  int32_t field = 5;
  BerIntegerTemplate<int32_t> value(&field, 0, 100);
  decode(value, "02 01 2A");
  EXPECT_EQ(42, field);
  EXPECT_NE("no error", fault([&] { decode(value, "02 02 01 00"); }));
  EXPECT_EQ(42, field);
  // A clone owns a copy.
  auto copy = value.clone();
  field = 7;
  EXPECT_EQ(42, static_cast<BerIntegerTemplate<int32_t>&>(*copy).value());
}

TEST(BerReals, SpecialValues) {
  EXPECT_EQ("09 00", encode(BerReal(0.0)));
  EXPECT_EQ("09 00", encode(BerReal(-0.0)));
  EXPECT_EQ("09 01 40", encode(BerReal(HUGE_VAL)));
  EXPECT_EQ("09 01 41", encode(BerReal(-HUGE_VAL)));
  EXPECT_EQ("09 01 60", encode(BerReal(NAN)));
  // 0x00 and "1.500000e+00".
  EXPECT_EQ("09 0D 00 31 2E 35 30 30 30 30 30 65 2B 30 30", encode(BerReal(1.5)));
}

double read_real(const std::string& content_hex) {
  BerReal value(99.0);
  decode(value, content_hex);
  return value.value();
}

TEST(BerReals, Read) {
  EXPECT_EQ(0.0, read_real("09 00"));
  EXPECT_EQ(HUGE_VAL, read_real("09 01 40"));
  EXPECT_EQ(-HUGE_VAL, read_real("09 01 41"));
  EXPECT_EQ(0.0, read_real("09 01 60"));                    // Not a number reads as 0.
  EXPECT_EQ(1500.0, read_real("09 06 00 31 2E 35 65 33"));  // "1.5e3"
  for (double v : {1.5, -2.25e10, 3.0e-300, -1.797693e308}) {
    BerReal in;
    decode(in, testing::encode_bytes(BerReal(v)));
    EXPECT_EQ(v, in.value());
  }
}

TEST(BerReals, BadContentIsRefused) {
  EXPECT_EQ("Parse error in real number", fault([] { read_real("09 01 00"); }));
  EXPECT_EQ("Parse error in real number", fault([] { read_real("09 03 00 31 78"); }));  // "1x"
  EXPECT_EQ("Parse error in real number", fault([] { read_real("09 02 00 20"); }));
  EXPECT_EQ("Unsupported real number format revceived", fault([] { read_real("09 01 42"); }));
  std::vector<uint8_t> long_text = unhex("09 3D 00");
  long_text.resize(long_text.size() + 60, '1');
  BerReal in;
  EXPECT_EQ("Data value exceeds maximum allowed length 61 > 60",
            fault([&] { decode(in, long_text); }));
}

TEST(BerReals, OrderPutsNotANumberLast) {
  EXPECT_TRUE(BerReal(1.0) < BerReal(NAN));
  EXPECT_TRUE(BerReal(NAN) == BerReal(NAN));
  EXPECT_TRUE(BerReal(-0.0) == BerReal(0.0));
  EXPECT_TRUE(BerReal(-HUGE_VAL) < BerReal(-1e300));
}

TEST(BerBooleansNullsStrings, Forms) {
  EXPECT_EQ("01 01 01", encode(BerBoolean(true)));
  EXPECT_EQ("01 01 00", encode(BerBoolean(false)));
  EXPECT_EQ("05 00", encode(BerNull()));
  EXPECT_EQ("04 02 61 62", encode(BerString(8, "ab")));
  EXPECT_EQ("16 02 61 62", encode(BerString(8, "ab"), true));
  BerBoolean flag(true);
  decode(flag, "01 00");
  EXPECT_FALSE(flag.value());
  decode(flag, "01 01 07");
  EXPECT_TRUE(flag.value());
  decode(flag, "01 01 00");
  EXPECT_FALSE(flag.value());
  EXPECT_EQ("Data value exceeds maximum allowed length 2 > 1",
            fault([&] { decode(flag, "01 02 01 01"); }));
  BerNull null;
  EXPECT_EQ("Data value exceeds maximum allowed length 1 > 0",
            fault([&] { decode(null, "05 01 00"); }));
}

TEST(BerBooleansNullsStrings, StringLimits) {
  EXPECT_EQ("String exceeds allowed length 4 > 3", fault([] { encode(BerString(3, "abcd")); }));
  BerString in(3);
  EXPECT_EQ("String exceeds allowed length 4 > 3", fault([&] { decode(in, "04 04 61 62 63 64"); }));
  // The limit is checked before the content is looked at, so a huge length
  // allocates nothing.
  EXPECT_EQ("String exceeds allowed length 4294967295 > 3",
            fault([&] { decode(in, "04 84 FF FF FF FF"); }));
  EXPECT_EQ("Tag mismatch, got 32 expected BE_STRING_LEGACY",
            fault([&] { decode(in, "04 00", true); }));
}

TEST(BerBigNums, BigEndianBytesWithoutLeadingZeros) {
  EXPECT_EQ("02 00", encode(BerBigNum(BigNum())));
  EXPECT_EQ("02 01 80", encode(BerBigNum(BigNum(0x80))));
  BigNum big(0x01020304);
  big.shiftLeft(32);
  EXPECT_EQ("02 08 01 02 03 04 00 00 00 00", encode(BerBigNum(big)));
  BerBigNum in;
  decode(in, "02 08 01 02 03 04 00 00 00 00");
  EXPECT_TRUE(in.value() == big);
  decode(in, "02 00");
  EXPECT_TRUE(in.value() == BigNum());
}

TEST(BerBigNums, AtMost1040Bytes) {
  std::vector<uint8_t> bytes = unhex("02 82 04 10");
  bytes.resize(bytes.size() + 1040, 0xAB);
  BerBigNum in;
  decode(in, bytes);
  EXPECT_EQ(260u, in.value().used());
  EXPECT_EQ(bytes, testing::encode_bytes(in));
  std::vector<uint8_t> over = unhex("02 82 04 11");
  EXPECT_EQ("Data value exceeds maximum allowed length 1041 > 1040",
            fault([&] { decode(in, over); }));
  BigNum wide = in.value();
  wide.shiftLeft(8);
  EXPECT_EQ("Data value exceeds maximum allowed length 1041 > 1040",
            fault([&] { encode(BerBigNum(wide)); }));
}

TEST(BerSkippers, NeitherWrittenNorOrdered) {
  BerPrimitiveSkipper primitive(BE_INTEGER);
  BerConstructedSkipper constructed(BE_SEQ_CURRENT);
  EXPECT_DEATH(encode(primitive), "BerPrimitiveSkipper::write invoked");
  EXPECT_DEATH(encode(constructed), "BerConstructedSkipper::write invoked");
  EXPECT_DEATH((void)(primitive < primitive), "Cannot call operator< for BerPrimitiveSkipper");
  EXPECT_DEATH((void)(constructed > constructed),
               "Cannot call operator> for BerConstructedSkipper");
}

}  // namespace
}  // namespace protocol
