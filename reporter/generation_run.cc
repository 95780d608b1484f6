// The stages of one generation around the analysis: the definition, the
// instance, the closing and the mail.
#include "reporter/generation_run.h"

#include <utility>

#include "analysis/generation_context.h"
#include "analysis/object_values.h"
#include "analysis/plan.h"
#include "base/log.h"
#include "dbms/report_incident.h"
#include "dbms/tql_operations.h"
#include "mailing/report_mailing.h"
#include "report/server_values.h"
#include "reporter/generation_values.h"
#include "reporter/report_period.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

using Properties = std::vector<tql::property_ptr>;

constexpr int32_t kIssueNodeOriginType = 37;
constexpr int32_t kDuplicateValue = 4;

void addUint(Properties& p, int32_t number, uint32_t value) {
  p.emplace_back(tql::make_property<tql::kind::kUint>(number, value));
}

void addDate(Properties& p, int32_t number, int64_t value) {
  p.emplace_back(tql::make_property<tql::kind::kDate>(number, value));
}

}  // namespace

GenerationRun::GenerationRun(dbms::Database& db, tql::id_t report_id, tql::version_t report_version,
                             TimeValue order_time, ReportFlags& flags)
    : db_(db),
      report_id_(report_id),
      report_version_(report_version),
      order_time_(order_time),
      started_(TimeValue::now()),
      flags_(flags),
      zone_(timeZoneValue(kEnvironmentZone)),
      mail_job_(db) {}

tql::id_t GenerationRun::run() {
  if (!prepare()) return {};
  order_ = nextOrder(*report_);
  incident(dbms::kIncidentProgress, "Generation of report number " + number() + " initiated.");
  if (!open()) return {};
  tree_ = reportTree(db_, *report_, selections_, issue_.kind);
  if (!tree_.pattern) {
    incident(dbms::kIncidentFailure, "Generation of report number " + number() +
                                         " aborted. Unable to find template content.");
    return {};
  }
  std::unique_ptr<tql::patch_t> tree =
      tql::select_one(db_, definition_->owner_domain, std::move(tree_.pattern), 0);
  first_sample_ = TimeValue::now().seconds;
  analysis_failed_ = false;
  analyseGuarded(tree.get());
  tree.reset();
  if (!close()) return {};
  if (analysis_failed_) {
    incident(dbms::kIncidentFailure, "Analysis of report number " + number() + " failed.");
    return {};
  }
  incident(dbms::kIncidentProgress, "Generation of report number " + number() + " done.");
  mail();
  log("Done generating report " + definition_->pathText() + ": " +
      stringOr(*report_, schema::kTreeLabel, ""));
  return instance_id_;
}

bool GenerationRun::prepare() {
  definition_ = fetchDefinition(db_, report_id_);
  if (!definition_) return false;
  report_ = definition_->report;
  if (report_->version != report_version_) {
    stale_ = true;
    return false;
  }
  log("Starting generation of report " + definition_->pathText() + ": " +
      stringOr(*report_, schema::kTreeLabel, ""));
  zone_ = report::stored::zone_of(*report_);
  Report::resolveIssue(*report_, order_time_.seconds, issue_, zone_);
  selectionsOf(*report_, selections_);
  if (issue_.hasPeriod) {
    const tql::patch_t* plan = firstPlan(*report_);
    if (plan != nullptr && log_tracing()) log("Got a plan", kLogTrace);
    intervals_ = reportIntervals(plan, issue_.start, issue_.duration);
  }
  readReportFlags(*report_, flags_);
  return true;
}

bool GenerationRun::open() {
  Properties p;
  p.emplace_back(tql::make_property<tql::kind::kObject>(
      schema::kIssueNode,
      tql::object_ref_t{definition_->owner_domain, tql::origin_t{{}, {}, kIssueNodeOriginType}}));
  p.emplace_back(tql::make_string_property(schema::kName, stringOr(*report_, schema::kName, "")));
  addDate(p, schema::kStartTime, issue_.start);
  addUint(p, schema::kDuration, static_cast<uint32_t>(issue_.duration));
  addDate(p, schema::kDate, started_.seconds);
  addDate(p, schema::kOrderTime, order_time_.seconds);
  addUint(p, schema::kProgress, 1);
  addUint(p, schema::kWorkerNode, 1);
  addUint(p, schema::kOrder, order_);
  try {
    instance_id_ =
        tql::create_object(db_, report_id_, schema::kReportInstance, std::move(p), 0).new_id;
  } catch (const errors::tql& e) {
    if (e.code() == kDuplicateValue) return false;
    throw;
  }
  Properties order;
  addUint(order, schema::kOrder, order_);
  tql::update_object(db_, report_id_, report_->version, std::move(order), 0);
  return true;
}

bool GenerationRun::close() {
  std::unique_ptr<tql::patch_t> instance =
      tql::get_object(db_, instance_id_, schema::kReportInstance);
  if (!instance) {
    log("Unable to get istance object");
    return false;
  }
  generated_ = TimeValue::now().seconds;
  Properties p;
  addUint(p, schema::kWorkerNode, 0);
  addUint(p, schema::kProgress, 100);
  addDate(p, schema::kGenerated, generated_);
  if (!analysis_failed_) {
    bool autoPublish = true;
    if (const tql::property_t* q = report_->find_set_property(schema::kAutoPublish)) {
      tql::decode_boolean(*q, autoPublish);
    }
    p.emplace_back(tql::make_boolean_property(schema::kPublic, autoPublish));
  }
  if (issue_.hasPeriod && issue_.start == 0) {
    const int64_t span = issue_.duration - first_sample_;
    if (span < 0) {
      log("Oddness: first sample at " + std::to_string(first_sample_) + ", start at " +
          std::to_string(issue_.start) + " and duration " + std::to_string(issue_.duration));
    } else {
      log("Updating report instance start time to " + std::to_string(first_sample_));
      addDate(p, schema::kStartTime, first_sample_);
      addUint(p, schema::kDuration, static_cast<uint32_t>(span));
    }
  }
  // The job goes in before the instance is finished: a crash before the
  // update leaves an unfinished instance (deleted with the job, the order
  // generated again), one after it a finished instance whose job is mailed.
  if (!analysis_failed_) {
    addresses_ = destinationAddresses(*report_);
    mail_job_.leave(instance_id_, addresses_);
  }
  tql::update_object(db_, instance_id_, instance->version, std::move(p), 0);
  std::unique_ptr<tql::patch_t> report = tql::get_object(db_, report_id_, schema::kReport);
  if (report) {
    Properties r;
    addDate(r, schema::kLastGenerated, generated_);
    addUint(r, schema::kProgress, 0);
    tql::update_object(db_, report_id_, report->version, std::move(r), 0);
  }
  return true;
}

void GenerationRun::incident(uint32_t severity, const std::string& text) const {
  dbms::report_incident(db_, report_id_, severity, text, TimeValue::now());
}

void GenerationRun::mail() {
  mail_report(db_, addresses_, instance_id_, report_id_);
  mail_job_.clear();
}
