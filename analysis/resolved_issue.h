// ResolvedIssue: what one generation makes of its Report object (filled by
// Report::resolveIssue in reporter/), read by the walk.
#pragma once

#include <cstdint>

// What a report shows: its `type` (enumeration 0x1001e). A stored value
// outside these is kept as it is and shows as none of them.
enum class ReportKind : uint32_t {
  kAvailability = 1,   // times in each state, availability, summaries, charts
  kIncidents = 2,      // the nodes' incident logs
  kStatistics = 3,     // the checks' values and charts
  kOverview = 4,       // the domains and nodes, without their checks
  kConfiguration = 5,  // the configuration of domains, nodes and checks
};

struct ResolvedIssue {
  ReportKind kind{};                // `type`
  bool wantGraph = true;            // `formGraph`
  bool wantSummary = true;          // `formSummary`
  bool wantIncidents = true;        // `goodScore` or `warnScore` or `alertScore` or `includeConfig`
  bool hasPeriod = false;           // The Report has a `period` property at all.
  uint32_t hideLevel = 0xFFFFFFFF;  // `hideSectionLevel`
  double hideThreshold = 0.0;       // `hideSectionThreshold`
  int64_t start = 0;                // The period's start; 0 stands for the start of monitoring.
  int64_t duration = 0;             // Its length; the end is start + duration.
};
