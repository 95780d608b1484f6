#include "tools/zone_arg.h"

#include <cstdint>

#include "base/error.h"

namespace tools {

zone_t zone_arg(Args& args) {
  const auto text = args.option("--zone");
  if (!text) return timeZoneValue(kEnvironmentZone);
  const int64_t v = Args::to_int(*text);
  if (v < INT32_MIN || v > INT32_MAX) throw error::EParseError("zone out of range: " + *text);
  return timeZoneValue(static_cast<int32_t>(v));
}

}  // namespace tools
