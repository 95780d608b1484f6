// The walk over the filtered samples of one interval: the gap rule that all
// data types share, with a classifier per data type for each sample's span.
// Internal to the analysis routines (check_analysis.h).
#pragma once

#include <cstdint>

#include "analysis/issue_stats.h"
#include "analysis/samples.h"
#include "analysis/wrap.h"

// Running sums of one walk; unsigned so that damaged input wraps. Added to
// an IssueStats at the end of the walk.
struct Sums {
  uint64_t ok = 0;
  uint64_t warn = 0;
  uint64_t alert = 0;
  uint64_t bad = 0;
  uint64_t unknown = 0;
  uint64_t total = 0;

  void addTo(IssueStats& stats) const;
};

struct WalkSettings {
  uint32_t deltaSetUnknown = 0;
  // The report's period begins at 0: time begins at the first sample, and
  // there is no left gap.
  bool fromFirstSample = false;
};

// The error lines of repaired negative spans (level 0). Cold: they build
// their text only when a damaged or overlapping sample turns up.
[[gnu::cold]] void logNegativeGap(int64_t gap, int64_t start);
[[gnu::cold]] void logNegativeSpan(int64_t span, int64_t start);
[[gnu::cold]] void logNegativeRightGap(int64_t gap, int64_t start);
[[gnu::cold]] void logNegativeTotalSpan(int64_t span, int64_t start);

namespace walk_detail {

// A gap longer than `delta` is time of its own (good when the check has no
// usable frequency, else unknown); a shorter one lengthens the sample.
inline void addGap(int64_t gap, uint32_t delta, int64_t& span, Sums& sums) {
  if (gap > static_cast<int64_t>(delta)) {
    sums.total += static_cast<uint64_t>(gap);
    (delta < 1 ? sums.ok : sums.unknown) += static_cast<uint64_t>(gap);
  } else {
    span = wrapAdd(span, gap);
  }
}

// The span of `s` with the gap since `prevEnd`; the right gap up to
// `rightEnd` too when `last`.
template <class Sample>
inline int64_t spanOf(const Sample& s, int64_t prevEnd, uint32_t delta, bool last, int64_t rightEnd,
                      Sums& sums) {
  int64_t gap = wrapSub(s.start, prevEnd);
  if (gap < 0) [[unlikely]] {
    logNegativeGap(gap, s.start);
    gap = 0;
  }
  int64_t span = wrapSub(s.end, s.start);
  if (span < 0) [[unlikely]] {
    logNegativeSpan(span, s.start);
    span = 0;
  }
  addGap(gap, delta, span, sums);
  if (last) {
    int64_t right = wrapSub(rightEnd, s.end);
    if (right < 0) [[unlikely]] {
      logNegativeRightGap(right, s.start);
      right = 0;
    }
    addGap(right, delta, span, sums);
  }
  if (span < 0) [[unlikely]] {
    logNegativeTotalSpan(span, s.start);
    span = 0;
  }
  sums.total += static_cast<uint64_t>(span);
  return span;
}

}  // namespace walk_detail

// Walks `list` (filtered, not empty) over `interval`, calling
// `classify(sample, span, sums)` with each sample's span of whole seconds
// (never negative), gaps included; adds the sums to `stats` at the end.
// Returns the start of the first sample of `list`.
template <class Sample, class Classify>
int64_t walkSamples(SampleList<Sample> list, const Interval& interval, const WalkSettings& settings,
                    IssueStats& stats, Classify&& classify) {
  Sums sums;
  int64_t prevEnd = settings.fromFirstSample ? list.front()->start : interval.begin.seconds;
  const int64_t end = interval.end.seconds;
  const size_t last = list.size() - 1;
  for (size_t i = 0; i <= last; ++i) {
    const Sample& s = *list[i];
    const int64_t span =
        walk_detail::spanOf(s, prevEnd, settings.deltaSetUnknown, i == last, end, sums);
    classify(s, span, sums);
    prevEnd = s.end;
  }
  sums.addTo(stats);
  return list.front()->start;
}
