// What one generation shares with every level of its walk: the resolved
// report, its presentation flags and the root of the analysed tree. The
// generation driver builds it for one generation and hands it down; nothing
// of it is process-wide.
#pragma once

#include "analysis/resolved_issue.h"
#include "dbms/database.h"
#include "tql/id.h"

// A report's presentation flags. A Report that doesn't carry one of their
// properties leaves its flag as the previous generation set it, so the
// process keeps one set of flags across generations (reporter/).
struct ReportFlags {
  bool goodScore = false;     // keep severity 1 incidents in a node's log
  bool warnScore = false;     // keep severity 2 incidents
  bool alertScore = true;     // keep severity 4 incidents
  bool includeConfig = true;  // keep configuration-change incidents
  bool graphShowMinMax = false;
  bool graphShowNoResponse = false;
  bool graphAutoScale = false;  // false: an unset plot bound falls back to the check's range
  bool graphTabularUptime = false;
  bool graphTabularEnum = false;
};

// One generation's shared values; the referenced objects outlive the walk.
struct GenerationContext {
  dbms::Database& db;  // Where the tree is read and the results are written.
  const ResolvedIssue& issue;
  const ReportFlags& flags;
  tql::id_t treeRoot;  // The root of the analysed tree (a Domain).
};
