#include "analysis/thresholds.h"

#include <gtest/gtest.h>

#include <cmath>

#include "analysis/test_patches.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

using namespace testing_patches;

TEST(Thresholds, AbsoluteBeatsPercentAndPercentUsesTheRange) {
  tql::patch_t c = object(1);
  withReal(c, schema::kRangeMin, 10);
  withReal(c, schema::kRangeMax, 110);
  withReal(c, schema::kWarnIfAbovePct, 25);  // 100 x 0.25 + 10
  withUint(c, schema::kAlertIfAbove, 90);
  withReal(c, schema::kAlertIfAbovePct, 50);  // not used
  withNull(c, schema::kWarnIfBelow, 13);
  withReal(c, schema::kWarnIfBelowPct, 5);  // the absolute one is null
  const Thresholds t = loadThresholds(c);
  EXPECT_DOUBLE_EQ(35.0, t.warnAbove);
  EXPECT_DOUBLE_EQ(90.0, t.alertAbove);
  EXPECT_DOUBLE_EQ(15.0, t.warnBelow);
  EXPECT_TRUE(std::isnan(t.alertBelow));
}

TEST(Thresholds, PercentWithoutRangeNeverFires) {
  tql::patch_t c = object(1);
  withReal(c, schema::kRangeMax, 100);
  withReal(c, schema::kAlertIfAbovePct, 50);
  EXPECT_TRUE(std::isnan(loadThresholds(c).alertAbove));
}

TEST(Thresholds, PercentMustBeAReal) {
  tql::patch_t c = object(1);
  withUint(c, schema::kAlertIfBelowPct, 50);
  try {
    loadThresholds(c);
    FAIL() << "no exception";
  } catch (const errors::tql& e) {
    EXPECT_EQ(errors::tql::kIllegalType, e.code());
    EXPECT_EQ("Type mismatch for decoding double: alertIfBelowPct", e.text());
  }
}

TEST(DeltaSetUnknown, DoubledFrequencyPlusTheRemoteAllowance) {
  const double nan = std::nan("");
  tql::patch_t local = object(1);
  EXPECT_EQ(0u, deltaSetUnknown(local, 5000));
  withUint(local, schema::kFrequency, 30);
  EXPECT_EQ(60u, deltaSetUnknown(local, 5000));

  tql::patch_t remote = object(1);
  withString(remote, schema::kRemoteType, "http");
  EXPECT_EQ(10u, deltaSetUnknown(remote, nan));
  withUint(remote, schema::kFrequency, 30);
  EXPECT_EQ(75u, deltaSetUnknown(remote, 5000));   // 60 + 5 + 10
  EXPECT_EQ(70u, deltaSetUnknown(remote, 999.9));  // truncated to 0
  EXPECT_EQ(70u, deltaSetUnknown(remote, -5));
  EXPECT_EQ(70u, deltaSetUnknown(remote, nan));

  // A null remoteType is no remote check; the doubling wraps in 32 bits.
  tql::patch_t odd = object(1);
  withNull(odd, schema::kRemoteType, 7);
  withUint(odd, schema::kFrequency, 0x80000001u);
  EXPECT_EQ(2u, deltaSetUnknown(odd, 5000));
}

}  // namespace
