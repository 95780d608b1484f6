// IssueStats: the sums of one check, node or domain, carried upward.
#pragma once

#include <cstdint>
#include <string>

#include "tql/id.h"

struct IssueStats {
  // Seconds; see the analysis routines for what goes where. Sums of
  // damaged samples wrap rather than overflow.
  int64_t sum_ok_time = 0;
  int64_t sum_warn_time = 0;
  int64_t sum_alert_time = 0;
  int64_t sum_bad_time = 0;
  int64_t sum_unknown_time = 0;
  int64_t sum_total_time = 0;
  double worst = 100.0;         // The lowest availability below this level.
  tql::id_t worstFolder;        // The folder of that worst item.
  std::string worstName;        // Its label.
  tql::id_t explanationFolder;  // The "Availability explanation" folder; never merged.
  uint32_t checks = 0;          // Checks analysed below this level.

  // NaN when sum_total_time is 0, else (unknown + ok + warn) x 100 / total,
  // each sum converted to double first. Unknown time counts as available.
  double availability() const;

  // Adds the child's six sums and `checks`. When the child has checks and
  // a lower `worst`, takes its worst, worstFolder and worstName; a NaN
  // worst never replaces anything.
  void merge(const IssueStats& child);
};
