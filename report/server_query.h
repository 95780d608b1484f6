// The one query of the read model: the children of a stored object of the
// wanted classes, each with only the properties that the read side shows.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"

namespace report::stored {

// One class of children to fetch, with the properties wanted of them.
struct ChildStep {
  int32_t class_;
  std::set<int32_t> wanted;
};

// `select_one` from `parent` with the root class "." and flags 0, with one
// next step (flags 0) per entry of `steps`. Returns the children of the
// result, in the order the database gave them; empty when the select found
// nothing. Raises errors::tql for a failed select and what `db` raises.
std::vector<tql::patch_t> select_children(dbms::Database& db, const tql::id_t& parent,
                                          const std::vector<ChildStep>& steps);

}  // namespace report::stored
