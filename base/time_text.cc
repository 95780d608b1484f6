#include "base/time_text.h"

#include <cstdio>

#include "base/fatal.h"

std::string time2str(int64_t t, zone_t zone) {
  TAVREL_ASSERT(t >= 0, "time2str(): Parameter less than 0");
  const tm_t tm = local(t, zone);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%i-%02i-%02i %02i:%02i:%02i", tm.year + 1900, tm.mon + 1,
                tm.mday, tm.hour, tm.min, tm.sec);
  return buffer;
}

std::string date2str(int64_t t, zone_t zone) {
  const tm_t tm = local(t, zone);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%i-%i-%i", tm.year + 1900, tm.mon + 1, tm.mday);
  return buffer;
}

std::string clock2str(int64_t seconds) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%02lld:%02lld:%02lld",
                static_cast<long long>(seconds / 3600), static_cast<long long>(seconds / 60 % 60),
                static_cast<long long>(seconds % 60));
  return buffer;
}

namespace {

constexpr const char* kPeriodTexts[] = {"1 year", "6 months", "3 months", "1 month",
                                        "1 week", "1 day",    "Infinite", "1 hour"};

}  // namespace

bool isPeriodValue(int64_t v) { return v >= 0 && v < 8; }

std::string period2str(int v) {
  TAVREL_ASSERT(isPeriodValue(v), "Unknown value (" + std::to_string(v) + ") in period2str");
  return kPeriodTexts[v];
}
