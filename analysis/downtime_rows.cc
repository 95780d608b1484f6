#include "analysis/downtime.h"
#include "analysis/plan.h"
#include "analysis/row_sink.h"
#include "tql/catalogue.h"
#include "tql/schema.h"

void writeScheduledDowntime(RowSink& rows, ObjectSource& objects, const tql::id_t& parentFolder,
                            const tql::id_t& objectId, zone_t zone) {
  auto pattern =
      tql::add_next(tql::make_pattern(schema::kRootClass, tql::kPatternBit4), planPattern());
  const std::unique_ptr<tql::patch_t> selected = objects.selectOne(objectId, std::move(pattern));
  if (!selected) return;
  for (const DowntimeFolder& f : scheduledDowntime(*selected, zone)) {
    const tql::id_t sub = rows.folder(parentFolder, 4, f.name, {});
    for (const DowntimeRow& r : f.rows) rows.row(sub, r.label, r.text, {});
  }
}

void addScheduledDowntime(dbms::Database& db, const tql::id_t& parentFolder,
                          const tql::id_t& objectId, zone_t zone) {
  DatabaseRows rows(db);
  DatabaseObjects objects(db);
  writeScheduledDowntime(rows, objects, parentFolder, objectId, zone);
}
