// The tavml parser. It keeps the open tags on a stack of strings and walks the
// text once; see conversion.h for the language and the fault texts.
#include <string>
#include <vector>

#include "base/error.h"
#include "tavml/conversion.h"

namespace tavml {
namespace {

// The C locale's classes. The process never changes its locale, and tying
// the markup to ASCII keeps bytes of ISO-8859-1 text out of tag names.
bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

[[noreturn]] void fault(const std::string& text) { throw error::EParseError(text); }

// One pass over one text; `pos_` is the next character to read.
class Parser {
 public:
  Parser(TavmlConversion& conversion, std::string_view text)
      : conversion_(conversion), text_(text) {}

  void run() {
    while (!at_end()) {
      char c = text_[pos_];
      if (c == '<') {
        ++pos_;
        tag();
      } else if (c == '\r') {
        ++pos_;
      } else if (c == '\n') {
        ++pos_;
        conversion_.line_break();
      } else if (c == '&') {
        fault("& (ampersand) not allowed");
      } else {
        text_run();
      }
    }
    if (!open_.empty()) fault("Unterminated " + open_.back() + "-tag");
  }

 private:
  bool at_end() const { return pos_ >= text_.size(); }
  bool next_is(char c) const { return !at_end() && text_[pos_] == c; }

  void skip_space() {
    while (!at_end() && is_space(text_[pos_])) ++pos_;
  }

  std::string letters() {
    size_t start = pos_;
    while (!at_end() && is_letter(text_[pos_])) ++pos_;
    return std::string(text_.substr(start, pos_ - start));
  }

  // After '<': the tag's name, its meaning, then the closing '>'.
  void tag() {
    std::string name;
    if (next_is('/')) {
      ++pos_;
      name += '/';
    }
    name += letters();
    open_.push_back(name);
    if (name == "b") {
      conversion_.begin_bold();
    } else if (name == "i") {
      conversion_.begin_italic();
    } else if (name == "u") {
      conversion_.begin_underline();
    } else if (name == "hr") {
      open_.pop_back();
      conversion_.rule();
    } else if (name == "link") {
      open_.pop_back();
      link();
    } else if (!name.empty() && name[0] == '/') {
      open_.pop_back();
      close(name.substr(1));
    } else {
      fault("Unrecognized tag: " + name);
    }
    skip_space();
    if (!next_is('>')) fault("Improperly terminated tag");
    ++pos_;
  }

  // After "<link": the url attribute. Without a closing quote the rest of
  // the text is the URL: the link is still called, then the fault raised.
  void link() {
    skip_space();
    const std::string attribute = letters();
    if (attribute != "url") fault("Unrecognized attribute to <link>: " + attribute);
    skip_space();
    if (!next_is('=')) fault("Expected = after url");
    ++pos_;
    skip_space();
    if (!next_is('"') && !next_is('\'')) fault("Expected \" after =");
    const char quote = text_[pos_++];
    size_t end = text_.find(quote, pos_);
    conversion_.link(std::string(
        text_.substr(pos_, end == std::string_view::npos ? std::string_view::npos : end - pos_)));
    if (end == std::string_view::npos) fault("Improperly quoted attribute");
    pos_ = end + 1;
  }

  // A closing tag whose name (without the slash) is `name`. Only b, i and u
  // ever stay on the stack, so any other name is a mismatch.
  void close(const std::string& name) {
    if (open_.empty() || open_.back() != name) fault("Mismatched tags");
    open_.pop_back();
    if (name == "b") {
      conversion_.end_bold();
    } else if (name == "i") {
      conversion_.end_italic();
    } else {
      conversion_.end_underline();
    }
  }

  // Plain characters up to the next '<', '&', line end or the end.
  void text_run() {
    size_t end = text_.find_first_of("<&\r\n", pos_);
    if (end == std::string_view::npos) end = text_.size();
    conversion_.text(text_.substr(pos_, end - pos_));
    pos_ = end;
  }

  TavmlConversion& conversion_;
  const std::string_view text_;
  size_t pos_ = 0;
  std::vector<std::string> open_;  // The open tags, innermost last.
};

}  // namespace

void TavmlConversion::parse(std::string_view text) { Parser(*this, text).run(); }

}  // namespace tavml
