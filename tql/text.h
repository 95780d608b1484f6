// Small text helpers of the object model.
#pragma once

#include <string>

namespace tql {

// `s` with the ASCII letters A-Z folded to a-z; other bytes unchanged.
std::string to_lower(const std::string& s);

}  // namespace tql
