// Cutting stored records into runs that a chart may join with a line.
//
// A run is cut only where the silence between two records is more than two
// and a half times as long as the silences on both sides of it, so no
// knowledge of a check's interval is needed; at the first and the last gap
// the missing neighbour counts as passed.
#pragma once

#include <vector>

#include "grapher/series.h"
#include "tsdb/interval.h"

namespace grapher {

// How a continuous record becomes samples.
enum class SampleForm {
  kPlain,   // The record's min, avg, max at its start and again at its end.
  kRising,  // An accumulation: the average rises from min at the start to
            // max at the end.
};

// Fill the segments of `series` from `records` (in stored order) and, for
// continuous series, its statistics (count, sum, minimum, maximum). Records
// from outside may be damaged: a record that ends before it starts is taken
// as a point at its start, overlapping records count as touching, and a
// record with no measurements at all counts as one without answer
// (noResponse 1). Never raise.
void findContiguous(EnumSeries& series, const std::vector<tsdb::enum_fields>& records);
void findContiguous(ContinuousSeries& series, const std::vector<tsdb::continuous_fields>& records,
                    SampleForm form);

}  // namespace grapher
