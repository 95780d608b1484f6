// tavrel-tool: a thin table of subcommands over the libraries, for operators
// and for black-box tests. Output goes to stdout; a bad argument or a failure
// prints "error: " and the text on stderr and exits 1.
#include <cstdio>
#include <cstring>
#include <iostream>

#include "base/crash.h"
#include "base/error.h"
#include "tools/commands.h"

static CrashHandlerAtStart install_crash_handler_early;

namespace {

void usage() {
  std::cerr << "usage: tavrel-tool COMMAND [ARGS]\n";
  for (const tools::Command& c : tools::commands()) {
    std::cerr << "  " << c.name << " " << c.usage << "\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0) {
    usage();
    return argc < 2 ? 1 : 0;
  }
  for (const tools::Command& c : tools::commands()) {
    if (c.name != std::string(argv[1])) continue;
    tools::Args args(std::vector<std::string>(argv + 2, argv + argc));
    try {
      int rc = c.run(args);
      std::cout.flush();
      return rc;
    } catch (const error::Exception& e) {
      std::cout.flush();
      std::cerr << "error: " << e.text() << "\n";
      return 1;
    }
  }
  std::cerr << "error: unknown command: " << argv[1] << "\n";
  usage();
  return 1;
}
