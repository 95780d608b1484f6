// The table of tavrel-tool's subcommands. Each group of subcommands lives in
// a file of its own (units_commands.cc, ...) and is listed in commands.cc.
#pragma once

#include <string>
#include <vector>

#include "base/args.h"

namespace tools {

using cli::Args;

struct Command {
  const char* name;
  const char* usage;  // The arguments, for the help text.
  int (*run)(Args& args);
};

// All subcommands, in the order of the help text.
const std::vector<Command>& commands();

}  // namespace tools
