// The class, property and enumeration numbers of the database schema that
// this process uses, for every layer. The names are those of the catalogue
// (catalogue_tables.cc): a class `Check` is kCheck, a property `name` is
// kName; where a class and a property share a name, or the name says too
// little, the comment gives the catalogue's name in backquotes.
// schema_test.cc checks every number here against the catalogue.
//
// Order: classes, properties and enumerations, each by number; then the
// values of `folderType`.
#pragma once

#include <cstdint>

namespace schema {

// Classes.
inline constexpr int32_t kCheck = 1;
inline constexpr int32_t kDomain = 3;
inline constexpr int32_t kNode = 4;
inline constexpr int32_t kReport = 5;
inline constexpr int32_t kReportIssue = 7;
inline constexpr int32_t kUser = 8;
inline constexpr int32_t kAlertGroup = 11;
inline constexpr int32_t kRootClass = 13;  // `.`: in a pattern it matches every class.
inline constexpr int32_t kAlertPath = 14;
inline constexpr int32_t kClusterInfo = 15;
inline constexpr int32_t kCheckGroup = 22;
inline constexpr int32_t kPlan = 33;
inline constexpr int32_t kDayPlanner = 34;
inline constexpr int32_t kWeekPlanner = 35;
inline constexpr int32_t kDatePlanner = 36;
inline constexpr int32_t kEvent = 37;
inline constexpr int32_t kReportInstance = 38;
inline constexpr int32_t kReportResultFolder = 39;
inline constexpr int32_t kReportResultRow = 40;
inline constexpr int32_t kReportResultGraph = 41;
inline constexpr int32_t kLogCheckRuleComment = 42;
inline constexpr int32_t kReportResultLog = 43;
inline constexpr int32_t kLogCheckRule = 45;
inline constexpr int32_t kReportSelection = 47;
inline constexpr int32_t kReportCheckSelection = 48;
inline constexpr int32_t kNodeClass = 49;
inline constexpr int32_t kCheckAccumulation = 57;
inline constexpr int32_t kReportSendTo = 62;
inline constexpr int32_t kReportOrder = 63;
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
inline constexpr int32_t kCheckinFrequency = 200;
inline constexpr int32_t kAlertGroupProperty = 203;  // `alertGroup`
inline constexpr int32_t kCheckinScore = 207;
inline constexpr int32_t kMissedCheckinScore = 208;
inline constexpr int32_t kWarn = 209;
inline constexpr int32_t kWarnCeiling = 210;
inline constexpr int32_t kAlert = 211;
inline constexpr int32_t kAlertCeiling = 212;
inline constexpr int32_t kNodeClasses = 227;
inline constexpr int32_t kIssueNode = 304;
inline constexpr int32_t kStartTime = 305;
inline constexpr int32_t kDuration = 306;
inline constexpr int32_t kPeriod = 307;
inline constexpr int32_t kDataType = 313;
inline constexpr int32_t kProgress = 315;
inline constexpr int32_t kLastGenerated = 318;
inline constexpr int32_t kTime = 319;
inline constexpr int32_t kDate = 320;
inline constexpr int32_t kMaxInstances = 322;
inline constexpr int32_t kContains = 324;
inline constexpr int32_t kGenerated = 325;
inline constexpr int32_t kPlotMin = 326;
inline constexpr int32_t kPlotMax = 327;
inline constexpr int32_t kOrderTime = 328;
inline constexpr int32_t kAutoPublish = 329;
inline constexpr int32_t kFormSummary = 331;
inline constexpr int32_t kFormGraph = 332;
inline constexpr int32_t kIncludeConfig = 335;
inline constexpr int32_t kHideSectionLevel = 337;
inline constexpr int32_t kHideSectionThreshold = 338;
inline constexpr int32_t kFolderType = 340;
inline constexpr int32_t kOriginNode = 341;
inline constexpr int32_t kForecastEnabled = 400;
inline constexpr int32_t kWarnOnForecast = 401;
inline constexpr int32_t kForecastAlertTime = 402;
inline constexpr int32_t kForecastAlertEstError = 403;
inline constexpr int32_t kType = 500;  // A Report's kind; a ReportText's place.
inline constexpr int32_t kFrequency = 501;
inline constexpr int32_t kActive = 502;
inline constexpr int32_t kAlertStrategy = 503;
inline constexpr int32_t kGoodScore = 504;
inline constexpr int32_t kWarnScore = 505;
inline constexpr int32_t kAlertScore = 506;
inline constexpr int32_t kRemoteType = 507;
inline constexpr int32_t kPort = 508;
inline constexpr int32_t kWarnIfAbove = 510;
inline constexpr int32_t kAlertIfAbove = 511;
inline constexpr int32_t kInfoUrl = 512;
inline constexpr int32_t kWarnIfBelow = 515;
inline constexpr int32_t kAlertIfBelow = 516;
inline constexpr int32_t kUserProperty = 517;  // `user`
inline constexpr int32_t kDnsHost = 518;
inline constexpr int32_t kDnsIp = 519;
inline constexpr int32_t kAgentId = 520;
inline constexpr int32_t kComment = 524;
inline constexpr int32_t kCustomType = 532;
inline constexpr int32_t kConnClose = 533;
inline constexpr int32_t kHttpUrl = 534;
inline constexpr int32_t kCheckPassword = 535;
inline constexpr int32_t kAcknowledgeAlerts = 536;
inline constexpr int32_t kSeparatorRegex = 539;
inline constexpr int32_t kSeparatorInclusion = 540;
inline constexpr int32_t kSmtpExecuteVrfy = 541;
inline constexpr int32_t kHttpStatusRegex = 542;
inline constexpr int32_t kHttpContentRegex = 543;
inline constexpr int32_t kAutomaticDowntime = 544;
inline constexpr int32_t kAutomaticResetScores = 545;
inline constexpr int32_t kSilenceWarn = 546;
inline constexpr int32_t kSilenceAlert = 547;
inline constexpr int32_t kRangeMin = 548;
inline constexpr int32_t kRangeMax = 549;
inline constexpr int32_t kWarnIfAbovePct = 550;
inline constexpr int32_t kAlertIfAbovePct = 551;
inline constexpr int32_t kWarnIfBelowPct = 552;
inline constexpr int32_t kAlertIfBelowPct = 553;
inline constexpr int32_t kStateColors = 554;
inline constexpr int32_t kRolling = 651;
inline constexpr int32_t kAlertOneShot = 652;
inline constexpr int32_t kPublic = 1000;
inline constexpr int32_t kDestination = 1201;  // On a Report one string; on a ReportSendTo a list.
inline constexpr int32_t kMembers = 1300;
inline constexpr int32_t kText = 1700;
inline constexpr int32_t kReportGenerator = 1906;
inline constexpr int32_t kLabel = 2100;
inline constexpr int32_t kOrder = 2200;
inline constexpr int32_t kUnit = 2300;
inline constexpr int32_t kTsdbIndex = 2600;     // An object's measured series.
inline constexpr int32_t kTsdbIncident = 2601;  // Its incident log.
inline constexpr int32_t kStateAction0 = 2700;  // stateAction0 .. stateAction31 follow on.
inline constexpr int32_t kStateLabel0 = 2800;   // stateLabel0 .. stateLabel31 follow on.
inline constexpr int32_t kGraphShowMinMax = 3002;
inline constexpr int32_t kGraphShowNoResponse = 3003;
inline constexpr int32_t kGraphAutoScale = 3004;
inline constexpr int32_t kGraphTabularUptime = 3006;
inline constexpr int32_t kGraphTabularEnum = 3007;
inline constexpr int32_t kTimeZone = 3009;
inline constexpr int32_t kPreferredUnit = 3010;
inline constexpr int32_t kPreferredBinary = 3011;
inline constexpr int32_t kLogCheckRegex = 3101;
inline constexpr int32_t kLogCheckStatus = 3102;
inline constexpr int32_t kLogCheckLogDecision = 3103;
inline constexpr int32_t kWorkerNode = 3309;
inline constexpr int32_t kAutoPromote = 3552;

// Enumerations: the type number that an enumeration property carries, with
// the property it belongs to.
inline constexpr uint32_t kStateActionEnum = 0x10002;     // `stateAction0` .. `stateAction31`
inline constexpr uint32_t kPeriodEnum = 0x1000a;          // `period` of a Report
inline constexpr uint32_t kFolderTypeEnum = 0x10015;      // `folderType`
inline constexpr uint32_t kReportTypeEnum = 0x1001e;      // `type` of a Report
inline constexpr uint32_t kReportTextTypeEnum = 0x10024;  // `type` of a ReportText

// Folder types: the values of `folderType`.
inline constexpr uint32_t kFolderExplanation = 0;
inline constexpr uint32_t kFolderNode = 1;
inline constexpr uint32_t kFolderDomain = 2;
inline constexpr uint32_t kFolderCheck = 3;
inline constexpr uint32_t kFolderSubSection = 4;  // A section inside one of the others.

}  // namespace schema
