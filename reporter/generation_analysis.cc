// The analysis stage of a generation: texts, progress and the walk from the
// root of the selected tree, guarded as a whole.
#include "analysis/generation_context.h"
#include "analysis/issue_stats.h"
#include "analysis/object_values.h"
#include "analysis/report_issue.h"
#include "analysis/result_objects.h"
#include "base/error.h"
#include "base/fatal.h"
#include "base/log.h"
#include "dbms/tql_operations.h"
#include "reporter/generation_run.h"
#include "reporter/report_progress.h"
#include "tql/schema.h"

namespace {

// Sets `progress` on one object with the version just fetched.
void writeProgress(dbms::Database& db, const tql::id_t& id, int32_t classNumber, uint32_t value) {
  std::unique_ptr<tql::patch_t> object = tql::get_object(db, id, classNumber);
  if (!object) return;
  std::vector<tql::property_ptr> p;
  p.emplace_back(tql::make_property<tql::kind::kUint>(schema::kProgress, value));
  tql::update_object(db, id, object->version, std::move(p), 0);
}

void addTextOf(dbms::Database& db, const tql::id_t& instance, const tql::patch_t* text) {
  if (text != nullptr) addText(db, instance, stringOr(*text, schema::kComment, ""));
}

}  // namespace

void GenerationRun::analyseGuarded(const tql::patch_t* tree) {
  if (tree == nullptr) return;  // Nothing selected: an empty report.
  try {
    analyse(*tree);
  } catch (const error::Exception& e) {
    log("Analysis failed: " + e.text());
    analysis_failed_ = true;
  }
}

void GenerationRun::analyse(const tql::patch_t& tree) {
  addTextOf(db_, instance_id_, definition_->opening_text);
  TAVREL_ASSERT(tree.class_ == schema::kDomain,
                "Trying to start report generation from object different that CLASS_Domain");
  ReportProgress progress(report_id_, instance_id_, countNodes(tree),
                          [this](const tql::id_t& id, int32_t classNumber, uint32_t value) {
                            writeProgress(db_, id, classNumber, value);
                          });
  const GenerationContext context{db_, issue_, flags_, tree.id};
  ReportDomain root(tree, context, 0, *tree_.selector, progress);
  IssueStats stats;
  root.analyse(instance_id_, intervals_, stats, first_sample_, zone_);
  if (log_tracing()) log("Done analysing (st=" + std::to_string(issue_.start) + ")", kLogTrace);
  addTextOf(db_, instance_id_, definition_->closing_text);
}
