// The few class and property numbers of the schema that the stand-in
// database itself has rules for (see README.md).
#pragma once

#include <cstdint>

namespace host {

inline constexpr int32_t kDomainClass = 3;
inline constexpr int32_t kAnyClass = 13;  // "." in a pattern: matches every class.
inline constexpr int32_t kClusterInfoClass = 15;
inline constexpr int32_t kPlanClass = 33;
inline constexpr int32_t kReportInstanceClass = 38;

inline constexpr int32_t kIdProperty = 0;
inline constexpr int32_t kNameProperty = 51;
inline constexpr int32_t kSiblingNameProperty = 52;
inline constexpr int32_t kProgressProperty = 315;
inline constexpr int32_t kOrderProperty = 2200;

}  // namespace host
