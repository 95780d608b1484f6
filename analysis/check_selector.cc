#include "analysis/check_selector.h"

#include <string>

#include "analysis/selection_patterns.h"
#include "base/log.h"
#include "dbms/tql_operations.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

// Runs `select`; an errors::tql is logged as `what` + its text and gives null.
template <class F>
std::unique_ptr<tql::patch_t> guarded(const char* what, F select) {
  try {
    return select();
  } catch (const errors::tql& e) {
    log(what + e.text());
    return nullptr;
  }
}

}  // namespace

std::unique_ptr<tql::patch_t> CheckSelector::select_from(const tql::id_t& id,
                                                         std::unique_ptr<tql::pattern_t> p) {
  return tql::select_one(db_, id, std::move(p), 0);
}

std::unique_ptr<tql::patch_t> NoCheckSelector::select(const tql::patch_t& node) {
  return guarded("Cannot nocheck select checks: ", [&] {
    return select_from(node.id, tql::make_pattern(schema::kNode, tql::kPatternAllProps));
  });
}

std::unique_ptr<tql::patch_t> OldStyleCheckSelector::select(const tql::patch_t& node) {
  return guarded("Cannot select old style checks: ", [&] {
    std::unique_ptr<tql::patch_t> tree =
        select_from(node.id, oldStyleCheckPattern(contains_, false));
    if (!tree) tree = select_from(node.id, oldStyleCheckPattern(contains_, true));
    return tree;
  });
}

std::unique_ptr<tql::patch_t> TagCheckSelector::select(const tql::patch_t& node) {
  return guarded("Cannot tag select checks: ",
                 [&] { return select_from(node.id, tagCheckPattern(selections_, node.tags)); });
}
