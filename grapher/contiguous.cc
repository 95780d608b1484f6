#include "grapher/contiguous.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace grapher {

namespace {

// The end of a record, never before its start.
template <class Record>
int64_t endOf(const Record& r) {
  return std::max(r.start, r.end);
}

// The silence between two records; overlapping ones touch.
template <class Record>
double gapBetween(const Record& a, const Record& b) {
  return static_cast<double>(std::max<int64_t>(0, b.start - endOf(a)));
}

// Walks the records, appending each with `append` to the last segment of
// `segments` and opening a new segment at every wide gap.
template <class Record, class Segments, class Append>
void cutRuns(const std::vector<Record>& records, Segments& segments, Append append) {
  if (records.empty()) return;
  segments.emplace_back();
  for (size_t i = 0; i < records.size(); ++i) {
    append(records[i], segments.back());
    if (i + 1 == records.size()) break;
    const double gap = gapBetween(records[i], records[i + 1]);
    const bool wideBefore = i == 0 || gap > 2.5 * gapBetween(records[i - 1], records[i]);
    const bool wideAfter =
        i + 2 >= records.size() || gap > 2.5 * gapBetween(records[i + 1], records[i + 2]);
    if (wideBefore && wideAfter) segments.emplace_back();
  }
}

// The fraction of measurements without answer; nothing measured counts as
// no answer.
double failedShare(uint32_t ngood, uint32_t nbad) {
  const double total = static_cast<double>(ngood) + nbad;
  return total == 0 ? 1.0 : nbad / total;
}

void takeStatistics(ContinuousSeries& s, const tsdb::continuous_fields& r) {
  if (r.ngood == 0) return;
  const int64_t count = int64_t{s.count} + r.ngood;
  s.count = static_cast<int32_t>(std::min<int64_t>(count, std::numeric_limits<int32_t>::max()));
  s.sum += static_cast<double>(r.ngood) * r.avg;
  if (r.min >= 0) {
    s.minimum = std::min<double>(s.minimum, r.min);
  } else if (r.avg >= 0) {
    s.minimum = std::min<double>(s.minimum, r.avg);
  }
  s.maximum = std::max<double>(s.maximum, r.max);
}

}  // namespace

void findContiguous(EnumSeries& series, const std::vector<tsdb::enum_fields>& records) {
  cutRuns(records, series.segments,
          [](const tsdb::enum_fields& r, std::vector<EnumSample>& segment) {
            const EnumSample sample{r.start, r.mask, failedShare(r.ngood, r.nbad)};
            segment.push_back(sample);
            if (endOf(r) != r.start) {
              segment.push_back({endOf(r), sample.states, sample.unknown});
            }
          });
}

void findContiguous(ContinuousSeries& series, const std::vector<tsdb::continuous_fields>& records,
                    SampleForm form) {
  cutRuns(
      records, series.segments,
      [&series, form](const tsdb::continuous_fields& r, std::vector<ContinuousSample>& segment) {
        takeStatistics(series, r);
        const double nr = failedShare(r.ngood, r.nbad);
        const int64_t end = endOf(r);
        if (end == r.start) {
          segment.push_back({r.start, r.min, r.avg, r.max, nr});
        } else if (form == SampleForm::kRising) {
          segment.push_back({r.start, r.min, r.min, r.max, nr});
          segment.push_back({end, r.min, r.max, r.max, nr});
        } else {
          segment.push_back({r.start, r.min, r.avg, r.max, nr});
          segment.push_back({end, r.min, r.avg, r.max, nr});
        }
      });
}

}  // namespace grapher
