// ReportSingleRawIssue: one check's folder, analysis, rows and chart.
#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/check_analysis.h"
#include "analysis/check_configuration.h"
#include "analysis/check_log.h"
#include "analysis/check_series.h"
#include "analysis/generation_context.h"
#include "analysis/object_values.h"
#include "analysis/report_issue.h"
#include "analysis/result_graph.h"
#include "analysis/result_objects.h"
#include "analysis/summary_rows.h"
#include "analysis/walk_trace.h"
#include "tql/decode.h"
#include "tql/schema.h"

namespace {

constexpr int32_t kChartPoints = 438;

bool hasSummaryRows(int32_t dataType) {
  return dataType == tsdb::kUptime || dataType == tsdb::kEnum || dataType == tsdb::kContinuous ||
         dataType == tsdb::kAccumulation;
}

// A plot bound: the check's own, else (when below 0 and the report doesn't
// scale automatically) the check's range.
double plotBound(const tql::patch_t& check, int32_t plot, int32_t range, bool autoScale) {
  double bound = scalarOr(check, plot, -1.0);
  if (bound < 0.0 && !autoScale) bound = scalarOr(check, range, bound);
  return bound;
}

}  // namespace

ReportSingleRawIssue::ReportSingleRawIssue(const tql::patch_t& object,
                                           const GenerationContext& context, uint32_t depth)
    : ReportIssue(context, depth),
      object_(object),
      warnAbove_(kNaN),
      warnBelow_(kNaN),
      alertAbove_(kNaN),
      alertBelow_(kNaN),
      rangeMin_(kNaN),
      rangeMax_(kNaN) {}

void ReportSingleRawIssue::analyse(const tql::id_t& parentFolder, const IntervalSet& intervals,
                                   IssueStats& parentStats, int64_t& firstSample, zone_t timeZone) {
  traceId("Analysing checks for check ", object_.id);
  stats_.explanationFolder = parentStats.explanationFolder;
  label_ = stringOr(object_, schema::kLongLabel, "<no name>");
  const tql::id_t folder =
      addFolder(context_->db, parentFolder, schema::kFolderCheck, label_, object_.id);
  if (issue_->kind == ReportKind::kConfiguration) {
    analyseConfiguration(context_->db, object_, folder, context_->treeRoot, timeZone);
    status = 0;
    return;
  }
  analyseData(folder, intervals, parentStats, firstSample, timeZone);
}

void ReportSingleRawIssue::analyseData(const tql::id_t& folder, const IntervalSet& intervals,
                                       IssueStats& parentStats, int64_t& firstSample,
                                       zone_t timeZone) {
  const int64_t end = issue_->start + issue_->duration;
  dbms::Return_TSDB_Get_Data_Data reply =
      fetchSeries(context_->db, object_.id, schema::kTsdbIndex, true, issue_->start, end, 0);
  if (reply.data.empty()) {
    if (log_tracing()) log("No statistics data for check. Ignoring check.", kLogTrace);
    addRow(context_->db, folder, "",
           "Notice: statistics graph is missing, since no data for analysis were available.", {});
    return;
  }
  const int32_t dataType = reply.data_type;
  unit_.clear();
  if (const tql::property_t* p = object_.find_set_property(schema::kUnit))
    tql::decode_blob(*p, unit_);
  rangeMin_ = scalarOr(object_, schema::kRangeMin, kNaN);
  rangeMax_ = scalarOr(object_, schema::kRangeMax, kNaN);
  if (issue_->wantSummary && dataType != tsdb::kIncidentLog) {
    addRow(context_->db, folder, "",
           (issue_->start == 0 ? "Statistics from " : "Statistics during period ") +
               periodText(*issue_, timeZone),
           {});
  }
  const int64_t lastFirst = runIntervals(dataType, reply.data, intervals, firstSample);
  reply.data.clear();  // Only one check's data is held at a time.
  if (hasSummaryRows(dataType)) {
    addSummaryRows(context_->db, *issue_, folder, stats_);
  } else if (dataType != tsdb::kIncidentLog) {
    log("Cannot output datatype " + std::to_string(dataType));
  }
  stats_.worst = stats_.availability();
  stats_.worstFolder = folder;
  stats_.worstName = label_;
  stats_.checks = 1;
  if (dataType != tsdb::kIncidentLog) parentStats.merge(stats_);
  if (issue_->kind == ReportKind::kAvailability && !issue_->wantGraph) {
    status = 0;
    return;
  }
  storeSeries(folder, dataType, lastFirst, timeZone);
  hideIfWanted(folder, stats_.availability());
  status = 0;
}

int64_t ReportSingleRawIssue::runIntervals(int32_t dataType,
                                           const std::vector<tsdb::interval_ptr>& samples,
                                           const IntervalSet& intervals, int64_t& firstSample) {
  CheckAnalysis analysis(object_, issue_->start == 0, stats_);
  std::vector<ContinuousSample*> continuous;
  std::vector<EnumSample*> enums;
  if (dataType == tsdb::kEnum) {
    enums = castSamples<EnumSample>(samples);
  } else if (hasSummaryRows(dataType)) {
    continuous = castSamples<ContinuousSample>(samples);
  }
  int64_t first = 0;
  for (const Interval& interval : intervals) {
    switch (dataType) {
      case tsdb::kUptime:
        first = analysis.analyseUptime(continuous, interval);
        break;
      case tsdb::kEnum:
        first = analysis.analyseEnum(enums, interval);
        break;
      case tsdb::kIncidentLog:
        first = analyseIncidents(samples, interval);
        break;
      case tsdb::kContinuous:
        first = analysis.analyseContinuous(continuous, interval);
        break;
      case tsdb::kAccumulation:
        first = analysis.analyseAccumulation(continuous, interval);
        break;
      default:
        log("Cannot analyse datatype " + std::to_string(dataType));
        first = 0;
    }
    firstSample = std::min(firstSample, first);
  }
  const Thresholds& t = analysis.thresholds();
  warnAbove_ = t.warnAbove;
  warnBelow_ = t.warnBelow;
  alertAbove_ = t.alertAbove;
  alertBelow_ = t.alertBelow;
  return first;
}

void ReportSingleRawIssue::storeSeries(const tql::id_t& folder, int32_t dataType, int64_t lastFirst,
                                       zone_t timeZone) {
  const int64_t fetchStart = issue_->start != 0 ? issue_->start : lastFirst;
  if (dataType == tsdb::kIncidentLog) {
    storeCheckLog(context_->db, *issue_, folder, object_.id, fetchStart, timeZone);
    return;
  }
  const ReportFlags& flags = context_->flags;
  GraphSettings settings;
  settings.dataType = dataType;
  settings.unit = unit_;
  settings.alertAbove = alertAbove_;
  settings.warnAbove = warnAbove_;
  settings.alertBelow = alertBelow_;
  settings.warnBelow = warnBelow_;
  settings.showMinMax = flags.graphShowMinMax;
  settings.showNoResponse = flags.graphShowNoResponse;
  settings.plotMin = plotBound(object_, schema::kPlotMin, schema::kRangeMin, flags.graphAutoScale);
  settings.plotMax = plotBound(object_, schema::kPlotMax, schema::kRangeMax, flags.graphAutoScale);
  settings.tabular = dataType == tsdb::kEnum ? flags.graphTabularEnum : flags.graphTabularUptime;
  const tql::id_t graph = addGraph(context_->db, folder, "Statistics", settings, object_);
  dbms::Return_TSDB_Get_Data_Data chart =
      fetchSeries(context_->db, object_.id, schema::kTsdbIndex, false, fetchStart,
                  issue_->start + issue_->duration, kChartPoints);
  // A series that vanished between the two fetches leaves the graph empty.
  if (!chart.data.empty()) {
    putSeries(context_->db, graph, schema::kTsdbIndex, chart.data_type, std::move(chart.data));
  }
}
