// Names of event types, for logs and the printed form of events.
#pragma once

#include <cstdint>
#include <string>

#include "queues/event_type.h"

namespace queues {

inline constexpr int32_t kFirstEventType = 1;
inline constexpr int32_t kLastEventType = 195;

// The type's name ("TQL_SELECT"); 0 is "INVALID_HEAD", 196 "INVALID_TAIL",
// and any other number without a name, the unassigned 69 to 71 included,
// "(event_t)" and the number.
std::string event_name(int32_t type_index);

namespace detail {
extern const char* const kEventNames[kLastEventType];
}

}  // namespace queues
