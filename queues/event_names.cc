#include "queues/event_names.h"

namespace queues {

std::string event_name(int32_t type_index) {
  if (type_index == INVALID_HEAD) return "INVALID_HEAD";
  if (type_index == INVALID_TAIL) return "INVALID_TAIL";
  if (type_index >= kFirstEventType && type_index <= kLastEventType) {
    const char* name = detail::kEventNames[type_index - 1];
    if (name[0] != '\0') return name;
  }
  return "(event_t)" + std::to_string(type_index);
}

}  // namespace queues
