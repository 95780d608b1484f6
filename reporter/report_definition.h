// The definition of one report as a generation reads it: the Report with
// its issues, selections and plan, and what the domains above it give.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"

struct ReportDefinition {
  std::unique_ptr<tql::patch_t> tree;    // The path from the root domain; owns the rest.
  const tql::patch_t* report = nullptr;  // The Report in `tree`.
  tql::id_t owner_domain;                // The Domain that holds the Report.
  std::vector<std::string> domain_path;  // Names of the domains below the root, outermost first.
  const tql::patch_t* opening_text = nullptr;  // The nearest ReportText of type 0, or null.
  const tql::patch_t* closing_text = nullptr;  // The nearest ReportText of type 1, or null.

  // The domain path joined with "."; "." for a report in the root domain.
  std::string pathText() const;
};

// Fetches the definition of `report_id` from the root domain. Null when the
// report is gone. Raises errors::tql and what the dialogs raise. A reply
// that is not one path of domains down to the report is the fatal
// assertion "Child found twice while searching for report template" or
// "Did not find child when searching for report template".
std::unique_ptr<ReportDefinition> fetchDefinition(dbms::Database& db, const tql::id_t& report_id);

// Walks `tree` (as fetchDefinition's select returns it) into `definition`.
void walkDefinition(std::unique_ptr<tql::patch_t> tree, ReportDefinition& definition);
