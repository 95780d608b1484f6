#include "analysis/issue_stats.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

IssueStats check(int64_t ok, int64_t bad, const char* name) {
  IssueStats s;
  s.sum_ok_time = ok;
  s.sum_bad_time = bad;
  s.sum_total_time = ok + bad;
  s.worst = s.availability();
  s.worstName = name;
  s.checks = 1;
  return s;
}

TEST(IssueStats, AvailabilityCountsUnknownAndWarnAsAvailable) {
  IssueStats s;
  EXPECT_TRUE(std::isnan(s.availability()));
  s.sum_ok_time = 10;
  s.sum_warn_time = 20;
  s.sum_unknown_time = 30;
  s.sum_alert_time = 15;
  s.sum_bad_time = 5;
  s.sum_total_time = 100;  // 20 s in no sum count against it.
  EXPECT_DOUBLE_EQ(60.0, s.availability());
}

TEST(IssueStats, NodeAvailabilityIsWeightedByTime) {
  // 50 % over one hour and 100 % over three hours: 12600 of 14400 s.
  IssueStats node;
  node.merge(check(1800, 1800, "half"));
  node.merge(check(10800, 0, "full"));
  EXPECT_EQ(14400, node.sum_total_time);
  EXPECT_EQ(2u, node.checks);
  EXPECT_DOUBLE_EQ(87.5, node.availability());
  EXPECT_DOUBLE_EQ(50.0, node.worst);
  EXPECT_EQ("half", node.worstName);
}

TEST(IssueStats, WorstComesOnlyFromChildrenWithChecksAndANumber) {
  IssueStats parent;
  IssueStats empty = check(0, 100, "no checks");
  empty.checks = 0;
  parent.merge(empty);
  EXPECT_DOUBLE_EQ(100.0, parent.worst);
  EXPECT_EQ(100, parent.sum_bad_time);  // The sums are added all the same.

  IssueStats unknown;
  unknown.checks = 1;
  unknown.worst = unknown.availability();  // NaN
  unknown.worstName = "nan";
  parent.merge(unknown);
  EXPECT_DOUBLE_EQ(100.0, parent.worst);
  EXPECT_EQ("", parent.worstName);

  parent.explanationFolder = tql::id_t();
  IssueStats withFolder = check(1, 1, "x");
  parent.merge(withFolder);
  EXPECT_EQ("x", parent.worstName);
  EXPECT_EQ(2u, parent.checks);
}

}  // namespace
