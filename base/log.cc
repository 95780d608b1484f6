#include "base/log.h"

#include <cstdio>

namespace {

struct LoggerState {
  LogSink sink;
  uint32_t mask = 0;
  std::string stop_text;
};

LoggerState& state() {
  static LoggerState s;
  return s;
}

}  // namespace

void log(const std::string& msg, uint32_t log_type) {
  LoggerState& s = state();
  if (!s.stop_text.empty() && msg.find(s.stop_text) != std::string::npos) {
    std::fprintf(stderr, "Log stop text matched: %s\n", msg.c_str());
  }
  if (s.sink) {
    s.sink(msg, log_type);
    return;
  }
  std::fprintf(stderr, "Log: %s\n", msg.c_str());
  std::fflush(stderr);
}

void set_log_sink(LogSink sink) { state().sink = std::move(sink); }
void set_log_mask(uint32_t mask) { state().mask = mask; }
uint32_t log_mask() { return state().mask; }
void set_stop_text(const std::string& text) { state().stop_text = text; }
