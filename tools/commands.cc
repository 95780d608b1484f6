#include "tools/commands.h"

namespace tools {

std::vector<Command> tavml_commands();

// Each group declares its table here; the groups are defined in their files.
const std::vector<Command>& commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    for (auto group : {tavml_commands}) {
      for (Command& c : group()) list.push_back(c);
    }
    return list;
  }();
  return all;
}

}  // namespace tools
