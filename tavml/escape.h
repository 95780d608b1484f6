// Escaping of plain text for HTML, byte by byte over unsigned bytes. Bytes
// are not recoded here: the mail makes the whole document UTF-8 on the way
// out (base/utf8.h) and declares UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace tavml {

// Text for an element's content: a line feed becomes "<BR>\n", a carriage
// return is dropped, '"' '&' '<' '>' become entities, other bytes below 32
// become "&#N;", all else stays. Never raises.
std::string html_escape(std::string_view s);

// Text for an attribute value: as html_escape, but a line feed becomes
// "&#10;" and a carriage return "&#13;". Never raises.
std::string attr_escape(std::string_view s);

// '"' + attr_escape(s) + '"'. Never raises.
std::string quoted(std::string_view s);

}  // namespace tavml
