// The stored side of the read model: how the values of the result objects
// below a ReportInstance are read (their class and property numbers are
// those of tql/schema.h), and the two orders in which stored siblings are
// shown. Nothing here talks to the database; it works on the objects
// (tql::patch_t) that a query returned.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/zone.h"
#include "tql/patch.h"

namespace report::stored {

// A string property's value; empty when the property is missing or null.
// Raises errors::tql code 9 for a property of another kind.
std::string text_of(const tql::patch_t& object, int32_t number);

// A flag: a boolean, or a number (uint, int, real) that isn't 0, as the
// grapher reads the chart's options. Missing, null and other kinds read as
// false.
bool flag_of(const tql::patch_t& object, int32_t number);

// Seconds of a time property: a date, uint or int. A null one reads as 0.
// Raises errors::tql code 6 when it is missing and code 9 for another kind.
int64_t seconds_of(const tql::patch_t& object, int32_t number);

// The `order` counter: present when it is a non-null uint.
std::optional<uint32_t> order_of(const tql::patch_t& object);

// The `folderType`: present when it is a non-null enumeration of type
// schema::kFolderTypeEnum (only the type's low 17 bits are compared).
// Missing, null or of another kind: none, and such a folder is shown neither
// among a folder's contents nor among its subfolders.
std::optional<uint32_t> folder_type_of(const tql::patch_t& object);

// The id in `originNode` in text form; empty when missing or null. Raises
// errors::tql code 9 for a property of another kind.
std::string origin_of(const tql::patch_t& object);

// The report's time zone: its `timeZone` when that is a set int, else the
// zone of the environment (TZ at start).
zone_t zone_of(const tql::patch_t& report);

// Sorts into display order by `order` (report::order_before), keeping the
// order in which they came among those without a counter.
void sort_by_order(std::vector<tql::patch_t>& objects);

// Sorts folders by type, then name in natural order (report::folder_before).
// Only folders with a type (folder_type_of) may be given.
void sort_folders(std::vector<tql::patch_t>& folders);

}  // namespace report::stored
