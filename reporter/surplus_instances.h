// Trimming a report's instances to its `maxInstances`, oldest first.
#pragma once

#include <vector>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"

// The instances of `report` (a Report with `maxInstances` and its
// ReportInstance children with `date`) that go beyond `maxInstances`,
// oldest `date` first; none when `maxInstances` is null. With 0 every
// instance goes. Raises errors::tql when `maxInstances` is missing or an
// instance has no `date`.
std::vector<const tql::patch_t*> surplus_instances(const tql::patch_t& report);

// Selects the report with its instances through the process's queue and
// deletes the surplus ones in order. A refused deletion logs "Error deleting
// old report instance: " and the text, and the next is tried; any other
// errors::tql logs "Error deleting surplus instances: " and the text and
// ends the call. Never raises errors::tql; a lost database raises as the
// dialogs do.
void delete_surplus_instances(dbms::Database& db, tql::id_t report_id);
