// What a configuration report shows of a domain and of a node.
#include <string>

#include "analysis/check_configuration.h"
#include "analysis/downtime.h"
#include "analysis/property_values.h"
#include "analysis/row_sink.h"
#include "analysis/row_texts.h"
#include "analysis/summary_rows.h"
#include "tql/schema.h"

namespace {

constexpr LabelledProperty kNodeScoreKeeper[] = {
    {"Checkin score", schema::kCheckinScore},
    {"Missed checkin score", schema::kMissedCheckinScore},
    {"Warn at", schema::kWarn},
    {"Warn ceiling", schema::kWarnCeiling},
    {"Alert", schema::kAlert},
    {"Alert ceiling", schema::kAlertCeiling}};

// The node's classes, each a row labelled " " with the class's name, in a
// sub-folder made when the first one is found.
void writeNodeClasses(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                      const tql::patch_t& node) {
  const auto classes = tql::value_of<tql::property_object_set_t>(node, schema::kNodeClasses);
  if (!classes) return;
  tql::id_t sub;
  for (const auto& [id, origin] : *classes) {
    const auto nodeClass = objects.getObject(id, schema::kNodeClass);
    if (!nodeClass) continue;
    if (sub.empty()) sub = rows.folder(folder, 4, "NodeClasses", {});
    rows.propertyRow(sub, " ", *nodeClass, schema::kName, false, "", {});
  }
}

}  // namespace

void writeDomainConfiguration(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                              const tql::patch_t& domain, zone_t timeZone) {
  if (const auto name = nonEmptyString(domain, schema::kName)) rows.row(folder, "Name", *name, {});
  rows.propertyRow(folder, "Info URL", domain, schema::kInfoUrl, false, "", {});
  writeScheduledDowntime(rows, objects, folder, domain.id, timeZone);
}

void writeNodeConfiguration(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                            const tql::patch_t& node, const tql::id_t& rootId, zone_t timeZone) {
  if (const auto label = nonEmptyString(node, schema::kLabel))
    rows.row(folder, "Label", *label, {});
  rows.propertyRow(folder, "Info URL", node, schema::kInfoUrl, false, "", {});
  const auto checkin = tql::value_of<tql::property_uint_t>(node, schema::kCheckinFrequency);
  rows.row(folder, "Checkin interval", checkin ? std::to_string(*checkin) : "never checkin", {});
  writeAlertGroupRows(rows, objects, folder, node, rootId);
  rows.propertyRow(folder, "Acknowledge alerts", node, schema::kAcknowledgeAlerts, false, "", {});
  const auto strategy = enumValue(node, schema::kAlertStrategy);
  rows.row(folder, "Alert strategy", alertStrategyText(strategy ? &*strategy : nullptr), {});
  if (strategy && *strategy == 1) {
    for (const LabelledProperty& e : kNodeScoreKeeper) {
      rows.propertyRow(folder, e.label, node, e.property, false, "", {});
    }
  }
  writeScheduledDowntime(rows, objects, folder, node.id, timeZone);
  writeNodeClasses(rows, objects, folder, node);
}

void addDomainConfiguration(dbms::Database& db, const tql::id_t& folder, const tql::patch_t& domain,
                            zone_t timeZone) {
  DatabaseRows rows(db);
  DatabaseObjects objects(db);
  writeDomainConfiguration(rows, objects, folder, domain, timeZone);
}

void addNodeConfiguration(dbms::Database& db, const tql::id_t& folder, const tql::patch_t& node,
                          const tql::id_t& rootId, zone_t timeZone) {
  DatabaseRows rows(db);
  DatabaseObjects objects(db);
  writeNodeConfiguration(rows, objects, folder, node, rootId, timeZone);
}
