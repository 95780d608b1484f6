// Class and property numbers that the walk over a report's tree, the check
// selection and the result writers use, beyond those of schema.h (which
// this namespace takes in). The names are those of tql/catalogue_tables.cc;
// keep in step with it.
#pragma once

#include <cstdint>

#include "analysis/schema.h"

namespace walk {

using schema::kActive;
using schema::kAlertIfAbove;
using schema::kAlertIfBelow;
using schema::kAlertScore;
using schema::kCheck;
using schema::kCheckAccumulation;
using schema::kCheckGroup;
using schema::kComment;
using schema::kDate;
using schema::kDayPlanner;
using schema::kDestination;
using schema::kDomain;
using schema::kDuration;
using schema::kEvent;
using schema::kExpectedEvent;
using schema::kGoodScore;
using schema::kLongLabel;
using schema::kName;
using schema::kNode;
using schema::kNodeClass;
using schema::kNodeClasses;
using schema::kOrder;
using schema::kPlan;
using schema::kPlotMax;
using schema::kPlotMin;
using schema::kRangeMax;
using schema::kRangeMin;
using schema::kStartTime;
using schema::kStateLabel0;
using schema::kText;
using schema::kUnexpectedEvent;
using schema::kWarnIfAbove;
using schema::kWarnIfBelow;
using schema::kWarnScore;
using schema::kWeekPlanner;

// Classes.
inline constexpr int32_t kReport = 5;
inline constexpr int32_t kReportIssue = 7;
inline constexpr int32_t kReportInstance = 38;
inline constexpr int32_t kReportResultFolder = 39;
inline constexpr int32_t kReportResultRow = 40;
inline constexpr int32_t kReportResultGraph = 41;
inline constexpr int32_t kReportResultLog = 43;
inline constexpr int32_t kReportSelection = 47;
inline constexpr int32_t kReportCheckSelection = 48;
inline constexpr int32_t kReportText = 85;

// Properties.
inline constexpr int32_t kId = 0;
inline constexpr int32_t kSiblingName = 52;
inline constexpr int32_t kTreeLabel = 53;
inline constexpr int32_t kInheritsFrom = 57;
inline constexpr int32_t kIssueNode = 304;
inline constexpr int32_t kDataType = 313;
inline constexpr int32_t kProgress = 315;
inline constexpr int32_t kLastGenerated = 318;
inline constexpr int32_t kContains = 324;
inline constexpr int32_t kGenerated = 325;
inline constexpr int32_t kOrderTime = 328;
inline constexpr int32_t kAutoPublish = 329;
inline constexpr int32_t kIncludeConfig = 335;
inline constexpr int32_t kFolderType = 340;
inline constexpr int32_t kOriginNode = 341;
inline constexpr int32_t kType = 500;
inline constexpr int32_t kStateColors = 554;
inline constexpr int32_t kPublic = 1000;
inline constexpr int32_t kUnit = 2300;
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
