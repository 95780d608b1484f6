// Helpers of the analysis tests that work with times of day and interval
// sets.
#pragma once

#include <cstdint>
#include <string>

#include "analysis/interval_set.h"

namespace testing_intervals {

inline constexpr int32_t kHour = 3600;
inline constexpr int32_t kDay = 86400;

// "[b,e) [b,e)" in seconds, with ".us" where microseconds are set.
inline std::string render(const IntervalSet& set) {
  std::string out;
  auto text = [](const TimeValue& t) {
    std::string s = std::to_string(t.seconds);
    if (t.microseconds != 0) s += "." + std::to_string(t.microseconds);
    return s;
  };
  for (const Interval& i : set) {
    if (!out.empty()) out += " ";
    out += "[" + text(i.begin) + "," + text(i.end) + ")";
  }
  return out;
}

}  // namespace testing_intervals
