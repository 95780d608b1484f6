// Feeds any bytes to both conversions: a fault must be an EParseError, and
// nothing may crash, leak or read out of bounds.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/error.h"
#include "tavml/tavml.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  std::string html;
  std::string plain;
  try {
    tavml::toHtml(html, text, "t");
  } catch (const error::EParseError&) {
  }
  try {
    tavml::toText(plain, text);
  } catch (const error::EParseError&) {
  }
  return 0;
}
