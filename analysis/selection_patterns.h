// The patterns of check selection: the report's tree of domains and nodes,
// and the checks of one node. Pure: they compose patterns and send nothing.
#pragma once

#include <list>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "analysis/node_classes.h"
#include "analysis/report_selection.h"
#include "tql/pattern.h"

// `id` element of `ids` (rel_op 12), and `active` equal to true (rel_op 1).
tql::condition_t idInSet(const tql::object_set_t& ids);
tql::condition_t isActive();

// The tree of a selection report: per record i, nodes of its classes below
// its domains and its listed nodes of its classes, tagged i.
std::unique_ptr<tql::pattern_t> selectionTreePattern(
    const std::vector<ReportSelectionRecord>& records, const NodeClassCatalogue& catalogue);

// The tree of an old-style report: the listed domains with everything below,
// and the listed nodes.
std::unique_ptr<tql::pattern_t> oldStyleTreePattern(const tql::object_set_t& contains);

// The old-style check selection of a node: its listed active checks, or
// with `fallback` all its active checks.
std::unique_ptr<tql::pattern_t> oldStyleCheckPattern(const tql::object_set_t& contains,
                                                     bool fallback);

// The patterns of one path: the check reading (groups down to the check)
// and, for a path of two or more elements, the accumulation reading (groups
// down to the check, then the accumulation). An empty path gives nothing.
void pathPatterns(const std::list<std::string>& path, tql::pattern_list_t& out);

// The check selection of a node that carries `tags`: the patterns of the
// records they name (all active checks for a record without paths), below
// one Node step. Tags that name no record are passed over.
std::unique_ptr<tql::pattern_t> tagCheckPattern(const std::vector<ReportSelectionRecord>& records,
                                                const std::set<int32_t>& tags);
