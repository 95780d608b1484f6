// Sums worked out by hand for data types 5 and 6.
#include <gtest/gtest.h>

#include "analysis/check_analysis.h"
#include "analysis/test_patches.h"
#include "analysis/test_samples.h"
#include "tql/schema.h"

namespace {

using namespace testing_patches;
using namespace testing_samples;

tql::patch_t checkWithFrequency(uint32_t frequency) {
  tql::patch_t c = object(1);
  withUint(c, schema::kFrequency, frequency);
  return c;
}

TEST(ContinuousAnalysis, FailedShareRoundedToTheNearestSecond) {
  const auto check = checkWithFrequency(60);
  // 1 of 2 failed over 101 s: (101 + 1) / 2 = 51 bad, 50 good.
  // 2 of 3 failed over 100 s: (200 + 1) / 3 = 67 bad, 33 good.
  // 3 of 3 failed over 60 s: all bad.
  Records<ContinuousSample> r({measured(1000, 1101, 5, 1, 1), measured(1101, 1201, 5, 1, 2),
                               measured(1201, 1261, 5, 0, 3)});
  IssueStats stats;
  CheckAnalysis analysis(check, false, stats);
  EXPECT_EQ(1000, analysis.analyseContinuous(r.list(), {1000, 1261}));
  EXPECT_EQ("ok 83 warn 0 alert 0 bad 178 unknown 0 total 261", sums(stats));
}

TEST(ContinuousAnalysis, GapOfExactlyTheAllowanceIsNoGap) {
  // Frequency 30: allowance 60. The second sample takes the 60 s gap before
  // it and is above warnIfAbove; the 61 s gap before the third is unknown.
  auto check = checkWithFrequency(30);
  withReal(check, schema::kWarnIfAbove, 80);
  Records<ContinuousSample> r(
      {measured(10000, 10060, 1), measured(10120, 10180, 90), measured(10241, 10300, 1)});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseContinuous(r.list(), {10000, 10300});
  EXPECT_EQ("ok 119 warn 120 alert 0 bad 0 unknown 61 total 300", sums(stats));
}

TEST(ContinuousAnalysis, RemoteCheckGetsTenSecondsMore) {
  // Frequency 30, remote, alertIfAbove 5000: allowance 60 + 5 + 10 = 75.
  auto check = checkWithFrequency(30);
  withString(check, schema::kRemoteType, "ping");
  withUint(check, schema::kAlertIfAbove, 5000);
  Records<ContinuousSample> within({measured(1000, 1050, 1), measured(1125, 1200, 1)});
  Records<ContinuousSample> beyond({measured(1000, 1050, 1), measured(1126, 1200, 1)});
  IssueStats a, b;
  CheckAnalysis(check, false, a).analyseContinuous(within.list(), {1000, 1200});
  CheckAnalysis(check, false, b).analyseContinuous(beyond.list(), {1000, 1200});
  EXPECT_EQ("ok 200 warn 0 alert 0 bad 0 unknown 0 total 200", sums(a));
  EXPECT_EQ("ok 124 warn 0 alert 0 bad 0 unknown 76 total 200", sums(b));
}

TEST(ContinuousAnalysis, NoFrequencyMakesEveryGapGood) {
  const auto check = object(1);
  Records<ContinuousSample> r({measured(1100, 1200, 1, 0, 0)});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseContinuous(r.list(), {1000, 1300});
  // Gaps of 100 each side are good; the sample without measurements unknown.
  EXPECT_EQ("ok 200 warn 0 alert 0 bad 0 unknown 100 total 300", sums(stats));
}

TEST(ContinuousAnalysis, StartOfMonitoringHasNoLeftGap) {
  const auto check = checkWithFrequency(60);
  Records<ContinuousSample> r({measured(400, 500, 1), measured(500, 600, 1)});
  IssueStats fromStart, fromBegin;
  EXPECT_EQ(400, CheckAnalysis(check, true, fromStart).analyseContinuous(r.list(), {0, 1000}));
  CheckAnalysis(check, false, fromBegin).analyseContinuous(r.list(), {0, 1000});
  // The right gap of 400 s is unknown either way; the left one only counts
  // when the period has a real start.
  EXPECT_EQ("ok 200 warn 0 alert 0 bad 0 unknown 400 total 600", sums(fromStart));
  EXPECT_EQ("ok 200 warn 0 alert 0 bad 0 unknown 800 total 1000", sums(fromBegin));
}

TEST(ContinuousAnalysis, SampleCutAtThePlanIntervalEndLosesItsRest) {
  // Frequency 20: allowance 40. The middle sample [1050, 1250) is cut at
  // 1100 by the first interval; the second interval [1200, 1300) then sees
  // a 50 s gap (unknown) before the last sample.
  const auto check = checkWithFrequency(20);
  Records<ContinuousSample> r(
      {measured(1000, 1050, 1), measured(1050, 1250, 1), measured(1250, 1300, 1)});
  IssueStats stats;
  CheckAnalysis analysis(check, false, stats);
  EXPECT_EQ(1000, analysis.analyseContinuous(r.list(), {1000, 1100}));
  EXPECT_EQ(1100, r[1].end);
  EXPECT_EQ(1250, analysis.analyseContinuous(r.list(), {1200, 1300}));
  EXPECT_EQ("ok 150 warn 0 alert 0 bad 0 unknown 50 total 200", sums(stats));
}

TEST(ContinuousAnalysis, ThresholdsInTheirOrderByMinAndMax) {
  auto check = checkWithFrequency(60);
  withReal(check, schema::kAlertIfAbove, 90);
  withReal(check, schema::kWarnIfAbove, 70);
  withReal(check, schema::kAlertIfBelow, 10);
  withReal(check, schema::kWarnIfBelow, 20);
  auto spread = measured(1040, 1080, 50);
  spread.min = 5;   // below alertIfBelow
  spread.max = 75;  // above warnIfAbove: alert comes first
  Records<ContinuousSample> r({measured(1000, 1010, 95), measured(1010, 1020, 75),
                               measured(1020, 1030, 15), measured(1030, 1040, 50), spread});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseContinuous(r.list(), {1000, 1080});
  EXPECT_EQ("ok 10 warn 20 alert 50 bad 0 unknown 0 total 80", sums(stats));
}

TEST(ContinuousAnalysis, OverlapAndBackwardSamplesAreRepaired) {
  const auto check = checkWithFrequency(60);
  // The second sample begins 50 s before the first ends (gap repaired to 0);
  // the third ends before it starts (span repaired to 0).
  Records<ContinuousSample> r(
      {measured(1000, 1100, 1), measured(1050, 1150, 1), measured(1150, 1140, 1)});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseContinuous(r.list(), {1000, 1200});
  // Right gap 1200 - 1140 = 60 joins the last sample.
  EXPECT_EQ("ok 260 warn 0 alert 0 bad 0 unknown 0 total 260", sums(stats));
}

TEST(ContinuousAnalysis, NothingInTheIntervalAddsNothing) {
  const auto check = checkWithFrequency(60);
  Records<ContinuousSample> r({measured(1000, 1100, 1)});
  IssueStats stats;
  EXPECT_EQ(0, CheckAnalysis(check, false, stats).analyseContinuous(r.list(), {2000, 3000}));
  EXPECT_EQ(0, stats.sum_total_time);
}

TEST(ContinuousAnalysis, DamagedValuesWrapInsteadOfOverflowing) {
  const auto check = checkWithFrequency(60);
  // A start at the bottom of the range: its gap wraps to 2^63 - 1100 (a
  // long gap, unknown), its span wraps negative (repaired to 0). Counts at
  // the top of the range still share 100 s: 0xffffffff x 101 / 0x1fffffffe.
  Records<ContinuousSample> r({measured(1000, 1100, 1), measured(INT64_MIN, 1200, 1),
                               measured(1200, 1300, 1, 0xffffffff, 0xffffffff)});
  IssueStats stats;
  CheckAnalysis(check, false, stats).analyseContinuous(r.list(), {1000, 1300});
  EXPECT_EQ("ok 150 warn 0 alert 0 bad 50 unknown 9223372036854774708 total 9223372036854774908",
            sums(stats));
}

TEST(AccumulationAnalysis, WholeSpanToOneSumWithoutProportionalShare) {
  auto check = checkWithFrequency(60);
  withReal(check, schema::kWarnIfAbove, 70);
  // No measurements: unknown; only failed ones: bad; any good one: by the
  // thresholds, failed ones or not.
  Records<ContinuousSample> r({measured(1000, 1010, 1, 0, 0), measured(1010, 1030, 1, 0, 2),
                               measured(1030, 1060, 80, 1, 5), measured(1060, 1100, 1, 4, 0)});
  IssueStats stats;
  EXPECT_EQ(1000, CheckAnalysis(check, false, stats).analyseAccumulation(r.list(), {1000, 1100}));
  EXPECT_EQ("ok 40 warn 30 alert 0 bad 20 unknown 10 total 100", sums(stats));
}

}  // namespace
