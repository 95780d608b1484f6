// Where the running program lies, to find the programs that go with it: in
// the build tree they lie in their folders' build directories, installed
// they lie in libexec/tavrel/ beside bin/.
#pragma once

#include <string>

namespace paths {

// The directory of the running program's file, without a trailing slash.
// Raises error::ESystemError when the system can't tell.
std::string program_directory();

// The program `name` that goes with the running one: the installed
// `<program directory>/../libexec/tavrel/<name>` when that file exists,
// else `<program directory>/<build_relative>/<name>`, its place in the
// build tree (`build_relative` is "." for the same directory).
std::string companion_program(const std::string& name, const std::string& build_relative);

}  // namespace paths
