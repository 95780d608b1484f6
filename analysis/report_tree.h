// What a report covers: the pattern of its tree of domains and nodes and
// the CheckSelector for its nodes, and the count of nodes in that tree.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "analysis/check_selector.h"
#include "analysis/report_selection.h"
#include "analysis/resolved_issue.h"
#include "tql/patch.h"
#include "tql/pattern.h"

struct ReportTree {
  std::unique_ptr<tql::pattern_t> pattern;  // Sent from the Domain that holds the Report.
  std::unique_ptr<CheckSelector> selector;
};

// For a report with selections (`selections` not empty): reads the node
// class catalogue, and gives the selection pattern with a TagCheckSelector
// (a NoCheckSelector for an overview). Otherwise the old-style pattern over
// the Report's `contains` with an OldStyleCheckSelector; when `contains` is
// absent or null, the debug line "Unable to find contents of template" and
// no pattern (both members null). `selections` and `db` must outlive the
// selector.
// Raises errors::tql (the catalogue's select, a damaged `contains`).
ReportTree reportTree(dbms::Database& db, const tql::patch_t& report,
                      const std::vector<ReportSelectionRecord>& selections, ReportKind kind);

// The nodes of a report's tree: a Domain counts its children, a Node 1;
// any other class is the fatal assertion "countNodes got neither Domain nor
// Node".
uint32_t countNodes(const tql::patch_t& tree);
