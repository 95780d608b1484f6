// The rows of a check, node or domain in an availability report, and the
// section that explains them.
#include "analysis/summary_rows.h"

#include <string>

#include "analysis/row_sink.h"
#include "analysis/row_texts.h"
#include "base/log.h"

namespace {

bool availabilityReportWithSummary(const ResolvedIssue& issue) {
  return issue.wantSummary && issue.kind == ReportKind::kAvailability;
}

void traceSums(const IssueStats& s, const Percentages& p) {
  const auto line = [](const char* name, const std::string& value) {
    log(name + value, kLogTrace);
  };
  line("sum_total_time = ", std::to_string(s.sum_total_time));
  line("sum_unknown_time = ", std::to_string(s.sum_unknown_time));
  line("sum_ok_time = ", std::to_string(s.sum_ok_time));
  line("sum_warn_time = ", std::to_string(s.sum_warn_time));
  line("sum_bad_time = ", std::to_string(s.sum_bad_time));
  line("avail = ", std::to_string(p.availability));
  line("uptime = ", std::to_string(p.confirmed));
  line("downtime = ", std::to_string(p.downtime));
  line("unknown = ", std::to_string(p.unconfirmed));
}

// The headings of the explanation section and what each says.
struct Explained {
  const char* heading;
  const char* text;
};

constexpr Explained kExplained[] = {
    {"Availability",
     "This field is the the sum of the fields 'Confirmed uptime' and 'Unconfirmed uptime'. The "
     "availability added to the downtime should result in 100.00 %."},
    {"Downtime",
     "This field indicates the percentage of the time that Tavrel has performed a check, but "
     "failed to get a reply. Or that the reply was outside the alarm thresholds. Ie. this is the  "
     "periods in which a red icon has appeared for this check."},
    {"Confirmed uptime",
     "This field indicates the percentage of the time that Tavrel has performed a check, and the "
     "reply was within the alarm thresholds. Ie. this is the periods in which a green or  yellow "
     "icon has appeared for a check."},
    {"Unconfirmed uptime",
     "This field indicates the percentage of the time that Tavrel has no data for the check. This "
     "may be caused by the Tavrel  Server or agent being down for a period, or that the check  "
     "was simply not configured at that time."},
};

constexpr const char* kClosingRows[] = {
    " ",
    "The availability percentage for a single check, visible at the very top of the section "
    "describing a check, is simply the sum of \"Confimed uptime\" and \"Unconfirmed uptime\".  In "
    "adding these numbers Tavrel makes the optimistic assumtion, that even though the Tavrel "
    "server is down for a period of time, everything else keeps running.",
    "The total availability of a node is calculated as the average of the availabilities of "
    "those of its checks, which are included in the report.  The total availability of a domain "
    "is likewise calculated as the average of the availabilities of every node in the domain "
    "(including subdomains), which are included in the report.",
};

}  // namespace

void writeSummaryRows(RowSink& rows, const ResolvedIssue& issue, const tql::id_t& folder,
                      const IssueStats& stats) {
  if (!availabilityReportWithSummary(issue)) return;
  const Percentages p = percentagesOf(stats);
  if (log_tracing() && stats.sum_total_time > 0) traceSums(stats, p);
  const tql::id_t& origin = stats.explanationFolder;
  rows.row(folder, "Availability", percentText(p.availability), origin);
  rows.row(folder, "Downtime", percentText(p.downtime), origin);
  rows.row(folder, "Confirmed uptime", percentText(p.confirmed), origin);
  rows.row(folder, "Unconfirmed uptime", percentText(p.unconfirmed), origin);
}

void writeAvailabilityRows(RowSink& rows, const ResolvedIssue& issue, const tql::id_t& folder,
                           const IssueStats& stats, const std::string& worstText) {
  if (!availabilityReportWithSummary(issue)) return;
  const double a = stats.availability();
  if (a != a) {  // NaN: no time at all below this level.
    rows.row(folder, "Availability", "Unknown", stats.explanationFolder);
    return;
  }
  rows.row(folder, "Availability", percentText(a), stats.explanationFolder);
  if (100.0 > stats.worst) {
    rows.row(folder, worstText + stats.worstName, percentText(stats.worst), stats.worstFolder);
  }
}

void writeExplanation(RowSink& rows, const tql::id_t& parentFolder, const tql::id_t& domainId,
                      IssueStats& stats) {
  const tql::id_t explanation = rows.folder(parentFolder, 0, "Availability explanation", domainId);
  stats.explanationFolder = explanation;
  rows.row(explanation, "",
           "This section describes how the availability fields should be understood", {});
  for (const Explained& e : kExplained) {
    const tql::id_t sub = rows.folder(explanation, 4, e.heading, {});
    rows.row(sub, "", e.text, {});
  }
  for (const char* text : kClosingRows) rows.row(explanation, "", text, {});
}

void addSummaryRows(dbms::Database& db, const ResolvedIssue& issue, const tql::id_t& folder,
                    const IssueStats& stats) {
  DatabaseRows rows(db);
  writeSummaryRows(rows, issue, folder, stats);
}

void addAvailabilityRows(dbms::Database& db, const ResolvedIssue& issue, const tql::id_t& folder,
                         const IssueStats& stats, const std::string& worstText) {
  DatabaseRows rows(db);
  writeAvailabilityRows(rows, issue, folder, stats, worstText);
}

void addExplanation(dbms::Database& db, const tql::id_t& parentFolder, const tql::id_t& domainId,
                    IssueStats& stats) {
  DatabaseRows rows(db);
  writeExplanation(rows, parentFolder, domainId, stats);
}
