// The stored side of the read model: the class and property numbers of the
// result objects below a ReportInstance, how their values are read, and the
// two orders in which stored siblings are shown. Nothing here talks to the
// database; it works on the objects (tql::patch_t) that a query returned.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tql/patch.h"

namespace report::stored {

// Classes of the stored tree.
inline constexpr int32_t kClusterInfo = 15;
inline constexpr int32_t kReportInstance = 38;
inline constexpr int32_t kResultFolder = 39;
inline constexpr int32_t kResultRow = 40;
inline constexpr int32_t kResultGraph = 41;
inline constexpr int32_t kResultLog = 43;
inline constexpr int32_t kReportText = 85;

// Properties that the read side asks for.
inline constexpr int32_t kName = 51;
inline constexpr int32_t kStartTime = 305;
inline constexpr int32_t kDuration = 306;
inline constexpr int32_t kGenerated = 325;
inline constexpr int32_t kFolderType = 340;
inline constexpr int32_t kOriginNode = 341;
inline constexpr int32_t kComment = 524;
inline constexpr int32_t kText = 1700;
inline constexpr int32_t kReportGenerator = 1906;
inline constexpr int32_t kOrder = 2200;
inline constexpr int32_t kTsdbIncident = 2601;

// The enumeration type of `folderType`; only its low 17 bits are compared.
inline constexpr uint32_t kFolderTypeEnum = 0x10015;

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
// kFolderTypeEnum. Missing, null or of another kind: none, and such a folder
// is shown neither among a folder's contents nor among its subfolders.
std::optional<uint32_t> folder_type_of(const tql::patch_t& object);

// The id in `originNode` in text form; empty when missing or null. Raises
// errors::tql code 9 for a property of another kind.
std::string origin_of(const tql::patch_t& object);

// Sorts into display order by `order` (report::order_before), keeping the
// order in which they came among those without a counter.
void sort_by_order(std::vector<tql::patch_t>& objects);

// Sorts folders by type, then name in natural order (report::folder_before).
// Only folders with a type (folder_type_of) may be given.
void sort_folders(std::vector<tql::patch_t>& folders);

}  // namespace report::stored
