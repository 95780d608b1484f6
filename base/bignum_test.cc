#include "base/bignum.h"

#include <gtest/gtest.h>

namespace {

BigNum from_text(const std::string& decimal) {
  BigNum value;
  for (char c : decimal) {
    BigNum times10 = value;
    times10.shiftLeft(3);
    BigNum times2 = value;
    times2.shiftLeft(1);
    value = times10 + times2 + BigNum(static_cast<uint32_t>(c - '0'));
  }
  return value;
}

TEST(BigNum, ZeroHasNoWords) {
  BigNum zero;
  EXPECT_EQ(0u, zero.used());
  EXPECT_EQ("0", zero.text());
  EXPECT_EQ(std::vector<uint8_t>(4, 0), zero.toBytes(4));
  EXPECT_EQ(zero, BigNum(0));
  EXPECT_EQ(zero, BigNum::fromBytes({0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(zero, zero + zero);
}

TEST(BigNum, TextOfLargeValues) {
  EXPECT_EQ("4294967295", BigNum(0xffffffffu).text());
  EXPECT_EQ("4294967296", (BigNum(0xffffffffu) + BigNum(1)).text());
  const std::string big = "340282366920938463463374607431768211457";  // 2^128 + 1
  EXPECT_EQ(big, from_text(big).text());
  EXPECT_EQ(5u, from_text(big).used());
}

TEST(BigNum, AdditionCarriesAcrossWords) {
  BigNum a = BigNum::fromBytes({0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff});
  BigNum sum = a + BigNum(1);
  EXPECT_EQ(3u, sum.used());
  EXPECT_EQ("18446744073709551616", sum.text());
  EXPECT_EQ(sum, BigNum(1) + a);
  // A short operand with its top bit set next to a longer one without.
  BigNum b = BigNum::fromBytes({0, 0, 0, 0, 1});
  EXPECT_EQ("4294967296", b.text());
  EXPECT_EQ("8589934591", (b + BigNum(0xffffffffu)).text());
}

TEST(BigNum, Ordering) {
  EXPECT_TRUE(BigNum(1) < BigNum(2));
  EXPECT_TRUE(BigNum(0xffffffffu) < from_text("4294967296"));
  EXPECT_TRUE(from_text("8589934592") > from_text("4294967297"));
  EXPECT_FALSE(BigNum(7) < BigNum(7));
  EXPECT_FALSE(BigNum(7) > BigNum(7));
  EXPECT_TRUE(BigNum() < BigNum(1));
}

TEST(BigNum, ShiftLeft) {
  BigNum v(1);
  v.shiftLeft(0);
  v.shiftLeft(-3);
  EXPECT_EQ("1", v.text());
  v.shiftLeft(100);
  EXPECT_EQ("1267650600228229401496703205376", v.text());
  BigNum zero;
  zero.shiftLeft(40);
  EXPECT_EQ(0u, zero.used());
}

TEST(BigNum, ByteStringRoundTrip) {
  const std::vector<uint8_t> bytes = {0x01, 0x02, 0x03, 0x04, 0x05};
  BigNum v = BigNum::fromBytes(bytes);
  EXPECT_EQ("21542142465", v.text());  // 0x0504030201
  EXPECT_EQ(bytes, v.toBytes(0));
  EXPECT_EQ(std::vector<uint8_t>({1, 2, 3, 4, 5, 0, 0, 0}), v.toBytes(8));
  // Zero bytes at the top of the string change nothing.
  EXPECT_EQ(v, BigNum::fromBytes({1, 2, 3, 4, 5, 0, 0}));
}

TEST(BigNum, BigEndianAccess) {
  const uint8_t in[] = {0x00, 0x05, 0x04, 0x03, 0x02, 0x01};
  BigNum v = BigNum::fromBigEndian(in, sizeof in);
  EXPECT_EQ("21542142465", v.text());
  EXPECT_EQ(2u, v.used());
  uint8_t out[12];
  std::fill(out, out + 12, 0xaa);
  size_t size = sizeof out;
  v.bn_get_data(out, size);
  EXPECT_EQ(5u, size);
  EXPECT_EQ(std::vector<uint8_t>({5, 4, 3, 2, 1, 0, 0, 0, 0, 0, 0, 0}),
            std::vector<uint8_t>(out, out + 12));
  size_t none = 0;
  BigNum().bn_get_data(out, none);
  EXPECT_EQ(0u, none);
}

// Zero has no bytes: no buffer at all is enough (the sanitizers check that no
// null pointer reaches memmove), and a longer buffer is all zeroed.
TEST(BigNum, ZeroWritesNoBytes) {
  size_t size = 0;
  BigNum().bn_get_data(nullptr, size);
  EXPECT_EQ(0u, size);
  std::vector<uint8_t> empty;
  size = empty.size();
  BigNum::fromBytes({}).bn_get_data(empty.data(), size);
  EXPECT_EQ(0u, size);
  uint8_t out[3] = {7, 7, 7};
  size = sizeof out;
  BigNum::fromBytes({0, 0}).bn_get_data(out, size);
  EXPECT_EQ(0u, size);
  EXPECT_EQ(std::vector<uint8_t>({0, 0, 0}), std::vector<uint8_t>(out, out + 3));
}

TEST(BigNumDeathTest, ShortBufferIsFatal) {
  BigNum v = BigNum::fromBytes({1, 2, 3, 4, 5});
  uint8_t out[7];
  size_t size = sizeof out;
  EXPECT_DEATH(v.bn_get_data(out, size), "Buffer given to bn_get_data is too small \\(wanted 8");
}

TEST(BigNum, CopiesShareUntilChanged) {
  BigNum a = from_text("123456789012345678901234567890");
  BigNum b = a;
  EXPECT_EQ(2u, a.shareCount());
  b.shiftLeft(1);
  EXPECT_EQ(1u, a.shareCount());
  EXPECT_EQ(1u, b.shareCount());
  EXPECT_EQ("123456789012345678901234567890", a.text());
  EXPECT_EQ("246913578024691357802469135780", b.text());
  a = b;
  EXPECT_EQ(2u, b.shareCount());
  a = BigNum();
  EXPECT_EQ(1u, b.shareCount());
}

TEST(BigNumDeathTest, TooManyCopiesAreFatal) {
  EXPECT_DEATH(
      {
        BigNum a(5);
        std::vector<BigNum> copies(1000, a);
      },
      "BigNum share count out of range");
}

}  // namespace
