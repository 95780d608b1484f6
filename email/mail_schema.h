// The class and property numbers of the stored objects that report mailing
// reads: the report, its instances and the send jobs below them.
#pragma once

#include <cstdint>

namespace mail_schema {

inline constexpr int32_t kDomain = 3;
inline constexpr int32_t kReport = 5;
inline constexpr int32_t kReportInstance = 38;
inline constexpr int32_t kReportSendTo = 62;

inline constexpr int32_t kName = 51;
// On a Report one string; on a ReportSendTo a list of strings.
inline constexpr int32_t kDestination = 1201;
// The instance's number among the report's generations.
inline constexpr int32_t kOrder = 2200;
inline constexpr int32_t kTimeZone = 3009;

// Flags of a plain select of one object.
inline constexpr int32_t kSelectOneFlags = 2;

}  // namespace mail_schema
