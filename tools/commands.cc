#include "tools/commands.h"

namespace tools {

// Each group declares its table here; the groups are defined in their files.
std::vector<Command> units_commands();
std::vector<Command> time_commands();
std::vector<Command> tavml_commands();
std::vector<Command> records_commands();
std::vector<Command> reporter_commands();

const std::vector<Command>& commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    for (auto group :
         {units_commands, time_commands, tavml_commands, records_commands, reporter_commands}) {
      for (const Command& c : group()) list.push_back(c);
    }
    return list;
  }();
  return all;
}

}  // namespace tools
