// The scheduled downtime of a domain, node or check as the rows of a
// configuration report: what the sub-folders and rows will carry. Writing
// them to the database is the caller's.
#pragma once

#include <string>
#include <vector>

#include "base/zone.h"
#include "dbms/database.h"
#include "tql/patch.h"

struct DowntimeRow {
  std::string label;
  std::string text;
  bool operator==(const DowntimeRow&) const = default;
};

// One sub-folder (folder type 4) and its rows, which have no origin.
struct DowntimeFolder {
  std::string name;
  std::vector<DowntimeRow> rows;
  bool operator==(const DowntimeFolder&) const = default;
};

// The folders for `selected`, the result of the plan query from the
// object's id (the root with the Plan objects that apply to the object as
// children). The last child is the Plan in force; no child gives nothing.
// Per child of that Plan, in order:
// - WeekPlanner: "Weekly scheduled downtime", the rows of its DayPlanner
//   children from the last to the first;
// - DayPlanner: "Daily scheduled downtime" and its rows;
// - DatePlanner: "Downtime for date " and the date in `zone`, and one row
//   per active Event child with an empty label;
// - another class: no folder; logs "Got unknown planner object for
//   scheduled downtime.".
// The rows of a DayPlanner are its active Events as "HH:MM:SS to HH:MM:SS"
// (hours not wrapped at 24); the first is labelled with the planner's name,
// each later one " ". Raises errors::tql for damaged Event properties.
std::vector<DowntimeFolder> scheduledDowntime(const tql::patch_t& selected, zone_t zone);

// The scheduled downtime of the object `objectId` in a configuration
// report: the plans that apply to it (select from its id: the root class,
// flags 4, then the plan pattern), listed by scheduledDowntime, each folder
// a sub-folder (type 4) of `parentFolder` with its rows, no origins.
// Raises errors::tql for a failed select or create.
class RowSink;
class ObjectSource;
void writeScheduledDowntime(RowSink& rows, ObjectSource& objects, const tql::id_t& parentFolder,
                            const tql::id_t& objectId, zone_t zone);
// The same into the database.
void addScheduledDowntime(dbms::Database& db, const tql::id_t& parentFolder,
                          const tql::id_t& objectId, zone_t zone);
