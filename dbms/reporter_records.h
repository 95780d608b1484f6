// Payload records of this process's own events (namespace reporter).
#pragma once

#include <cstdint>

#include "tql/id.h"

namespace reporter {

// Event 177 SCHEDULED_REPORT_GENERATION: generate the `Report` `id`, if it
// still has `version`, for the time `time` (seconds since the epoch).
struct Scheduled_Report_Generation_Data {
  tql::id_t id;
  tql::version_t version;
  int64_t time = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("version", s.version);
    v("time", s.time);
  }
  bool operator==(const Scheduled_Report_Generation_Data&) const = default;
};

}  // namespace reporter
