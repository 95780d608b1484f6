// TQL select over the ObjectStore: a pattern_t tree run from root objects.
//
// The database decides what the bits of a pattern mean (the reporter leaves
// it open); the stand-in's rules, chosen so that each pattern the reporter
// sends gives what it expects, are these (README.md has the table):
//  1. The root step matches the root objects themselves; a next step the
//     children of each object matched at the step above. Class 13 matches
//     any class. All `where` conditions must hold, by the property model's
//     compare; property 0 (`id`) compares the object's id.
//  2. Bit 1 (nesting): the step also matches, recursively, the children of
//     the same class (class 13: any class) of each object it matched; they
//     stay their children in the result. Below the root, the current object
//     itself also counts when it matches the step (zero levels of nesting).
//  3. Bit 2: all properties come back; otherwise only `wanted_properties`.
//  4. Pruning: a step is selective if it has bit 4, a `where`, or a
//     selective step below it. An object matched at a step that is not
//     selective comes back with its parent. One matched at a selective step
//     is kept if the step has bit 4; or it has a `where` and no selective
//     step below; or the object has a kept child at a selective step (next
//     or nested). The result of a root is dropped when the root is not kept,
//     or when its step has selective next steps and none of its children is
//     kept.
//  5. A Plan matched at a step with bit 2 comes back with its whole subtree,
//     all properties.
//  6. An object matched by several steps appears once, with the union of
//     children, tags, flags (OR) and properties.
// Children come back in the stored order.
#pragma once

#include <list>
#include <vector>

#include "host/store_objects.h"
#include "tql/patch.h"
#include "tql/pattern.h"

namespace host {

// One result per root id that exists and is kept, in the order of
// `root_ids`. Raises errors::tql_incomparable (code 11) when a condition
// can't be compared with the stored property, and EBadRequest for a
// malformed pattern (check_pattern in select_match.h) before any matching.
std::vector<tql::patch_t> select(const ObjectStore& store, const std::list<tql::id_t>& root_ids,
                                 const tql::pattern_t& pattern);

}  // namespace host
