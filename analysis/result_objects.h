// The operations that write a report's result objects under its instance.
// Each created folder, row, log, graph or text takes the next value of one
// process-wide `order` counter (starting at 1, never reset), so creation
// order is display order. All are creates in `db`; a failed
// create writes an error line naming the class and the parent and rethrows
// the errors::tql.
#pragma once

#include <cstdint>
#include <string>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"

// The next value of the process-wide `order` counter.
uint32_t next_result_order();

// A ReportResultFolder; `origin` empty sets no `originNode`.
tql::id_t addFolder(dbms::Database& db, const tql::id_t& parent, uint32_t folderType,
                    const std::string& name, const tql::id_t& origin);
// A ReportResultRow with `name` := label and `text` := value.
tql::id_t addRow(dbms::Database& db, const tql::id_t& parent, const std::string& label,
                 const std::string& value, const tql::id_t& origin);
// A ReportResultLog; its entries are a series put by the caller.
tql::id_t addLog(dbms::Database& db, const tql::id_t& parent, const std::string& name);
// A ReportText with `comment` := text.
tql::id_t addText(dbms::Database& db, const tql::id_t& parent, const std::string& text);

// A row from `object`'s property: its string, or the text form of another
// kind. Absent or null: with `useDefault` a row with `defaultText`,
// otherwise no row.
void addPropertyRow(dbms::Database& db, const tql::id_t& parent, const std::string& label,
                    const tql::patch_t& object, int32_t property, bool useDefault,
                    const std::string& defaultText, const tql::id_t& origin);
// addPropertyRow without a default, with the debug lines "Existing property "
// and "Non-existing property ".
void addPropertyRowIfSet(dbms::Database& db, const tql::id_t& parent, const std::string& label,
                         const tql::patch_t& object, int32_t property, const tql::id_t& origin);
