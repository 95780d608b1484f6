// The analysis of one check's samples, interval by interval: seconds of
// good, warning, alert, bad and unknown time added to the check's
// IssueStats, for data types 2 (uptime), 3 (enum), 5 (continuous) and 6
// (accumulation).
//
// Each routine takes the check's samples (castSamples of the first fetch's
// reply, sorted by time, not empty) and one interval of the report's
// IntervalSet. It filters them (filterSamples, which changes the records for
// the later intervals), walks them with the gap rule and adds to the sums.
// It returns the `start` of the first filtered sample, or 0 when the filter
// left nothing (or, for uptime and enum, when the check has no usable
// frequency). An empty sample list is the fatal assertion "... data
// analysis routine given empty data set". Damaged properties of the check
// raise errors::tql; damaged samples are repaired and logged, never fatal.
//
// Not thread-safe; one object per check, used on the analysis thread.
#pragma once

#include <cstdint>

#include "analysis/issue_stats.h"
#include "analysis/sample_walk.h"
#include "analysis/samples.h"
#include "analysis/thresholds.h"
#include "tql/patch.h"

class CheckAnalysis {
 public:
  // `check` (the stored check with its properties) and `stats` are the
  // caller's and must outlive this object. `fromStartOfMonitoring` is true
  // when the report's `start` is 0: each walk then begins at its first
  // sample, with no left gap.
  CheckAnalysis(const tql::patch_t& check, bool fromStartOfMonitoring, IssueStats& stats);
  CheckAnalysis(const CheckAnalysis&) = delete;
  CheckAnalysis& operator=(const CheckAnalysis&) = delete;

  // Data type 5: a sample's failed share (nbad of ngood + nbad, rounded to
  // the nearest second) is bad time, the rest is classified by its min and
  // max against the thresholds.
  int64_t analyseContinuous(SampleList<ContinuousSample> samples, const Interval& interval);
  // Data type 6: a sample is wholly unknown (no measurements), bad (only
  // failed ones) or classified by the thresholds.
  int64_t analyseAccumulation(SampleList<ContinuousSample> samples, const Interval& interval);
  // Data type 2: as accumulation, but a check without `frequency` (error
  // line "Uptime check did not have a check frequency") or with a null one
  // ("Uptime check had a null check frequency") adds nothing, and remote
  // checks get no extra allowance.
  int64_t analyseUptime(SampleList<ContinuousSample> samples, const Interval& interval);
  // Data type 3: a sample's time is shared equally among the states of its
  // mask, each going to the sum of its `stateActionN`; the remainder of the
  // division, and all of a sample with an empty mask, stays in the total
  // alone. Frequency as for uptime ("Enum check ...").
  int64_t analyseEnum(SampleList<EnumSample> samples, const Interval& interval);

  // The thresholds of the last walk that loaded them (NaN before that),
  // for the check's graph.
  const Thresholds& thresholds() const { return thresholds_; }

 private:
  // Data types 5 and 6: filter, thresholds, allowance, and the walk with
  // `Classify` for each sample (inlined: a template argument).
  using NumericClassifier = void (*)(const Thresholds&, const ContinuousSample&, int64_t, Sums&);
  template <NumericClassifier Classify>
  int64_t analyseNumeric(SampleList<ContinuousSample> samples, const Interval& interval,
                         const char* kind);
  // The allowance of uptime and enum checks; false (with the error line)
  // when the check has no `frequency` or a null one.
  bool stateHead(const char* kind, uint32_t& delta);

  const tql::patch_t& check_;
  const bool fromStart_;
  IssueStats& stats_;
  Thresholds thresholds_;
};
