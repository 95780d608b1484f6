#include "host/store_series_read.h"

#include <algorithm>
#include <limits>

#include "host/store_errors.h"

namespace host {

namespace {

uint32_t saturated(uint64_t n) {
  return static_cast<uint32_t>(std::min<uint64_t>(n, std::numeric_limits<uint32_t>::max()));
}

bool overlaps(const tsdb::data_interval_t& r, const SeriesQuery& q) {
  const auto [start, end] = record_span(r);
  return start <= q.end && end >= q.start;
}

tsdb::interval_ptr merge_continuous(const std::vector<const tsdb::data_interval_t*>& run) {
  tsdb::continuous_fields out = static_cast<const tsdb::data_interval_continuous_t&>(*run[0]);
  double weighted = 0, plain = 0;
  uint64_t good = 0, bad = 0;
  for (const tsdb::data_interval_t* r : run) {
    const auto& c = static_cast<const tsdb::data_interval_continuous_t&>(*r);
    out.end = std::max(out.end, c.end);
    out.min = std::min(out.min, c.min);
    out.max = std::max(out.max, c.max);
    weighted += static_cast<double>(c.avg) * c.ngood;
    plain += c.avg;
    good += c.ngood;
    bad += c.nbad;
  }
  out.avg = static_cast<float>(good != 0 ? weighted / static_cast<double>(good)
                                         : plain / static_cast<double>(run.size()));
  out.ngood = saturated(good);
  out.nbad = saturated(bad);
  return std::make_unique<tsdb::data_interval_continuous_t>(out);
}

tsdb::interval_ptr merge_enum(const std::vector<const tsdb::data_interval_t*>& run) {
  tsdb::enum_fields out = static_cast<const tsdb::data_interval_enum_t&>(*run[0]);
  uint64_t good = 0, bad = 0;
  for (const tsdb::data_interval_t* r : run) {
    const auto& e = static_cast<const tsdb::data_interval_enum_t&>(*r);
    out.end = std::max(out.end, e.end);
    out.mask |= e.mask;
    good += e.ngood;
    bad += e.nbad;
  }
  out.ngood = saturated(good);
  out.nbad = saturated(bad);
  return std::make_unique<tsdb::data_interval_enum_t>(out);
}

}  // namespace

tsdb::interval_ptr merge_records(const std::vector<const tsdb::data_interval_t*>& run) {
  return run[0]->type() == 2 ? merge_continuous(run) : merge_enum(run);
}

std::vector<tsdb::interval_ptr> read_series(const Series& series, const SeriesQuery& query) {
  if (query.count < 0) throw EBadRequest("Negative count " + std::to_string(query.count));
  if (query.offset < 0) throw EBadRequest("Negative offset " + std::to_string(query.offset));
  std::vector<const tsdb::data_interval_t*> found;
  for (const tsdb::interval_ptr& r : series.records) {
    if (overlaps(*r, query)) found.push_back(r.get());
  }
  found.erase(found.begin(), found.begin() + std::min<size_t>(found.size(), query.offset));
  const size_t n = found.size();
  const size_t count = static_cast<size_t>(query.count);
  const bool merge = !query.raw && record_class_of(series.data_type) != 1;
  std::vector<tsdb::interval_ptr> out;
  if (count == 0 || n <= count || !merge) {
    const size_t take = count == 0 ? n : std::min(n, count);
    for (size_t i = 0; i < take; ++i) out.emplace_back(found[i]->clone());
    return out;
  }
  for (size_t g = 0; g < count; ++g) {
    std::vector<const tsdb::data_interval_t*> run(found.begin() + g * n / count,
                                                  found.begin() + (g + 1) * n / count);
    out.push_back(merge_records(run));
  }
  return out;
}

}  // namespace host
