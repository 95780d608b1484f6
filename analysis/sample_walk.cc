#include "analysis/sample_walk.h"

#include <string>

#include "base/log.h"

void Sums::addTo(IssueStats& stats) const {
  stats.sum_ok_time = wrapAdd(stats.sum_ok_time, static_cast<int64_t>(ok));
  stats.sum_warn_time = wrapAdd(stats.sum_warn_time, static_cast<int64_t>(warn));
  stats.sum_alert_time = wrapAdd(stats.sum_alert_time, static_cast<int64_t>(alert));
  stats.sum_bad_time = wrapAdd(stats.sum_bad_time, static_cast<int64_t>(bad));
  stats.sum_unknown_time = wrapAdd(stats.sum_unknown_time, static_cast<int64_t>(unknown));
  stats.sum_total_time = wrapAdd(stats.sum_total_time, static_cast<int64_t>(total));
}

namespace {

void logPair(const char* what, int64_t value, const char* at, int64_t start) {
  log(what + std::to_string(value) + at + std::to_string(start));
}

}  // namespace

void logNegativeGap(int64_t gap, int64_t start) {
  logPair("Got data_gap_time = ", gap, " sample at ", start);
}

void logNegativeSpan(int64_t span, int64_t start) {
  logPair("Got time_span = ", span, " data_start = ", start);
}

void logNegativeRightGap(int64_t gap, int64_t start) {
  logPair("Got data_gap_right_time = ", gap, " sample at ", start);
}

void logNegativeTotalSpan(int64_t span, int64_t start) {
  logPair("Got time span = ", span, " data start = ", start);
}
