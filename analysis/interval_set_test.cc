#include "analysis/interval_set.h"

#include <gtest/gtest.h>

#include <string>

#include "analysis/test_intervals.h"

namespace {

using namespace testing_intervals;

TEST(AddInterval, OverlapsMergeWhateverTheOrder) {
  // 08:00 for nine hours and 09:00 for one hour.
  const Interval long_one{8 * kHour, 17 * kHour};
  const Interval short_one{9 * kHour, 10 * kHour};
  IntervalSet a, b;
  addInterval(a, long_one);
  addInterval(a, short_one);
  addInterval(b, short_one);
  addInterval(b, long_one);
  EXPECT_EQ("[28800,61200)", render(a));
  EXPECT_EQ(render(a), render(b));
}

TEST(AddInterval, TouchingMergesAndAGapDoesNot) {
  IntervalSet set;
  addInterval(set, {100, 200});
  addInterval(set, {200, 300});
  addInterval(set, {50, 100});
  EXPECT_EQ("[50,300)", render(set));
  addInterval(set, {301, 400});
  addInterval(set, {{300, 1}, {300, 500000}});
  EXPECT_EQ("[50,300) [300.1,300.500000) [301,400)", render(set));
}

TEST(AddInterval, OneBridgesSeveral) {
  IntervalSet set;
  for (int32_t b : {0, 20, 40, 60}) addInterval(set, {b, b + 10});
  addInterval(set, {15, 45});
  EXPECT_EQ("[0,10) [15,50) [60,70)", render(set));
  addInterval(set, {5, 65});
  EXPECT_EQ("[0,70)", render(set));
}

TEST(ClipIntervals, CutsAtBothBoundsAndDropsOutside) {
  IntervalSet set;
  for (int32_t b : {0, 100, 200, 300}) addInterval(set, {b, b + 50});
  clipIntervals(set, {120, 220});
  EXPECT_EQ("[120,150) [200,220)", render(set));
}

TEST(ClipIntervals, ElementEndingAtTheBeginStaysEmpty) {
  IntervalSet set;
  addInterval(set, {0, 100});
  addInterval(set, {300, 400});
  clipIntervals(set, {100, 300});
  EXPECT_EQ("[100,100) [300,300)", render(set));
  clipIntervals(set, {500, 600});
  EXPECT_EQ("", render(set));
}

TEST(ClipIntervals, OneElementCoveringTheWholeRange) {
  IntervalSet set;
  addInterval(set, {0, 1000});
  clipIntervals(set, {10, 20});
  EXPECT_EQ("[10,20)", render(set));
}

}  // namespace
