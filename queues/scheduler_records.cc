#include "queues/scheduler_records.h"

namespace scheduler {

void print_value(std::ostream& os, const point_in_time_t& t, int) {
  os << t.format("%a %b %d %H:%M:%S %Y", true);
}

}  // namespace scheduler
