// ReportSelectionRecord: one ReportSelection child of a Report, as the
// check selection reads it. Its index among the Report's selections is the
// tag that its patterns carry.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "tql/patch.h"
#include "tql/property_kinds.h"

struct ReportSelectionRecord {
  tql::object_set_t contains;     // Domains and nodes.
  tql::object_set_t nodeClasses;  // NodeClass objects.
  // One path per ReportCheckSelection child, in order: the siblingNames
  // from the node down, outermost check group first.
  std::vector<std::list<std::string>> checkPaths;
};

// Fills `records` (emptied first) from the ReportSelection children of the
// Report tree `report`, in the order of the children. An absent or null
// `contains`, `nodeClasses` or path is read as empty. Raises errors::tql
// (code 9) for a property of another kind.
void selectionsOf(const tql::patch_t& report, std::vector<ReportSelectionRecord>& records);
