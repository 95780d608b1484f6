// ResolvedIssue: what one generation makes of its Report object (filled by
// Report::resolveIssue in reporter/), read by the walk.
#pragma once

#include <cstdint>

struct ResolvedIssue {
  uint32_t kind = 0;                // `type`: 1 availability ... 5 configuration.
  bool wantGraph = true;            // `formGraph`
  bool wantSummary = true;          // `formSummary`
  bool wantIncidents = true;        // `goodScore` or `warnScore` or `alertScore` or `includeConfig`
  bool hasPeriod = false;           // The Report has a `period` property at all.
  uint32_t hideLevel = 0xFFFFFFFF;  // `hideSectionLevel`
  double hideThreshold = 0.0;       // `hideSectionThreshold`
  int64_t start = 0;                // The period's start; 0 stands for the start of monitoring.
  int64_t duration = 0;             // Its length; the end is start + duration.
};
