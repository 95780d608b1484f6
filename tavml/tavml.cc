#include "tavml/tavml.h"

#include "tavml/html_conversion.h"
#include "tavml/text_conversion.h"

namespace tavml {

void toHtml(std::string& output, std::string_view text, const std::string& target) {
  TavmlHtmlConversion(output, target).parse(text);
}

void toText(std::string& output, std::string_view text) { TavmlTextConversion(output).parse(text); }

}  // namespace tavml
