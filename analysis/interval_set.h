// IntervalSet: the ordered stretches of time (begin, end) that a report
// covers, and the two operations that build it.
#pragma once

#include <set>

#include "base/time_value.h"

struct Interval {
  TimeValue begin;
  TimeValue end;
  bool operator==(const Interval&) const = default;
};

// Orders by `begin` (seconds, then microseconds); `end` plays no part, so a
// set holds no two intervals with the same begin.
struct IntervalOrder {
  bool operator()(const Interval& a, const Interval& b) const;
};

using IntervalSet = std::set<Interval, IntervalOrder>;

// Adds `interval`, merging it with every element it overlaps or touches
// (an element that begins at `interval.end`, or ends at `interval.begin`,
// is merged too). A set built only by addInterval never holds two elements
// that touch or overlap. Never raises (beyond std::bad_alloc).
void addInterval(IntervalSet& set, Interval interval);

// Cuts the set to `interval`: drops elements that end before its begin or
// begin after its end, and cuts the first and last element at its bounds.
// An element that ends exactly at `interval.begin` stays as an empty
// interval (begin == end), as one that begins exactly at `interval.end`.
void clipIntervals(IntervalSet& set, Interval interval);
