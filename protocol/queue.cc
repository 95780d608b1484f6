#include "protocol/queue.h"

namespace queues {

std::string queue_name(queue_t q) {
  static const char* const kNames[kQueueCount] = {"main", "schd", "dbms", "rmch", "skio", "alrm",
                                                  "alrt", "snmp", "brdc", "bnch", "port", "keyg",
                                                  "rept", "forc", "kngt", "nets", "grid", "ncup",
                                                  "gmas", "gsat", "tsdb", "upln", "extra"};
  if (q == none) return "none";
  if (q >= 0 && q < kQueueCount) return kNames[q];
  std::string text = std::to_string(static_cast<int32_t>(q));
  while (text.size() < 4) text.insert(text.begin(), 'x');
  return text;
}

void print_value(std::ostream& os, queue_t q, int) { os << queue_name(q); }

}  // namespace queues
