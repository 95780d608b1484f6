#include "analysis/interval_set.h"

#include <iterator>

namespace {

bool before(const TimeValue& a, const TimeValue& b) {
  return a.seconds < b.seconds || (a.seconds == b.seconds && a.microseconds < b.microseconds);
}

const TimeValue& later(const TimeValue& a, const TimeValue& b) { return before(a, b) ? b : a; }

}  // namespace

bool IntervalOrder::operator()(const Interval& a, const Interval& b) const {
  return before(a.begin, b.begin);
}

void addInterval(IntervalSet& set, Interval interval) {
  // Elements that begin inside the new interval (or right at its end).
  auto it = set.lower_bound(interval);
  while (it != set.end() && !before(interval.end, it->begin)) {
    interval.end = later(interval.end, it->end);
    it = set.erase(it);
  }
  // Elements before it that reach into it (or up to its begin).
  while (it != set.begin()) {
    const auto prev = std::prev(it);
    if (before(prev->end, interval.begin)) break;
    interval.begin = prev->begin;
    interval.end = later(interval.end, prev->end);
    set.erase(prev);
  }
  set.insert(it, interval);
}

void clipIntervals(IntervalSet& set, Interval interval) {
  while (!set.empty() && before(set.begin()->end, interval.begin)) set.erase(set.begin());
  if (!set.empty() && before(set.begin()->begin, interval.begin)) {
    const TimeValue end = set.begin()->end;
    set.erase(set.begin());
    set.insert({interval.begin, end});
  }
  while (!set.empty() && before(interval.end, std::prev(set.end())->begin)) {
    set.erase(std::prev(set.end()));
  }
  if (!set.empty() && before(interval.end, std::prev(set.end())->end)) {
    const TimeValue begin = std::prev(set.end())->begin;
    set.erase(std::prev(set.end()));
    set.insert({begin, interval.end});
  }
}
