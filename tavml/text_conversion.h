// The conversion of tavml to plain text, for the text report renderer.
#pragma once

#include <cstdint>
#include <string>

#include "tavml/conversion.h"

namespace tavml {

// Appends plain text to a string that the caller owns and keeps alive for
// the object's life. Text inside any span (bold, italic or underline) is
// written in capitals; a rule is a line of 72 hyphens between line feeds; a
// link is its URL alone; a line break is a line feed.
class TavmlTextConversion : public TavmlConversion {
 public:
  explicit TavmlTextConversion(std::string& output) : output_(&output) {}

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
  int32_t upper_depth_ = 0;  // Number of open spans.
};

}  // namespace tavml
