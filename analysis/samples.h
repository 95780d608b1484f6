// The sample records the analysis reads, and the filter that picks the
// samples of one report interval.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/interval_set.h"
#include "tsdb/interval.h"

using ContinuousSample = tsdb::data_interval_continuous_t;
using EnumSample = tsdb::data_interval_enum_t;

// A check's samples as the analysis takes them: pointers into the reply,
// which owns the records. The filter changes the records themselves.
template <class Sample>
using SampleList = std::span<Sample* const>;

// `p` as the record class that the data type promises (ContinuousSample or
// EnumSample). A null record or one of another class is the fatal assertion
// "checked_cast failed, ", the actual class name ("(null)" for null),
// " should have been " and the wanted class name.
template <class Sample>
Sample* checked_cast(tsdb::data_interval_t* p);

// The reply's records, each through checked_cast, in order; the reply keeps
// ownership. Done once per check, before the intervals are analysed.
template <class Sample>
std::vector<Sample*> castSamples(const std::vector<tsdb::interval_ptr>& reply);

extern template ContinuousSample* checked_cast<ContinuousSample>(tsdb::data_interval_t*);
extern template EnumSample* checked_cast<EnumSample>(tsdb::data_interval_t*);
extern template std::vector<ContinuousSample*> castSamples<ContinuousSample>(
    const std::vector<tsdb::interval_ptr>&);
extern template std::vector<EnumSample*> castSamples<EnumSample>(
    const std::vector<tsdb::interval_ptr>&);

// The samples of `interval` (seconds; microseconds are not looked at): it
// skips those that end before the interval begins, takes the next one
// whatever it is and moves its start up to the interval's begin, then takes
// those that end before the interval ends, and last the one after them if
// it starts before the interval's end, cutting its end down to the
// interval's end. The samples taken are a contiguous run of `samples`, so
// the result is a sub-range of it (no allocation).
//
// The changes stay for later intervals: a sample cut at the end of one
// interval ends before the next one begins and is skipped there. Works for
// both record classes (they have `start` and `end`).
template <class Sample>
SampleList<Sample> filterSamples(const Interval& interval, SampleList<Sample> samples) {
  const int64_t begin = interval.begin.seconds;
  const int64_t end = interval.end.seconds;
  size_t first = 0;
  while (first < samples.size() && samples[first]->end < begin) ++first;
  if (first == samples.size()) return {};
  if (samples[first]->start < begin) samples[first]->start = begin;
  size_t last = first + 1;
  while (last < samples.size() && samples[last]->end < end) ++last;
  if (last < samples.size() && samples[last]->start < end) {
    if (samples[last]->end > end) samples[last]->end = end;
    ++last;
  }
  return samples.subspan(first, last - first);
}
