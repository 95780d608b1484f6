// The raw catalogue tables behind catalogue.h; only catalogue.cc reads them.
#pragma once

#include <cstdint>

namespace tql::detail {

inline constexpr int32_t kClassCount = 95;
extern const char* const kClassNames[kClassCount];

struct PropertyEntry {
  int32_t number;
  const char* name;
};
extern const PropertyEntry kPropertyNames[];

}  // namespace tql::detail
