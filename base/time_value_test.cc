#include "base/time_value.h"

#include <gtest/gtest.h>

namespace {

std::string show(const TimeValue& t) {
  return std::to_string(t.seconds) + "," + std::to_string(t.microseconds);
}

TEST(TimeValue, NormalisesMicroseconds) {
  EXPECT_EQ("7,500000", show(TimeValue(5, 2500000)));
  EXPECT_EQ("5,999999", show(TimeValue(5, 999999)));
  EXPECT_EQ("6,0", show(TimeValue(5, 1000000)));
  EXPECT_EQ("9,0", show(TimeValue(9)));
}

TEST(TimeValueDeathTest, NegativeMicrosecondsAreFatal) {
  EXPECT_DEATH(TimeValue(1, -1), "Assertion failed: Cannot normalize negative microseconds");
}

TEST(TimeValue, AdditionCarriesMicroseconds) {
  EXPECT_EQ("3,200000", show(TimeValue(1, 600000) + TimeValue(1, 600000)));
  TimeValue t(10, 999999);
  t += TimeValue(0, 1);
  EXPECT_EQ("11,0", show(t));
}

TEST(TimeValue, AdditionSaturatesAtBothEnds) {
  EXPECT_EQ(kLargestTime, TimeValue(0x7ffffff0, 900000) + TimeValue(100, 0));
  EXPECT_EQ(0, (TimeValue(0x7ffffff0, 900000) + TimeValue(100, 0)).microseconds);
  // The carry alone runs past the largest time.
  EXPECT_EQ(kLargestTime, TimeValue(0x7fffffff, 500000) + TimeValue(0, 600000));
  EXPECT_EQ(kSmallestTime, TimeValue(-0x7ffffff0, 0) + TimeValue(-100, 0));
  // Staying in range is no saturation, also below zero.
  EXPECT_EQ("-5,0", show(TimeValue(5) + TimeValue(-10)));
}

TEST(TimeValueDeathTest, UnnormalisedSumIsFatal) {
  TimeValue a;
  a.microseconds = 1500000;
  TimeValue b;
  b.microseconds = 900000;
  EXPECT_DEATH(a += b, "Too big usec in \\+=");
}

TEST(TimeValue, SubtractionBorrowsAndWraps) {
  EXPECT_EQ("0,900000", show(TimeValue(2, 100000) - TimeValue(1, 200000)));
  EXPECT_EQ("-2,250000", show(TimeValue(0, 0) - TimeValue(1, 750000)));
  EXPECT_EQ("2147483647,0", show(TimeValue(-0x7fffffff - 1) - TimeValue(1)));
}

TEST(TimeValueDeathTest, UnnormalisedDifferenceIsFatal) {
  TimeValue b;
  b.microseconds = 2500000;
  EXPECT_DEATH(TimeValue(5) - b, "Negative usec");
}

TEST(TimeValue, ComparesByValue) {
  EXPECT_TRUE(TimeValue(1, 5) <= TimeValue(1, 5));
  EXPECT_TRUE(TimeValue(1, 5) <= TimeValue(1, 6));
  EXPECT_FALSE(TimeValue(2, 0) <= TimeValue(1, 999999));
  EXPECT_TRUE(TimeValue(1, 999999) < TimeValue(2, 0));
  EXPECT_FALSE(TimeValue(1, 1) == TimeValue(1, 2));
  EXPECT_DOUBLE_EQ(-1.75, TimeValue(-2, 250000).toDouble());
}

TEST(TimeValue, Text) {
  EXPECT_EQ("12.000034", TimeValue(12, 34).text());
  EXPECT_EQ("0.000000", TimeValue(0).text());
  EXPECT_EQ("-1.750000", TimeValue(-2, 250000).text());
  EXPECT_EQ("-3.000000", TimeValue(-3).text());
  EXPECT_EQ("-2147483647.000001", TimeValue(-0x7fffffff - 1, 999999).text());
}

TEST(TimeValue, FormatInGmt) {
  EXPECT_EQ("Thu Jan 01 00:00:00 1970", TimeValue(0).format("%a %b %d %H:%M:%S %Y", false));
  EXPECT_EQ("2026-01-05", TimeValue(1767571200).format("%Y-%m-%d", false));
  EXPECT_EQ("", TimeValue(0).format("", false));
  EXPECT_EQ("", TimeValue(0).format(std::string(2000, 'x'), false));
}

TEST(TimeValue, NowIsAfterThisCodeWasWritten) {
  TimeValue t = TimeValue::now();
  EXPECT_GT(t.seconds, 1790000000);
  EXPECT_GE(t.microseconds, 0);
  EXPECT_LT(t.microseconds, 1000000);
}

}  // namespace
