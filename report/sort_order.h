// The two orders in which the items of a stored report are shown: rows,
// graphs, logs and texts by their creation counter, child folders by type and
// name in natural order (a name ending in 2 before one ending in 10).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace report {

// Compares two byte strings with runs of digits taken as numbers: negative
// when a is less, 0 when equal, positive when greater. A shorter run of
// digits is the lesser number; runs of equal length compare digit by digit,
// so leading zeros count ("007" is greater than "8"). Other bytes compare as
// unsigned bytes. Equal only for equal strings.
int natural_compare(std::string_view a, std::string_view b);

// The display order among siblings, by their `order` counters. An item whose
// counter is missing (no unsigned number stored) sorts before all that have
// one; such items are equivalent among themselves, so a stable sort keeps
// them as they came.
bool order_before(std::optional<uint32_t> a, std::optional<uint32_t> b);

// What child folders are sorted by.
struct FolderKey {
  uint32_t folder_type = 0;
  std::string name;
};

// The order of a folder's child folders: by type, the lower first; then by
// natural_compare of the names folded to lower case; names that differ only
// in case by natural_compare of the names as they stand.
bool folder_before(const FolderKey& a, const FolderKey& b);

}  // namespace report
