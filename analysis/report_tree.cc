#include "analysis/report_tree.h"

#include "analysis/node_classes.h"
#include "analysis/object_values.h"
#include "analysis/selection_patterns.h"
#include "base/fatal.h"
#include "base/log.h"
#include "tql/decode.h"
#include "tql/schema.h"

ReportTree reportTree(dbms::Database& db, const tql::patch_t& report,
                      const std::vector<ReportSelectionRecord>& selections, ReportKind kind) {
  ReportTree tree;
  if (!selections.empty()) {
    tree.pattern = selectionTreePattern(selections, readNodeClasses(db));
    if (kind == ReportKind::kOverview) {
      tree.selector = std::make_unique<NoCheckSelector>(db);
    } else {
      tree.selector = std::make_unique<TagCheckSelector>(db, selections);
    }
    return tree;
  }
  const tql::property_t* contains = report.find_set_property(schema::kContains);
  if (contains == nullptr) {
    if (log_tracing()) log("Unable to find contents of template", kLogTrace);
    return tree;
  }
  tql::object_set_t ids;
  tql::decode_object_set(*contains, ids);
  tree.pattern = oldStyleTreePattern(ids);
  tree.selector = std::make_unique<OldStyleCheckSelector>(db, std::move(ids));
  return tree;
}

uint32_t countNodes(const tql::patch_t& tree) {
  if (tree.class_ == schema::kNode) return 1;
  TAVREL_ASSERT(tree.class_ == schema::kDomain, "countNodes got neither Domain nor Node");
  uint32_t sum = 0;
  for (const tql::patch_t& child : tree.children) sum += countNodes(child);
  return sum;
}
