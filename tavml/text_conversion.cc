#include "tavml/text_conversion.h"

namespace tavml {

void TavmlTextConversion::begin_bold() { ++upper_depth_; }
void TavmlTextConversion::begin_italic() { ++upper_depth_; }
void TavmlTextConversion::begin_underline() { ++upper_depth_; }
void TavmlTextConversion::end_bold() { --upper_depth_; }
void TavmlTextConversion::end_italic() { --upper_depth_; }
void TavmlTextConversion::end_underline() { --upper_depth_; }
void TavmlTextConversion::rule() { *output_ += "\n" + std::string(72, '-') + "\n"; }
void TavmlTextConversion::link(const std::string& url) { *output_ += url; }
void TavmlTextConversion::line_break() { *output_ += "\n"; }

void TavmlTextConversion::text(std::string_view run) {
  if (upper_depth_ <= 0) {
    *output_ += run;
    return;
  }
  // The C locale's toupper: only a to z change.
  for (char c : run) *output_ += (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace tavml
