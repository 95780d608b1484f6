#include "grapher/y_division.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "base/error.h"

namespace grapher {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

// "count/subdivisions:min..max" for each candidate, blank-separated.
std::string candidates(double low, double high, bool binary = false) {
  std::vector<YDivision> out;
  findDivisions(binary, low, high, out);
  std::ostringstream s;
  for (const YDivision& d : out) {
    if (s.tellp() > 0) s << " ";
    s << d.count << "/" << d.subdivisions << ":" << d.min << ".." << d.max;
  }
  return s.str();
}

TEST(StepValue, DecimalAndBinarySequences) {
  EXPECT_EQ(1, stepValue(0, false));
  EXPECT_EQ(500, stepValue(8, false));
  EXPECT_EQ(1000, stepValue(9, false));
  EXPECT_EQ(200000, stepValue(16, false));
  EXPECT_EQ(256, stepValue(7, true));
  EXPECT_EQ(512, stepValue(8, true));
  EXPECT_EQ(1024, stepValue(9, true));
  EXPECT_DOUBLE_EQ(0.5, stepValue(-1, false));
  EXPECT_DOUBLE_EQ(512.0 / 1024, stepValue(-1, true));
  EXPECT_DOUBLE_EQ(0.001, stepValue(-9, false));
}

TEST(FindDivisions, RangesOfTheManual) {
  EXPECT_EQ("5/2:0..100 2/5:0..100", candidates(0, 100));
  EXPECT_EQ("4/2:0..1024 2/5:0..1024", candidates(0, 1000, true));
  EXPECT_EQ("5/2:0..1 2/5:0..1", candidates(0, 0));
  EXPECT_EQ("6/0:0..6 5/0:0..5 4/0:0..4 3/0:0..3 2/0:0..2", candidates(kInf, -kInf));
}

TEST(FindDivisions, NarrowRangeIsWidened) {
  // 5..5 becomes 4.9..5.1; every candidate must still hold it.
  std::vector<YDivision> out;
  findDivisions(false, 5, 5, out);
  ASSERT_FALSE(out.empty());
  for (const YDivision& d : out) {
    EXPECT_LE(d.min, 4.9 + 1e-9);
    EXPECT_GE(d.max, 5.1 - 1e-9);
    EXPECT_LE(d.count, 6);
  }
  EXPECT_EQ(2, out.back().count);
  EXPECT_EQ("4/5:4.9..5.1", candidates(5, 5).substr(0, 12));  // step 0.05
}

TEST(FindDivisions, CoarserStepsUntilTwoDivisions) {
  // 0..5: steps 1 and 2 give 5 and 3; step 5 gives one division, which is
  // stretched to two over 0..10.
  EXPECT_EQ("5/2:0..5 3/2:0..6 2/5:0..10", candidates(0, 5));
  // 0..3: step 0.5 gives 6, step 1 gives 3, step 2 gives 2 and ends the list.
  EXPECT_EQ("6/5:0..3 3/2:0..3 2/2:0..4", candidates(0, 3));
  EXPECT_EQ("4/2:0..0.8 2/5:0..1", candidates(0, 0.7));
}

TEST(FindDivisions, NegativeAndNonFiniteValuesDoNotBreakTheScale) {
  // The scale starts at 0; values below it are clipped by the plot.
  EXPECT_EQ(candidates(0, 100), candidates(-50, 100));
  EXPECT_EQ(candidates(0, 0), candidates(-5, -3));
  EXPECT_EQ(candidates(kInf, -kInf), candidates(0, kInf));
  EXPECT_EQ(candidates(kInf, -kInf), candidates(std::numeric_limits<double>::quiet_NaN(), 1));
  EXPECT_EQ(2, [] {
    std::vector<YDivision> out;
    findDivisions(false, 0, 1e300, out);
    return out.back().count;
  }());
}

TEST(ChooseCommonScale, OneGroupTakesTheFinest) {
  std::vector<YDivision> a;
  findDivisions(false, 0, 100, a);
  CommonScale s = chooseCommonScale({a});
  EXPECT_EQ(5, s.divisions);
  EXPECT_EQ(2, s.subdivisions);
  ASSERT_EQ(1u, s.perGroup.size());
  EXPECT_EQ(100, s.perGroup[0].max);
}

TEST(ChooseCommonScale, GroupsAgreeOnTheLargestSharedCount) {
  std::vector<YDivision> a = {{5, 2, 0, 100}, {2, 5, 0, 100}};
  std::vector<YDivision> b = {{4, 5, 0, 1024}, {2, 2, 0, 1024}};
  CommonScale s = chooseCommonScale({a, b});
  EXPECT_EQ(2, s.divisions);
  EXPECT_EQ(1, s.subdivisions);  // 5 and 2 disagree
  EXPECT_EQ(100, s.perGroup[0].max);
  EXPECT_EQ(1024, s.perGroup[1].max);
  std::vector<YDivision> c = {{4, 2, 0, 8}, {2, 2, 0, 10}};
  s = chooseCommonScale({b, c});
  EXPECT_EQ(4, s.divisions);
  EXPECT_EQ(1, s.subdivisions);
  EXPECT_EQ(8, s.perGroup[1].max);
}

TEST(ChooseCommonScale, NoSharedCountIsAnError) {
  std::vector<YDivision> a = {{5, 2, 0, 100}};
  std::vector<YDivision> b = {{3, 2, 0, 3}, {2, 2, 0, 4}};
  EXPECT_THROW(chooseCommonScale({a, b}), error::EFatal);
  // A count offered twice by one group gives it no single candidate.
  std::vector<YDivision> twice = {{2, 2, 0, 1}, {2, 5, 0, 2}};
  EXPECT_THROW(chooseCommonScale({twice}), error::EFatal);
}

}  // namespace
}  // namespace grapher
