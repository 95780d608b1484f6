// The issue tree: one short-lived object per visited domain, node and
// check, each writing its own level's result objects and handing its sums
// to the level above. The walk catches nothing: database failures leave
// through every level to the generation driver, and what was created stays.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/check_selector.h"
#include "analysis/generation_context.h"
#include "analysis/interval_set.h"
#include "analysis/issue_stats.h"
#include "analysis/progress.h"
#include "analysis/resolved_issue.h"
#include "base/zone.h"
#include "tql/patch.h"
#include "tsdb/interval.h"

class ReportIssue {
 public:
  // Writes this level's results under `parentFolder`, analysing each
  // interval of `intervals`, merges this level's sums into `parentStats`,
  // and lowers `firstSample` to the first sample found. Raises errors::tql
  // and what the dialogs raise.
  virtual void analyse(const tql::id_t& parentFolder, const IntervalSet& intervals,
                       IssueStats& parentStats, int64_t& firstSample, zone_t timeZone) = 0;
  virtual ~ReportIssue() = default;
  ReportIssue(const ReportIssue&) = delete;
  ReportIssue& operator=(const ReportIssue&) = delete;

  int status = 2;  // 2 while this level's analysis runs, 0 when it has finished.

 protected:
  ReportIssue(const GenerationContext& context, uint32_t depth)
      : context_(&context), issue_(&context.issue), depth_(depth) {}

  // The hide test: deletes `folder` when this level is at least the
  // report's hideLevel deep and `value` is at least its hideThreshold (never
  // for NaN).
  void hideIfWanted(const tql::id_t& folder, double value) const;

  const GenerationContext* context_;  // Shared, not owned.
  const ResolvedIssue* issue_;        // context_->issue.
  const uint32_t depth_;              // 0 for the root domain.
};

// The levels above the checks: a domain or node, with the report's
// selector and progress. `object` (the domain with its nodes and
// subdomains, or the node), `selector` and `progress` are the caller's and
// outlive this object.
class ReportTreeIssue : public ReportIssue {
 public:
  // Public so that the derived classes inherit it as it stands; the class
  // itself is abstract.
  ReportTreeIssue(const tql::patch_t& object, const GenerationContext& context, uint32_t depth,
                  CheckSelector& selector, Progress& progress)
      : ReportIssue(context, depth), object_(object), selector_(selector), progress_(progress) {}

 protected:
  const tql::patch_t& object_;
  CheckSelector& selector_;
  Progress& progress_;
};

class ReportDomain : public ReportTreeIssue {
 public:
  using ReportTreeIssue::ReportTreeIssue;
  void analyse(const tql::id_t& parentFolder, const IntervalSet& intervals, IssueStats& parentStats,
               int64_t& firstSample, zone_t timeZone) override;

 private:
  // Nodes first (sorted by longLabel), then subdomains.
  void descend(const tql::id_t& folder, const IntervalSet& intervals, IssueStats& stats,
               int64_t& firstSample, zone_t timeZone);
};

class ReportHost : public ReportTreeIssue {
 public:
  using ReportTreeIssue::ReportTreeIssue;
  void analyse(const tql::id_t& parentFolder, const IntervalSet& intervals, IssueStats& parentStats,
               int64_t& firstSample, zone_t timeZone) override;

 private:
  // Post-order over the selected tree: a child's own children first, then
  // the child itself when it is a selected check (tag 0).
  void descend(const tql::patch_t& from, const tql::id_t& folder, const IntervalSet& intervals,
               IssueStats& stats, int64_t& firstSample, zone_t timeZone);
};

class ReportSingleRawIssue : public ReportIssue {
 public:
  // `object`: the check or check accumulation, with all its properties.
  ReportSingleRawIssue(const tql::patch_t& object, const GenerationContext& context,
                       uint32_t depth);
  void analyse(const tql::id_t& parentFolder, const IntervalSet& intervals, IssueStats& parentStats,
               int64_t& firstSample, zone_t timeZone) override;

 private:
  void analyseData(const tql::id_t& folder, const IntervalSet& intervals, IssueStats& parentStats,
                   int64_t& firstSample, zone_t timeZone);
  // The period row ("Statistics ..."), with the times in `timeZone`.
  void addPeriodRow(const tql::id_t& folder, zone_t timeZone) const;
  // Runs the data type's analysis per interval; returns the first sample
  // time of the last run.
  int64_t runIntervals(int32_t dataType, const std::vector<tsdb::interval_ptr>& samples,
                       const IntervalSet& intervals, int64_t& firstSample);
  // The graph or log with the chart's series.
  void storeSeries(const tql::id_t& folder, int32_t dataType, int64_t lastFirst, zone_t timeZone);

  const tql::patch_t& object_;
  std::string unit_;  // The check's unit blob; empty for none.
  double warnAbove_, warnBelow_, alertAbove_, alertBelow_;  // NaN until loaded.
  double rangeMin_, rangeMax_;
  IssueStats stats_;  // This check alone.
  std::string label_;
};
