// The markup language of report texts (tavml) and the receiver that its
// parser drives.
//
// The language: <b>...</b>, <i>...</i>, <u>...</u> are spans that must nest
// properly; <hr> is a rule and <link url="..."> (or url='...') a link, both
// without a closing tag; a line feed is a line break and a carriage return is
// dropped. Tag names are lower case and compared exactly; blanks may stand
// before a tag's closing '>' and, in <link>, round "url" and '='. An '&' is
// refused anywhere outside a tag.
#pragma once

#include <string>
#include <string_view>

namespace tavml {

// The abstract receiver of the parser. Each operation does nothing here; a
// conversion overrides those it needs. Not thread-safe; one parse at a time.
class TavmlConversion {
 public:
  TavmlConversion() = default;
  TavmlConversion(const TavmlConversion&) = delete;
  TavmlConversion& operator=(const TavmlConversion&) = delete;
  virtual ~TavmlConversion() = default;

  virtual void begin_bold() {}
  virtual void begin_italic() {}
  virtual void begin_underline() {}
  virtual void end_bold() {}
  virtual void end_italic() {}
  virtual void end_underline() {}
  virtual void rule() {}
  virtual void link(const std::string& url) { (void)url; }
  virtual void line_break() {}
  // A run of plain characters: a range of the parsed text, valid only during
  // the call. It never holds '<', '&', a carriage return or a line feed.
  virtual void text(std::string_view run) { (void)run; }

  // Walks `text` from its first character and calls the operations above in
  // the order of the text. Raises error::EParseError at the first fault;
  // the operations called before it stay done (a conversion keeps what it
  // appended). The fault texts:
  //   "Unrecognized tag: " + name          "Mismatched tags"
  //   "Unrecognized attribute to <link>: " + name
  //   "Expected = after url"               "Expected \" after ="
  //   "Improperly quoted attribute"        "Improperly terminated tag"
  //   "& (ampersand) not allowed"          "Unterminated " + name + "-tag"
  void parse(std::string_view text);
};

}  // namespace tavml
