// Sums worked out by hand for data types 2 and 3.
#include <gtest/gtest.h>

#include <cmath>

#include "analysis/check_analysis.h"
#include "analysis/test_patches.h"
#include "analysis/test_samples.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

using namespace testing_patches;
using namespace testing_samples;

tql::patch_t withAction(tql::patch_t c, uint32_t state, uint32_t action) {
  c.set_property(
      tql::make_property<tql::kind::kEnum>(schema::kStateAction0 + static_cast<int32_t>(state),
                                           tql::enum_value_t{schema::kStateActionEnum, action}));
  return c;
}

tql::patch_t frequencyCheck(uint32_t frequency) {
  tql::patch_t c = object(1);
  withUint(c, schema::kFrequency, frequency);
  return c;
}

TEST(EnumAnalysis, TimeSharedEquallyAmongTheStatesRemainderInNoSum) {
  // States 0 ok, 1 warn, 5 alert. 10 s with all three: 3 s each, 1 s left
  // in the total alone. Then 7 s of state 9 (no stateAction9): unknown; and
  // 6 s of states 0 and 1: 3 s each.
  auto check = withAction(withAction(withAction(frequencyCheck(60), 0, 0), 1, 1), 5, 2);
  Records<EnumSample> r(
      {states(100, 110, 0b100011), states(110, 117, 1u << 9), states(117, 123, 0b11)});
  IssueStats stats;
  EXPECT_EQ(100, CheckAnalysis(check, false, stats).analyseEnum(r.list(), {100, 123}));
  EXPECT_EQ("ok 6 warn 6 alert 3 bad 0 unknown 7 total 23", sums(stats));
}

TEST(EnumAnalysis, EmptyMaskLowersTheAvailability) {
  auto check = withAction(frequencyCheck(60), 0, 0);
  Records<EnumSample> r({states(0, 30, 1), states(30, 40, 0)});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseEnum(r.list(), {0, 40});
  EXPECT_EQ("ok 30 warn 0 alert 0 bad 0 unknown 0 total 40", sums(stats));
  EXPECT_DOUBLE_EQ(75.0, stats.availability());
}

TEST(EnumAnalysis, NoStateActionsIsAllUnknownAndFullyAvailable) {
  Records<EnumSample> r({states(0, 30, 0b101)});
  IssueStats stats;
  CheckAnalysis(frequencyCheck(60), false, stats).analyseEnum(r.list(), {0, 40});
  // The right gap of 10 s joins the sample: 40 s, 20 s for each state.
  EXPECT_EQ("ok 0 warn 0 alert 0 bad 0 unknown 40 total 40", sums(stats));
  EXPECT_DOUBLE_EQ(100.0, stats.availability());
}

TEST(EnumAnalysis, ActionOutsideZeroToTwoIsUnknown) {
  auto check = withAction(frequencyCheck(60), 3, 7);
  Records<EnumSample> r({states(0, 10, 1u << 3)});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseEnum(r.list(), {0, 10});
  EXPECT_EQ("ok 0 warn 0 alert 0 bad 0 unknown 10 total 10", sums(stats));
}

TEST(EnumAnalysis, DamagedStateActionRaises) {
  auto check = frequencyCheck(60);
  withNull(check, schema::kStateAction0 + 4, 25);
  Records<EnumSample> r({states(0, 10, 1)});
  IssueStats stats;
  try {
    CheckAnalysis(check, false, stats).analyseEnum(r.list(), {0, 10});
    FAIL() << "no exception";
  } catch (const errors::tql& e) {
    EXPECT_EQ("Null given for property_t: stateAction4", e.text());
  }
}

TEST(StateAnalysis, WithoutUsableFrequencyNothingIsAdded) {
  tql::patch_t nullFrequency = object(1);
  withNull(nullFrequency, schema::kFrequency, 20);
  Records<ContinuousSample> r({measured(0, 10, 1)});
  Records<EnumSample> e({states(0, 10, 1)});
  for (const tql::patch_t& check : {object(1), nullFrequency}) {
    IssueStats stats;
    CheckAnalysis analysis(check, false, stats);
    EXPECT_EQ(0, analysis.analyseUptime(r.list(), {0, 10}));
    EXPECT_EQ(0, analysis.analyseEnum(e.list(), {0, 10}));
    EXPECT_EQ(0, stats.sum_total_time);
    EXPECT_TRUE(std::isnan(stats.availability()));
  }
}

TEST(UptimeAnalysis, ClassifiedWhollyAndNoRemoteAllowance) {
  // Frequency 30: allowance 60, remote or not. A sample with good and
  // failed measurements goes wholly by its thresholds (no share).
  auto check = frequencyCheck(30);
  withString(check, schema::kRemoteType, "ping");
  withReal(check, schema::kAlertIfBelow, 1);
  Records<ContinuousSample> r({measured(0, 100, 1, 1, 1), measured(160, 200, 0, 1, 0),
                               measured(265, 300, 1, 0, 2), measured(300, 310, 1, 0, 0)});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseUptime(r.list(), {0, 310});
  // 100 ok; gap 60 joins the second (alert, 0 < 1): 100; gap 65 unknown,
  // then 35 bad; 10 unknown.
  EXPECT_EQ("ok 100 warn 0 alert 100 bad 35 unknown 75 total 310", sums(stats));
}

TEST(UptimeAnalysis, ZeroFrequencyMakesGapsGood) {
  Records<ContinuousSample> r({measured(50, 100, 1)});
  IssueStats stats;
  CheckAnalysis(frequencyCheck(0), false, stats).analyseUptime(r.list(), {0, 120});
  EXPECT_EQ("ok 120 warn 0 alert 0 bad 0 unknown 0 total 120", sums(stats));
}

}  // namespace
