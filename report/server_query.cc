#include "report/server_query.h"

#include "dbms/tql_operations.h"
#include "tql/catalogue.h"
#include "tql/pattern.h"
#include "tql/schema.h"

namespace report::stored {

std::vector<tql::patch_t> select_children(dbms::Database& db, const tql::id_t& parent,
                                          const std::vector<ChildStep>& steps) {
  std::unique_ptr<tql::pattern_t> root = tql::make_pattern(schema::kRootClass, 0);
  for (const ChildStep& step : steps) {
    root = tql::add_next(std::move(root), tql::make_pattern(step.class_, step.wanted, 0));
  }
  std::unique_ptr<tql::patch_t> found = tql::select_one(db, parent, std::move(root), 0);
  if (!found) return {};
  return std::move(found->children);
}

}  // namespace report::stored
