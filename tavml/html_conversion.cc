#include "tavml/html_conversion.h"

#include "tavml/escape.h"

namespace tavml {

TavmlHtmlConversion::TavmlHtmlConversion(std::string& output, const std::string& target)
    : output_(&output), target_attr_(target.empty() ? "" : " target=" + quoted(target)) {}

void TavmlHtmlConversion::begin_bold() { *output_ += "<b>"; }
void TavmlHtmlConversion::begin_italic() { *output_ += "<i>"; }
void TavmlHtmlConversion::begin_underline() { *output_ += "<u>"; }
void TavmlHtmlConversion::end_bold() { *output_ += "</b>"; }
void TavmlHtmlConversion::end_italic() { *output_ += "</i>"; }
void TavmlHtmlConversion::end_underline() { *output_ += "</u>"; }
void TavmlHtmlConversion::rule() { *output_ += "<hr>"; }
void TavmlHtmlConversion::line_break() { *output_ += "<br>\n"; }
void TavmlHtmlConversion::text(std::string_view run) { *output_ += run; }

void TavmlHtmlConversion::link(const std::string& url) {
  *output_ += "<a " + target_attr_ + "href=" + quoted(url) + ">" + html_escape(url) + "</a>";
}

}  // namespace tavml
