// The two conversions of a tavml text (see conversion.h for the language).
// Both append to `output`, which the caller owns. A text that doesn't parse
// raises error::EParseError with the parser's fault text; what was appended
// before the fault stays in `output`.
#pragma once

#include <string>
#include <string_view>

namespace tavml {

// Appends the HTML form of `text`; links get the target `target` unless it
// is empty.
void toHtml(std::string& output, std::string_view text, const std::string& target);

// Appends the plain-text form of `text`.
void toText(std::string& output, std::string_view text);

}  // namespace tavml
