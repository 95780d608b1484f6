#include "tools/commands.h"

namespace tools {

// Each group declares its table here; the groups are defined in their files.
const std::vector<Command>& commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    return list;
  }();
  return all;
}

}  // namespace tools
