#include "analysis/downtime.h"

#include "analysis/plan_values.h"
#include "base/log.h"
#include "base/time_text.h"
#include "tql/schema.h"

namespace {

// "HH:MM:SS to HH:MM:SS" of an active Event.
std::string eventText(const tql::patch_t& event) {
  const int64_t from = eventStart(event);
  return clock2str(from) + " to " + clock2str(from + eventDuration(event));
}

// The active Events of `planner`, each a row; `label` for the first row
// and " " for the later ones.
void addEventRows(std::vector<DowntimeRow>& rows, const tql::patch_t& planner,
                  const std::string& label) {
  bool first = true;
  for (const tql::patch_t& event : planner.children) {
    if (event.class_ != schema::kEvent || !eventActive(event)) continue;
    rows.push_back({first ? label : " ", eventText(event)});
    first = false;
  }
}

DowntimeFolder weekFolder(const tql::patch_t& planner) {
  DowntimeFolder folder{"Weekly scheduled downtime", {}};
  for (auto day = planner.children.rbegin(); day != planner.children.rend(); ++day) {
    addEventRows(folder.rows, *day, plannerName(*day));
  }
  return folder;
}

DowntimeFolder dayFolder(const tql::patch_t& planner) {
  DowntimeFolder folder{"Daily scheduled downtime", {}};
  addEventRows(folder.rows, planner, plannerName(planner));
  return folder;
}

// The times of a date are its own Event children, the same objects that
// the report's intervals take, each with an empty label.
DowntimeFolder dateFolder(const tql::patch_t& planner, zone_t zone) {
  DowntimeFolder folder{"Downtime for date " + date2str(plannerDate(planner), zone), {}};
  for (const tql::patch_t& event : planner.children) {
    if (event.class_ == schema::kEvent && eventActive(event)) {
      folder.rows.push_back({"", eventText(event)});
    }
  }
  return folder;
}

}  // namespace

std::vector<DowntimeFolder> scheduledDowntime(const tql::patch_t& selected, zone_t zone) {
  std::vector<DowntimeFolder> folders;
  if (selected.children.empty()) return folders;
  for (const tql::patch_t& planner : selected.children.back().children) {
    switch (planner.class_) {
      case schema::kWeekPlanner:
        folders.push_back(weekFolder(planner));
        break;
      case schema::kDayPlanner:
        folders.push_back(dayFolder(planner));
        break;
      case schema::kDatePlanner:
        folders.push_back(dateFolder(planner, zone));
        break;
      default:
        log("Got unknown planner object for scheduled downtime.");
    }
  }
  return folders;
}
