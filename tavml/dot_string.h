// Fixed-width text for the tabular chart parts.
#pragma once

#include <string>

namespace tavml {

// Returns `s` as exactly `width` characters: a shorter text is filled up on
// the right with blanks, a longer one is cut to `width` - 3 characters and
// "..." is added, one of exactly `width` characters stays as it is. A text
// that must be cut with a `width` below 3 is the fatal assertion "short
// length given to dot_string_width"; callers give at least 3.
std::string dot_string_width(const std::string& s, int width);

}  // namespace tavml
