// The process logger. Messages go to the parent as events once the event
// queue has installed itself as the sink (queues/ does that through
// set_log_sink); before that, and after the sink is removed, they go to
// standard error as "Log: " + message.
//
// Only the main thread logs; the values below have no lock.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

// Log levels in use.
inline constexpr uint32_t kLogAlways = 0;
inline constexpr uint32_t kLogTrace = 0x1000;

// Sends `msg` at `log_type`. The caller tests the mask for trace messages,
// so that their text isn't built for nothing; log() itself does not. Never
// raises for a reason of its own; a sink may raise (a gone parent).
void log(const std::string& msg, uint32_t log_type = kLogAlways);

// Where messages go; an empty function means standard error.
using LogSink = std::function<void(const std::string& msg, uint32_t log_type)>;
void set_log_sink(LogSink sink);

void set_log_mask(uint32_t mask);
uint32_t log_mask();
// True when trace messages are wanted (bit 0x1000 of the mask).
inline bool log_tracing() { return (log_mask() & kLogTrace) != 0; }

// The stop text of the server configuration. When it is not empty, each
// message is searched for it before anything else is done. What a hit does
// is ours to choose: it writes "Log stop text matched: " and the message to
// standard error, so that an operator watching the console sees it, and
// otherwise changes nothing.
void set_stop_text(const std::string& text);

// One entry in the system log under the ident "Tavrel", at level error.
// Safe to call from a signal handler: it writes one datagram to /dev/log
// with no locks and no allocation, and does nothing when that fails.
void log_system_event(const char* text);
