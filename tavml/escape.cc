#include "tavml/escape.h"

namespace tavml {
namespace {

// Appends the escaped form of `s`; `line_feed` and `carriage_return` are what
// the two line-end bytes become, the only place where the two forms differ.
std::string escape(std::string_view s, const char* line_feed, const char* carriage_return) {
  std::string out;
  out.reserve(s.size());
  for (char ch : s) {
    const unsigned char c = static_cast<unsigned char>(ch);
    switch (c) {
      case '\n':
        out += line_feed;
        break;
      case '\r':
        out += carriage_return;
        break;
      case '"':
        out += "&quot;";
        break;
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      default:
        if (c < 32) {
          out += "&#" + std::to_string(c) + ";";
        } else {
          out += ch;
        }
    }
  }
  return out;
}

}  // namespace

std::string html_escape(std::string_view s) { return escape(s, "<BR>\n", ""); }

std::string attr_escape(std::string_view s) { return escape(s, "&#10;", "&#13;"); }

std::string quoted(std::string_view s) { return "\"" + attr_escape(s) + "\""; }

}  // namespace tavml
