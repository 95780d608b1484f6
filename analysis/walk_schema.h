// Class and property numbers that the walk over a report's tree, the check
// selection and the result writers use. The names are those of
// tql/catalogue_tables.cc; keep in step with it.
#pragma once

#include <cstdint>

namespace walk {

// Classes.
inline constexpr int32_t kCheck = 1;
inline constexpr int32_t kDomain = 3;
inline constexpr int32_t kNode = 4;
inline constexpr int32_t kReport = 5;
inline constexpr int32_t kReportIssue = 7;
inline constexpr int32_t kCheckGroup = 22;
inline constexpr int32_t kPlan = 33;
inline constexpr int32_t kDayPlanner = 34;
inline constexpr int32_t kWeekPlanner = 35;
inline constexpr int32_t kEvent = 37;
inline constexpr int32_t kReportInstance = 38;
inline constexpr int32_t kReportResultFolder = 39;
inline constexpr int32_t kReportResultRow = 40;
inline constexpr int32_t kReportResultGraph = 41;
inline constexpr int32_t kReportResultLog = 43;
inline constexpr int32_t kReportSelection = 47;
inline constexpr int32_t kReportCheckSelection = 48;
inline constexpr int32_t kNodeClass = 49;
inline constexpr int32_t kCheckAccumulation = 57;
inline constexpr int32_t kReportText = 85;
inline constexpr int32_t kExpectedEvent = 87;
inline constexpr int32_t kUnexpectedEvent = 88;

// Properties.
inline constexpr int32_t kId = 0;
inline constexpr int32_t kName = 51;
inline constexpr int32_t kSiblingName = 52;
inline constexpr int32_t kTreeLabel = 53;
inline constexpr int32_t kLongLabel = 54;
inline constexpr int32_t kInheritsFrom = 57;
inline constexpr int32_t kNodeClasses = 227;
inline constexpr int32_t kIssueNode = 304;
inline constexpr int32_t kStartTime = 305;
inline constexpr int32_t kDuration = 306;
inline constexpr int32_t kDataType = 313;
inline constexpr int32_t kProgress = 315;
inline constexpr int32_t kLastGenerated = 318;
inline constexpr int32_t kDate = 320;
inline constexpr int32_t kContains = 324;
inline constexpr int32_t kGenerated = 325;
inline constexpr int32_t kPlotMin = 326;
inline constexpr int32_t kPlotMax = 327;
inline constexpr int32_t kOrderTime = 328;
inline constexpr int32_t kAutoPublish = 329;
inline constexpr int32_t kIncludeConfig = 335;
inline constexpr int32_t kFolderType = 340;
inline constexpr int32_t kOriginNode = 341;
inline constexpr int32_t kType = 500;
inline constexpr int32_t kActive = 502;
inline constexpr int32_t kGoodScore = 504;
inline constexpr int32_t kWarnScore = 505;
inline constexpr int32_t kAlertScore = 506;
inline constexpr int32_t kWarnIfAbove = 510;
inline constexpr int32_t kAlertIfAbove = 511;
inline constexpr int32_t kWarnIfBelow = 515;
inline constexpr int32_t kAlertIfBelow = 516;
inline constexpr int32_t kComment = 524;
inline constexpr int32_t kRangeMin = 548;
inline constexpr int32_t kRangeMax = 549;
inline constexpr int32_t kStateColors = 554;
inline constexpr int32_t kPublic = 1000;
inline constexpr int32_t kDestination = 1201;
inline constexpr int32_t kText = 1700;
inline constexpr int32_t kOrder = 2200;
inline constexpr int32_t kUnit = 2300;
inline constexpr int32_t kStateLabel0 = 2800;  // stateLabel0 .. stateLabel31 follow on.
inline constexpr int32_t kGraphShowMinMax = 3002;
inline constexpr int32_t kGraphShowNoResponse = 3003;
inline constexpr int32_t kGraphAutoScale = 3004;
inline constexpr int32_t kGraphTabularUptime = 3006;
inline constexpr int32_t kGraphTabularEnum = 3007;
inline constexpr int32_t kTimeZone = 3009;
inline constexpr int32_t kPreferredUnit = 3010;
inline constexpr int32_t kPreferredBinary = 3011;
inline constexpr int32_t kWorkerNode = 3309;
inline constexpr int32_t kAutoPromote = 3552;

// Enumerations.
inline constexpr uint32_t kFolderTypeEnum = 65557;
inline constexpr uint32_t kReportTextTypeEnum = 0x10024;

// Folder types.
inline constexpr uint32_t kExplanationFolder = 0;
inline constexpr uint32_t kNodeFolder = 1;
inline constexpr uint32_t kDomainFolder = 2;
inline constexpr uint32_t kCheckFolder = 3;
inline constexpr uint32_t kSubSection = 4;

}  // namespace walk
