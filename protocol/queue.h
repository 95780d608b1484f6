// queues::queue_t: the number of a process's queue. It lives with the fdio
// form because payload records below the event classes carry it too; the
// event classes (queues/) use this same type.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace queues {

enum queue_t : int32_t {
  none = -1,
  main = 0,
  schd = 1,
  dbms = 2,
  rmch = 3,
  skio = 4,
  alrm = 5,
  alrt = 6,
  snmp = 7,
  brdc = 8,
  bnch = 9,
  port = 10,
  keyg = 11,
  rept = 12,
  forc = 13,
  kngt = 14,
  nets = 15,
  grid = 16,
  ncup = 17,
  gmas = 18,
  gsat = 19,
  tsdb = 20,
  upln = 21,
  extra = 22,
};

// The number of real queues, 0 to 22.
inline constexpr int32_t kQueueCount = 23;

// The four-letter name ("main", "rept", ..., "extra", "none"); a value
// outside the table is its decimal text with "x" put in front until it is
// 4 characters long ("xx99", "1234", "-5" as "xx-5").
std::string queue_name(queue_t q);

// Prints the name.
void print_value(std::ostream& os, queue_t q, int indent);

}  // namespace queues
