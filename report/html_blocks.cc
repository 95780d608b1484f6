#include "report/html_blocks.h"

#include "tavml/escape.h"

namespace report::html {
namespace {

void attribute(std::ostream& out, std::string_view name, std::string_view value) {
  if (!value.empty()) out << ' ' << name << "='" << value << '\'';
}

}  // namespace

std::string escape(std::string_view text) { return tavml::html_escape(text); }

void table(std::ostream& out, std::string_view width, std::string_view css_class) {
  out << "<table";
  attribute(out, "width", width);
  attribute(out, "class", css_class);
  out << ">\r\n";
}

void end_table(std::ostream& out) { out << "</table>\r\n"; }

void row(std::ostream& out, std::string_view width, std::string_view extra) {
  out << "<tr><td";
  attribute(out, "width", width);
  out << extra << '>';
}

void next_cell(std::ostream& out, std::string_view width, std::string_view extra) {
  out << "</td><td";
  attribute(out, "width", width);
  out << extra << '>';
}

void end_row(std::ostream& out) { out << "</td></tr>\r\n"; }

void span(std::ostream& out, std::string_view text, std::string_view css_class,
          std::string_view anchor) {
  if (!anchor.empty()) out << "<a name='" << anchor << "'>";
  out << "<span class='" << css_class << "'>" << escape(text) << "</span>";
  if (!anchor.empty()) out << "</a>";
}

void comment_line(std::ostream& out, std::string_view comment, std::string_view extra) {
  if (comment.empty()) return;
  row(out, "", extra);
  span(out, comment, "reportcomment", "");
  end_row(out);
}

void ruler(std::ostream& out) { out << "<hr class='report'>"; }

}  // namespace report::html
