#include "tools/commands.h"

namespace tools {

// Each group declares its table here; the groups are defined in their files.
std::vector<Command> tavml_commands();
std::vector<Command> ber_commands();

const std::vector<Command>& commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    for (auto group : {tavml_commands, ber_commands}) {
      for (const Command& c : group()) list.push_back(c);
    }
    return list;
  }();
  return all;
}

}  // namespace tools
