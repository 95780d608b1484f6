// What a configuration report shows of a check: its settings as rows and
// sub-folders, and the alert group with the inheritance of alert settings.
#pragma once

#include "base/zone.h"
#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"

// The alert group rows of a check, check accumulation or node. `rootId` is
// the root of the report's tree.
void addAlertGroupRows(dbms::Database& db, const tql::id_t& folder, const tql::patch_t& object,
                       const tql::id_t& rootId);

// The configuration rows of one check in its folder (the configuration
// report's work for a check, instead of the data analysis).
void analyseConfiguration(dbms::Database& db, const tql::patch_t& check, const tql::id_t& folder,
                          const tql::id_t& rootId, zone_t timeZone);

// The same writers into any sink, looking objects up in `objects`.
class RowSink;
class ObjectSource;
void writeAlertGroupRows(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                         const tql::patch_t& object, const tql::id_t& rootId);
void writeConfiguration(RowSink& rows, ObjectSource& objects, const tql::patch_t& check,
                        const tql::id_t& folder, const tql::id_t& rootId, zone_t timeZone);
// The sub-folder "LogCheck rules" of a check and its rows (the last part of
// writeConfiguration before the comment).
void writeLogCheckRules(RowSink& rows, ObjectSource& objects, const tql::patch_t& check,
                        const tql::id_t& folder);
