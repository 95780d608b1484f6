// The rows of checks, nodes and domains in an availability report, with
// percentages worked out by hand.
#include "analysis/summary_rows.h"

#include <gtest/gtest.h>

#include <cmath>

#include "analysis/row_texts.h"
#include "analysis/test_rows.h"

namespace {

using testing_rows::Rows;
using Lines = std::vector<std::string>;

ResolvedIssue availabilityReport() {
  ResolvedIssue issue;
  issue.kind = ReportKind::kAvailability;
  return issue;
}

IssueStats sums(int64_t ok, int64_t warn, int64_t alert, int64_t bad, int64_t unknown,
                int64_t total) {
  IssueStats s;
  s.sum_ok_time = ok;
  s.sum_warn_time = warn;
  s.sum_alert_time = alert;
  s.sum_bad_time = bad;
  s.sum_unknown_time = unknown;
  s.sum_total_time = total;
  return s;
}

TEST(PercentText, ThreeDecimalsAndPercentSign) {
  EXPECT_EQ("99.500 %", percentText(99.5));
  EXPECT_EQ("100.000 %", percentText(100.0));
  EXPECT_EQ("0.000 %", percentText(0.0));
  EXPECT_EQ("87.500 %", percentText(87.5));
  EXPECT_EQ("nan %", percentText(std::nan("")));
}

TEST(Percentages, FromTheSumsOfOneCheck) {
  // 3600 s: 1800 ok, 600 warn, 300 alert, 300 bad, 400 unknown, 200 in no
  // sum (enum remainder). Availability (400 + 1800 + 600) / 3600.
  const Percentages p = percentagesOf(sums(1800, 600, 300, 300, 400, 3600));
  EXPECT_DOUBLE_EQ(2800 * 100.0 / 3600, p.availability);
  EXPECT_DOUBLE_EQ(600 * 100.0 / 3600, p.downtime);
  EXPECT_DOUBLE_EQ(2400 * 100.0 / 3600, p.confirmed);
  EXPECT_DOUBLE_EQ(400 * 100.0 / 3600, p.unconfirmed);
  EXPECT_LT(p.availability + p.downtime, 100.0);  // The remainder stands in no sum.

  const Percentages unknownOnly = percentagesOf(sums(0, 0, 0, 0, 500, 500));
  EXPECT_EQ(100.0, unknownOnly.availability);
  EXPECT_EQ(0.0, unknownOnly.confirmed);
  EXPECT_EQ(100.0, unknownOnly.unconfirmed);

  const Percentages none = percentagesOf(IssueStats{});
  EXPECT_TRUE(std::isnan(none.availability));
  EXPECT_EQ(0.0, none.downtime);
  EXPECT_EQ(0.0, none.confirmed);
  EXPECT_EQ(0.0, none.unconfirmed);
}

TEST(SummaryRows, FourRowsLeadingToTheExplanation) {
  Rows rows;
  IssueStats s = sums(1800, 600, 300, 300, 400, 3600);
  s.explanationFolder = tql::id_t{0, 7};
  writeSummaryRows(rows, availabilityReport(), tql::id_t{0, 9}, s);
  EXPECT_EQ((Lines{"row under 0.9 \"Availability\" = \"77.778 %\" origin 0.7",
                   "row under 0.9 \"Downtime\" = \"16.667 %\" origin 0.7",
                   "row under 0.9 \"Confirmed uptime\" = \"66.667 %\" origin 0.7",
                   "row under 0.9 \"Unconfirmed uptime\" = \"11.111 %\" origin 0.7"}),
            rows.lines);
}

TEST(SummaryRows, NoTimeAtAllShowsNan) {
  Rows rows;
  writeSummaryRows(rows, availabilityReport(), tql::id_t{0, 9}, IssueStats{});
  EXPECT_EQ((Lines{"row under 0.9 \"Availability\" = \"nan %\" origin ",
                   "row under 0.9 \"Downtime\" = \"0.000 %\" origin ",
                   "row under 0.9 \"Confirmed uptime\" = \"0.000 %\" origin ",
                   "row under 0.9 \"Unconfirmed uptime\" = \"0.000 %\" origin "}),
            rows.lines);
}

TEST(SummaryRows, OnlyInAnAvailabilityReportWithSummary) {
  const IssueStats s = sums(10, 0, 0, 0, 0, 10);
  ResolvedIssue statistics = availabilityReport();
  statistics.kind = ReportKind::kStatistics;
  ResolvedIssue noSummary = availabilityReport();
  noSummary.wantSummary = false;
  for (const ResolvedIssue& issue : {statistics, noSummary}) {
    Rows rows;
    writeSummaryRows(rows, issue, tql::id_t{0, 9}, s);
    writeAvailabilityRows(rows, issue, tql::id_t{0, 9}, s, "Worst check availability is ");
    EXPECT_TRUE(rows.lines.empty());
  }
}

TEST(AvailabilityRows, NodeIsWeightedByTimeAndNamesItsWorstCheck) {
  // One check at 50 % over one hour, one at 100 % over three hours.
  IssueStats half = sums(1800, 0, 1800, 0, 0, 3600);
  half.worst = half.availability();
  half.worstFolder = tql::id_t{0, 21};
  half.worstName = "disk";
  half.checks = 1;
  IssueStats full = sums(10800, 0, 0, 0, 0, 10800);
  full.worst = full.availability();
  full.worstFolder = tql::id_t{0, 22};
  full.worstName = "ping";
  full.checks = 1;
  IssueStats node;
  node.explanationFolder = tql::id_t{0, 7};
  node.merge(full);
  node.merge(half);
  Rows rows;
  writeAvailabilityRows(rows, availabilityReport(), tql::id_t{0, 20}, node,
                        "Worst check availability is ");
  EXPECT_EQ(
      (Lines{"row under 0.20 \"Availability\" = \"87.500 %\" origin 0.7",
             "row under 0.20 \"Worst check availability is disk\" = \"50.000 %\" origin 0.21"}),
      rows.lines);
}

TEST(AvailabilityRows, UnknownWithoutTimeAndNoWorstRowAtFull) {
  Rows unknown;
  IssueStats empty;
  empty.explanationFolder = tql::id_t{0, 7};
  writeAvailabilityRows(unknown, availabilityReport(), tql::id_t{0, 20}, empty,
                        "Worst node availability is ");
  EXPECT_EQ((Lines{"row under 0.20 \"Availability\" = \"Unknown\" origin 0.7"}), unknown.lines);

  Rows full;
  IssueStats all = sums(100, 0, 0, 0, 0, 100);
  all.worst = 100.0;
  all.worstName = "web1";
  writeAvailabilityRows(full, availabilityReport(), tql::id_t{0, 20}, all,
                        "Worst node availability is ");
  EXPECT_EQ((Lines{"row under 0.20 \"Availability\" = \"100.000 %\" origin "}), full.lines);
}

TEST(Explanation, FolderHeadingsAndTextsInOrder) {
  Rows rows;
  IssueStats stats;
  writeExplanation(rows, tql::id_t{0, 5}, tql::id_t{0, 1}, stats);
  EXPECT_EQ(tql::id_t({9, 1}), stats.explanationFolder);
  ASSERT_EQ(13u, rows.lines.size());
  EXPECT_EQ("folder 9.1 under 0.5 type 0 \"Availability explanation\" origin 0.1", rows.lines[0]);
  EXPECT_EQ(
      "row under 9.1 \"\" = \"This section describes how the availability fields should be "
      "understood\" origin ",
      rows.lines[1]);
  EXPECT_EQ("folder 9.2 under 9.1 type 4 \"Availability\" origin ", rows.lines[2]);
  EXPECT_EQ(
      "row under 9.2 \"\" = \"This field is the the sum of the fields 'Confirmed uptime' and "
      "'Unconfirmed uptime'. The availability added to the downtime should result in 100.00 %.\" "
      "origin ",
      rows.lines[3]);
  EXPECT_EQ("folder 9.3 under 9.1 type 4 \"Downtime\" origin ", rows.lines[4]);
  EXPECT_NE(std::string::npos, rows.lines[5].find("Ie. this is the  periods in which a red icon"));
  EXPECT_EQ("folder 9.4 under 9.1 type 4 \"Confirmed uptime\" origin ", rows.lines[6]);
  EXPECT_NE(std::string::npos, rows.lines[7].find("a green or  yellow icon"));
  EXPECT_EQ("folder 9.5 under 9.1 type 4 \"Unconfirmed uptime\" origin ", rows.lines[8]);
  EXPECT_NE(std::string::npos, rows.lines[9].find("the Tavrel  Server or agent"));
  EXPECT_EQ("row under 9.1 \"\" = \" \" origin ", rows.lines[10]);
  EXPECT_NE(std::string::npos,
            rows.lines[11].find("sum of \"Confimed uptime\" and \"Unconfirmed uptime\".  In"));
  EXPECT_NE(std::string::npos, rows.lines[12].find("(including subdomains), which are included"));
}

}  // namespace
