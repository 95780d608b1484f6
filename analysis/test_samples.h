// Sample lists for the analysis tests: records owned by the list, handed to
// the routines as pointers, the way a reply's records are.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/issue_stats.h"
#include "analysis/samples.h"

namespace testing_samples {

template <class Sample>
class Records {
 public:
  explicit Records(std::vector<Sample> records) : records_(std::move(records)) {
    for (Sample& r : records_) pointers_.push_back(&r);
  }
  SampleList<Sample> list() const { return pointers_; }
  const Sample& operator[](size_t i) const { return records_[i]; }

 private:
  std::vector<Sample> records_;
  std::vector<Sample*> pointers_;
};

// A continuous record over [start, end) with min and max `value`.
inline ContinuousSample measured(int64_t start, int64_t end, float value, uint32_t ngood = 1,
                                 uint32_t nbad = 0) {
  ContinuousSample s;
  s.start = start;
  s.end = end;
  s.min = s.avg = s.max = value;
  s.ngood = ngood;
  s.nbad = nbad;
  return s;
}

inline EnumSample states(int64_t start, int64_t end, uint32_t mask) {
  EnumSample s;
  s.start = start;
  s.end = end;
  s.mask = mask;
  return s;
}

// "ok W warn X alert Y bad Z unknown U total T".
inline std::string sums(const IssueStats& s) {
  return "ok " + std::to_string(s.sum_ok_time) + " warn " + std::to_string(s.sum_warn_time) +
         " alert " + std::to_string(s.sum_alert_time) + " bad " + std::to_string(s.sum_bad_time) +
         " unknown " + std::to_string(s.sum_unknown_time) + " total " +
         std::to_string(s.sum_total_time);
}

}  // namespace testing_samples
