#include "analysis/plan_values.h"

#include <cmath>
#include <limits>

#include "tql/decode.h"
#include "tql/schema.h"

int32_t clampToInt32(double v) {
  if (std::isnan(v)) return 0;
  if (v <= std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
  if (v >= std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(v);
}

namespace {

int32_t secondsProperty(const tql::patch_t& object, int32_t number) {
  double v = 0;
  tql::decode_scalar(object.property(number), v);
  return clampToInt32(v);
}

}  // namespace

bool eventActive(const tql::patch_t& event) {
  const tql::property_t* p = event.find_property(schema::kActive);
  if (p == nullptr || p->is_null) return false;
  bool active = false;
  tql::decode_boolean(*p, active);
  return active;
}

int32_t eventStart(const tql::patch_t& event) { return secondsProperty(event, schema::kStartTime); }

int32_t eventDuration(const tql::patch_t& event) {
  return secondsProperty(event, schema::kDuration);
}

std::string plannerName(const tql::patch_t& planner) {
  std::string name;
  const tql::property_t* p = planner.find_property(schema::kName);
  if (p != nullptr && !p->is_null) tql::decode_string(*p, name);
  return name;
}

int32_t plannerDate(const tql::patch_t& planner) {
  int64_t date = 0;
  tql::decode_date(planner.property(schema::kDate), date);
  return clampToInt32(static_cast<double>(date));
}
