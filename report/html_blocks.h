// The small pieces of which the HTML report is built: nested tables with
// single-quoted attributes, CR LF line ends. Each attribute is left out when
// its value is empty. Headings and comments go through escape(); other texts
// are written as they stand.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace report::html {

// The `extra` attributes of a cell.
inline constexpr std::string_view kColspan2 = " colspan='2'";
inline constexpr std::string_view kAlignRight = " align='right'";
inline constexpr std::string_view kNoWrap = " nowrap='nowrap'";

// Plain text made safe for HTML, byte by byte: a line feed becomes a BR tag
// and a line feed, a carriage return is dropped, markup characters become
// entities, other control bytes numeric references. Bytes are not recoded.
std::string escape(std::string_view text);

// "<table width='..' class='..'>" and a line end.
void table(std::ostream& out, std::string_view width, std::string_view css_class);
// "</table>" and a line end.
void end_table(std::ostream& out);
// Opens a row and its first cell.
void row(std::ostream& out, std::string_view width, std::string_view extra);
// Closes a cell and opens the next one.
void next_cell(std::ostream& out, std::string_view width, std::string_view extra);
// Closes the cell and the row, with a line end.
void end_row(std::ostream& out);
// The escaped text in a span of the class, inside a named anchor when
// `anchor` isn't empty.
void span(std::ostream& out, std::string_view text, std::string_view css_class,
          std::string_view anchor);
// A row with the comment in the "reportcomment" style; nothing for an empty
// comment.
void comment_line(std::ostream& out, std::string_view comment, std::string_view extra);
// The horizontal ruler between the parts of the document; no line end.
void ruler(std::ostream& out);

}  // namespace report::html
