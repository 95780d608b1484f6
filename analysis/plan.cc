#include "analysis/plan.h"

#include "analysis/plan_values.h"
#include "base/error.h"
#include "base/fatal.h"
#include "base/zone.h"
#include "tql/schema.h"

namespace {

constexpr const char* kWeekdays[7] = {"sunday",   "monday", "tuesday", "wednesday",
                                      "thursday", "friday", "saturday"};

zone_t serverZone() { return timeZoneValue(kEnvironmentZone); }

// The midnight that begins the local day of `t`.
TimeValue midnightOf(TimeValue t) {
  tm_t tm = local(t.seconds, serverZone());
  tm.hour = tm.min = tm.sec = 0;
  tm.isdst = -1;
  return TimeValue(clampToInt32(static_cast<double>(compose(tm, serverZone()))));
}

bool isWeekday(TimeValue t, const std::string& name) {
  const tm_t tm = local(t.seconds, serverZone());
  return tm.wday >= 0 && tm.wday < 7 && name == kWeekdays[tm.wday];
}

// One active event repeated on every day from the day of `start` to `end`;
// with `weekday` set, only on the days of that name.
void addDailyEvent(IntervalSet& result, const tql::patch_t& event, TimeValue start, TimeValue end,
                   const std::string* weekday) {
  const TimeValue from(eventStart(event));
  const TimeValue to = from + TimeValue(eventDuration(event));
  for (TimeValue t = midnightOf(start); t <= end;) {
    if (weekday == nullptr || isWeekday(t, *weekday)) addInterval(result, {t + from, t + to});
    const TimeValue next = t + kOneDay;
    if (next <= t) break;  // Saturated at the end of time.
    t = next;
  }
}

void addDayPlanner(IntervalSet& result, const tql::patch_t& planner, TimeValue start, TimeValue end,
                   const std::string* weekday) {
  for (const tql::patch_t& event : planner.children) {
    if (event.class_ == schema::kEvent && eventActive(event)) {
      addDailyEvent(result, event, start, end, weekday);
    }
  }
}

void addWeekPlanner(IntervalSet& result, const tql::patch_t& planner, TimeValue start,
                    TimeValue end) {
  for (const tql::patch_t& day : planner.children) {
    const std::string name = plannerName(day);
    addDayPlanner(result, day, start, end, &name);
  }
}

void addDatePlanner(IntervalSet& result, const tql::patch_t& planner, TimeValue start,
                    TimeValue end) {
  const TimeValue date(plannerDate(planner));
  if (end < date || date + kOneDay < start) return;
  for (const tql::patch_t& event : planner.children) {
    if (event.class_ != schema::kEvent || !eventActive(event)) continue;
    const TimeValue from = date + TimeValue(eventStart(event));
    addInterval(result, {from, from + TimeValue(eventDuration(event))});
  }
}

}  // namespace

void get_plan_intervals(IntervalSet& result, const tql::patch_t* plan, TimeValue start,
                        TimeValue end) {
  TAVREL_ASSERT(plan != nullptr && plan->class_ == schema::kPlan,
                "get_plan_intervals: illegal plan parameter");
  result.clear();
  for (const tql::patch_t& child : plan->children) {
    switch (child.class_) {
      case schema::kDayPlanner:
        addDayPlanner(result, child, start, end, nullptr);
        break;
      case schema::kWeekPlanner:
        addWeekPlanner(result, child, start, end);
        break;
      case schema::kDatePlanner:
        addDatePlanner(result, child, start, end);
        break;
      default:
        throw error::EFatal("Illegal subclass of Plan");
    }
  }
  clipIntervals(result, {start, end});
}

const tql::patch_t* firstPlan(const tql::patch_t& report) {
  for (const tql::patch_t& child : report.children) {
    if (child.class_ == schema::kPlan) return &child;
  }
  return nullptr;
}

IntervalSet reportIntervals(const tql::patch_t* plan, int64_t start, int64_t duration) {
  const TimeValue begin(clampToInt32(static_cast<double>(start)));
  const TimeValue end = begin + TimeValue(clampToInt32(static_cast<double>(duration)));
  IntervalSet set;
  if (plan != nullptr) get_plan_intervals(set, plan, begin, end);
  if (set.empty()) set.insert({begin, end});
  return set;
}

std::unique_ptr<tql::pattern_t> planPattern() {
  using tql::add_next;
  using tql::make_pattern;
  auto week = add_next(make_pattern(schema::kWeekPlanner, tql::kPatternAllProps),
                       add_next(make_pattern(schema::kDayPlanner, tql::kPatternAllProps),
                                make_pattern(schema::kEvent, tql::kPatternAllProps)));
  auto plan = make_pattern(schema::kPlan, tql::kPatternAllProps);
  plan = add_next(std::move(plan), make_pattern(schema::kExpectedEvent, tql::kPatternAllProps));
  plan = add_next(std::move(plan), make_pattern(schema::kUnexpectedEvent, tql::kPatternAllProps));
  return add_next(std::move(plan), std::move(week));
}
