// The one query of the read model: the children of a stored object of the
// wanted classes, each with only the properties that the read side shows,
// through the process's queue.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "queues/childqueue.h"
#include "tql/id.h"
#include "tql/patch.h"

namespace report::stored {

// The process's queue, through which the read model queries; its absence is
// the fatal assertion "No queue for the report read model".
queues::childqueue& queue();

// One class of children to fetch, with the properties wanted of them.
struct ChildStep {
  int32_t class_;
  std::set<int32_t> wanted;
};

// `select_one` from `parent` with the root class "." and flags 0, with one
// next step (flags 0) per entry of `steps`. Returns the children of the
// result, in the order the database gave them; empty when the select found
// nothing. Raises errors::tql for a failed select and what the dialogs raise
// (queues/qdialog.h). The process's queue must be set.
std::vector<tql::patch_t> select_children(const tql::id_t& parent,
                                          const std::vector<ChildStep>& steps);

}  // namespace report::stored
