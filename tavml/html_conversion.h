// The conversion of tavml to HTML, for the HTML report renderer.
#pragma once

#include <string>

#include "tavml/conversion.h"

namespace tavml {

// Appends HTML to a string that the caller owns and keeps alive for the
// object's life. Spans become <b>, <i>, <u>; a rule "<hr>"; a line break
// "<br>\n"; text runs go through unchanged (the parser has refused '<' and
// '&' in them); a link becomes <a ... href="url">url</a>.
class TavmlHtmlConversion : public TavmlConversion {
 public:
  // An empty `target` gives links without a target attribute; any other
  // gives them " target=" + quoted(target), placed as it stands right after
  // "<a " (so "<a  target=\"t\"href=...", which browsers read as two
  // attributes).
  TavmlHtmlConversion(std::string& output, const std::string& target);

  void begin_bold() override;
  void begin_italic() override;
  void begin_underline() override;
  void end_bold() override;
  void end_italic() override;
  void end_underline() override;
  void rule() override;
  void link(const std::string& url) override;
  void line_break() override;
  void text(std::string_view run) override;

 private:
  std::string* output_;      // Not owned.
  std::string target_attr_;  // Empty, or " target=" + quoted(target).
};

}  // namespace tavml
