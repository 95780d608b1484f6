// Where the running program lies, to find the programs installed beside it.
#pragma once

#include <string>

namespace tools {

// The directory of the running program's file, without a trailing slash.
// Raises error::ESystemError when the system can't tell.
std::string program_directory();

}  // namespace tools
