// What one generation shares with every level of its walk, beyond the
// ResolvedIssue: the report's presentation flags, which keep their value
// from one generation to the next when a Report doesn't carry the property,
// and the root of the analysed tree. Process-wide; one thread.
#pragma once

#include "tql/id.h"

struct ReportFlags {
  bool goodScore = false;       // keep severity 1 incidents in a node's log
  bool warnScore = false;       // keep severity 2 incidents
  bool alertScore = true;       // keep severity 4 incidents
  bool includeConfig = true;    // keep configuration-change incidents
  bool graphShowMinMax = false;
  bool graphShowNoResponse = false;
  bool graphAutoScale = false;  // false: an unset plot bound falls back to the check's range
  bool graphTabularUptime = false;
  bool graphTabularEnum = false;
};

// The flags of the current (or last) generation.
ReportFlags& report_flags();

// The id of the root of the tree that the current generation analyses.
tql::id_t& report_tree_root();
