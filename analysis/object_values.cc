#include "analysis/object_values.h"

#include "tql/decode.h"

std::string stringOr(const tql::patch_t& object, int32_t number, const std::string& fallback) {
  const tql::property_t* p = object.find_set_property(number);
  if (p == nullptr) return fallback;
  std::string out;
  tql::decode_string(*p, out);
  return out;
}

double scalarOr(const tql::patch_t& object, int32_t number, double fallback) {
  const tql::property_t* p = object.find_set_property(number);
  if (p == nullptr) return fallback;
  double out = fallback;
  tql::decode_scalar(*p, out);
  return out;
}

void readFlag(const tql::patch_t& object, int32_t number, bool& value) {
  const tql::property_t* p = object.find_property(number);
  if (p != nullptr) tql::decode_boolean(*p, value);
}
