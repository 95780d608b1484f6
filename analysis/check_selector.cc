#include "analysis/check_selector.h"

#include <string>

#include "analysis/selection_patterns.h"
#include "base/log.h"
#include "queues/tql_operations.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

std::unique_ptr<tql::patch_t> selectFrom(const tql::id_t& id, std::unique_ptr<tql::pattern_t> p) {
  return tql::select_one(id, std::move(p), 0, *queues::global_queue());
}

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

std::unique_ptr<tql::patch_t> NoCheckSelector::select(const tql::patch_t& node) {
  return guarded("Cannot nocheck select checks: ", [&] {
    return selectFrom(node.id, tql::make_pattern(schema::kNode, tql::kPatternAllProps));
  });
}

std::unique_ptr<tql::patch_t> OldStyleCheckSelector::select(const tql::patch_t& node) {
  return guarded("Cannot select old style checks: ", [&] {
    std::unique_ptr<tql::patch_t> tree =
        selectFrom(node.id, oldStyleCheckPattern(contains_, false));
    if (!tree) tree = selectFrom(node.id, oldStyleCheckPattern(contains_, true));
    return tree;
  });
}

std::unique_ptr<tql::patch_t> TagCheckSelector::select(const tql::patch_t& node) {
  return guarded("Cannot tag select checks: ",
                 [&] { return selectFrom(node.id, tagCheckPattern(selections_, node.tags)); });
}
