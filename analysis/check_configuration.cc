// What a configuration report shows of one check.
#include "analysis/check_configuration.h"

#include <string>

#include "analysis/downtime.h"
#include "analysis/property_values.h"
#include "analysis/row_sink.h"
#include "analysis/row_texts.h"
#include "base/log.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

constexpr LabelledProperty kThresholds[] = {{"Alert when below", schema::kAlertIfBelow},
                                            {"Alert when above", schema::kAlertIfAbove},
                                            {"Warn when below", schema::kWarnIfBelow},
                                            {"Warn when above", schema::kWarnIfAbove}};
constexpr LabelledProperty kScoreKeeper[] = {{"Good score", schema::kGoodScore},
                                             {"Warn score", schema::kWarnScore},
                                             {"Bad score", schema::kAlertScore}};
constexpr LabelledProperty kPlotting[] = {{"Min value", schema::kPlotMin},
                                          {"Max value", schema::kPlotMax}};
constexpr LabelledProperty kCheckParameters[] = {{"Port", schema::kPort},
                                                 {"URL to check", schema::kHttpUrl},
                                                 {"Status pattern", schema::kHttpStatusRegex},
                                                 {"Content pattern", schema::kHttpContentRegex},
                                                 {"Host to lookup", schema::kDnsHost},
                                                 {"Should resolve to one of", schema::kDnsIp},
                                                 {"Execute VRFY command", schema::kSmtpExecuteVrfy},
                                                 {"User", schema::kUserProperty},
                                                 {"Password", schema::kCheckPassword},
                                                 {"Wait for close", schema::kConnClose},
                                                 {"Custom check", schema::kCustomType}};
constexpr LabelledProperty kOnReboot[] = {
    {"Automatic downtime", schema::kAutomaticDowntime},
    {"Automatic ScoreKeeper reset", schema::kAutomaticResetScores}};
constexpr LabelledProperty kLogCheckSettings[] = {
    {"Log entry separator", schema::kSeparatorRegex},
    {"Separator inclusion", schema::kSeparatorInclusion},
    {"Warn if silent for", schema::kSilenceWarn},
    {"Alert if silent for", schema::kSilenceAlert}};

template <size_t N>
bool anySet(const tql::patch_t& check, const LabelledProperty (&table)[N]) {
  for (const LabelledProperty& e : table) {
    if (isSet(check, e.property)) return true;
  }
  return false;
}

// A row for each property of `table` that is set, into `folder`.
template <size_t N>
void rowsIfSet(RowSink& rows, const tql::id_t& folder, const tql::patch_t& check,
               const LabelledProperty (&table)[N]) {
  for (const LabelledProperty& e : table)
    rows.propertyRowIfSet(folder, e.label, check, e.property, {});
}

// The sub-folder `name` with the rows of `table`, when any of them is set.
template <size_t N>
void subFolderIfAnySet(RowSink& rows, const tql::id_t& folder, const tql::patch_t& check,
                       const char* name, const LabelledProperty (&table)[N]) {
  if (!anySet(check, table)) return;
  rowsIfSet(rows, rows.folder(folder, 4, name, {}), check, table);
}

void writeForecast(RowSink& rows, const tql::id_t& folder, const tql::patch_t& check) {
  const auto enabled = tql::value_of<tql::property_boolean_t>(check, schema::kForecastEnabled);
  if (!enabled || !*enabled) {
    rows.row(folder, "Forecast enabled", "false", {});
    return;
  }
  const tql::id_t sub = rows.folder(folder, 4, "Forecast settings", {});
  rows.propertyRowIfSet(sub, "Warn on forecast", check, schema::kWarnOnForecast, {});
  if (const auto time = enumValue(check, schema::kForecastAlertTime)) {
    rows.row(sub, "Warn for how long in the future", forecastTimeText(*time), {});
  }
  if (const auto error = enumValue(check, schema::kForecastAlertEstError)) {
    rows.row(sub, "Warn only when estimated error is below", forecastErrorText(*error), {});
  }
}

void writeStateActions(RowSink& rows, const tql::id_t& folder, const tql::patch_t& check) {
  bool any = false;
  for (int32_t n = 0; n < 32 && !any; ++n) any = isSet(check, schema::kStateAction0 + n);
  if (!any) return;
  const tql::id_t sub = rows.folder(folder, 4, "State actions", {});
  for (int32_t n = 0; n < 32; ++n) {
    std::string label;
    try {
      tql::decode_string(check.property(schema::kStateLabel0 + n), label);
    } catch (const errors::tql&) {
      continue;  // A state without a label is not listed.
    }
    if (const auto action = enumValue(check, schema::kStateAction0 + n)) {
      rows.row(sub, label, stateActionText(*action), {});
    }
  }
}

}  // namespace

void writeConfiguration(RowSink& rows, ObjectSource& objects, const tql::patch_t& check,
                        const tql::id_t& folder, const tql::id_t& rootId, zone_t timeZone) {
  rows.propertyRowIfSet(folder, "Label", check, schema::kLabel, {});
  rows.propertyRowIfSet(folder, "Info URL", check, schema::kInfoUrl, {});
  rows.propertyRowIfSet(folder, "Check interval", check, schema::kFrequency, {});
  writeAlertGroupRows(rows, objects, folder, check, rootId);
  // Required: an absent alertStrategy raises errors::tql.
  const auto strategy =
      tql::value_of<tql::property_enum_t>(&check.property(schema::kAlertStrategy));
  const uint32_t* strategyValue = strategy ? &strategy->value : nullptr;
  const std::string strategyText = alertStrategyText(strategyValue);
  rows.propertyRow(folder, "Acknowledge alerts", check, schema::kAcknowledgeAlerts, false, "", {});
  rows.row(folder, "Alert strategy", strategyText, {});
  if (const auto period = enumValue(check, schema::kPeriod)) {
    rows.row(folder, "Accumulation period", accumulationPeriodText(*period), {});
  }
  rows.propertyRowIfSet(folder, "Is rolling", check, schema::kRolling, {});
  rows.propertyRowIfSet(folder, "Alert one shot", check, schema::kAlertOneShot, {});
  writeForecast(rows, folder, check);
  rowsIfSet(rows, folder, check, kThresholds);
  writeScheduledDowntime(rows, objects, folder, check.id, timeZone);
  if (strategyValue != nullptr && *strategyValue == 1) {
    const tql::id_t sub = rows.folder(folder, 4, "ScoreKeeper parameters", {});
    for (const LabelledProperty& e : kScoreKeeper) {
      rows.propertyRow(sub, e.label, check, e.property, false, "", {});
    }
  }
  subFolderIfAnySet(rows, folder, check, "Graph plotting", kPlotting);
  subFolderIfAnySet(rows, folder, check, "Check parameter", kCheckParameters);
  subFolderIfAnySet(rows, folder, check, "On reboot", kOnReboot);
  writeStateActions(rows, folder, check);
  subFolderIfAnySet(rows, folder, check, "LogCheck settings", kLogCheckSettings);
  writeLogCheckRules(rows, objects, check, folder);
  rows.propertyRowIfSet(folder, "", check, schema::kComment, {});
  if (log_tracing()) log("Done Analysing check", kLogTrace);
}

void analyseConfiguration(dbms::Database& db, const tql::patch_t& check, const tql::id_t& folder,
                          const tql::id_t& rootId, zone_t timeZone) {
  DatabaseRows rows(db);
  DatabaseObjects objects(db);
  writeConfiguration(rows, objects, check, folder, rootId, timeZone);
}
