#include "tavml/dot_string.h"

#include "base/fatal.h"

namespace tavml {

std::string dot_string_width(const std::string& s, int width) {
  // A negative width has to cut any text, and so ends in the assertion.
  if (width >= 0 && s.size() <= static_cast<size_t>(width)) {
    return s + std::string(static_cast<size_t>(width) - s.size(), ' ');
  }
  TAVREL_ASSERT(width >= 3, "short length given to dot_string_width");
  return s.substr(0, width - 3) + "...";
}

}  // namespace tavml
