// Class and property numbers of the database schema that the analysis reads.
// The names are those of tql/catalogue_tables.cc; keep in step with it.
#pragma once

#include <cstdint>

namespace schema {

// Classes.
inline constexpr int32_t kCheck = 1;
inline constexpr int32_t kDomain = 3;
inline constexpr int32_t kNode = 4;
inline constexpr int32_t kUser = 8;
inline constexpr int32_t kAlertGroup = 11;
inline constexpr int32_t kAlertPath = 14;
inline constexpr int32_t kCheckGroup = 22;
inline constexpr int32_t kPlan = 33;
inline constexpr int32_t kDayPlanner = 34;
inline constexpr int32_t kWeekPlanner = 35;
inline constexpr int32_t kDatePlanner = 36;
inline constexpr int32_t kEvent = 37;
inline constexpr int32_t kLogCheckRuleComment = 42;
inline constexpr int32_t kLogCheckRule = 45;
inline constexpr int32_t kNodeClass = 49;
inline constexpr int32_t kCheckAccumulation = 57;
inline constexpr int32_t kExpectedEvent = 87;
inline constexpr int32_t kUnexpectedEvent = 88;

// Properties.
inline constexpr int32_t kName = 51;
inline constexpr int32_t kLongLabel = 54;
inline constexpr int32_t kCheckinFrequency = 200;
inline constexpr int32_t kAlertGroupProperty = 203;  // `alertGroup`
inline constexpr int32_t kCheckinScore = 207;
inline constexpr int32_t kMissedCheckinScore = 208;
inline constexpr int32_t kWarn = 209;
inline constexpr int32_t kWarnCeiling = 210;
inline constexpr int32_t kAlert = 211;
inline constexpr int32_t kAlertCeiling = 212;
inline constexpr int32_t kNodeClasses = 227;
inline constexpr int32_t kStartTime = 305;
inline constexpr int32_t kDuration = 306;
inline constexpr int32_t kPeriod = 307;
inline constexpr int32_t kDate = 320;
inline constexpr int32_t kPlotMin = 326;
inline constexpr int32_t kPlotMax = 327;
inline constexpr int32_t kForecastEnabled = 400;
inline constexpr int32_t kWarnOnForecast = 401;
inline constexpr int32_t kForecastAlertTime = 402;
inline constexpr int32_t kForecastAlertEstError = 403;
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
inline constexpr int32_t kRolling = 651;
inline constexpr int32_t kAlertOneShot = 652;
inline constexpr int32_t kDestination = 1201;
inline constexpr int32_t kMembers = 1300;
inline constexpr int32_t kText = 1700;
inline constexpr int32_t kLabel = 2100;
inline constexpr int32_t kOrder = 2200;
inline constexpr int32_t kStateAction0 = 2700;  // stateAction0 .. stateAction31 follow on.
inline constexpr int32_t kStateLabel0 = 2800;   // stateLabel0 .. stateLabel31 follow on.
inline constexpr int32_t kLogCheckRegex = 3101;
inline constexpr int32_t kLogCheckStatus = 3102;
inline constexpr int32_t kLogCheckLogDecision = 3103;

// The enumeration of stateActionN.
inline constexpr uint32_t kStateActionEnum = 65538;

}  // namespace schema
