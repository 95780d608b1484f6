// tavrel-tool: a thin table of subcommands over the libraries, for operators
// and for black-box tests. Output goes to stdout; a bad argument or a failure
// prints "error: " and the text on stderr and exits 1.
#include <cstdio>
#include <cstring>
#include <iostream>

#include "base/crash.h"
#include "base/error.h"
#include "tavrel_version.h"
#include "tools/commands.h"

static CrashHandlerAtStart install_crash_handler_early;

namespace {

// The usage and every command; with `full`, for --help (and the manual
// page made from it), also what the tool is and its options.
void usage(std::ostream& out, bool full) {
  out << "Usage: tavrel-tool COMMAND [ARGS]\n";
  if (full) {
    out << "\nThe command-line tool of the Tavrel report generator: units, times and\n"
           "zones as the reports show them, charts, world files of tavrel-host(1), and\n"
           "stored reports read back as an outline, text or HTML.\n\nCommands:\n";
  }
  // Two blanks after the name make a table of the manual page's commands.
  for (const tools::Command& c : tools::commands()) {
    out << "  " << c.name << (full ? "  " : " ") << c.usage << "\n";
  }
  if (full) {
    out << "\nOptions:\n"
           "  --help     print this text and exit\n"
           "  --version  print the version and exit\n"
           "\nExit status: 0 on success; 1 after \"error: \" and the text on standard error.\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    usage(std::cerr, false);
    return 1;
  }
  if (std::strcmp(argv[1], "--help") == 0) {
    usage(std::cout, true);
    return 0;
  }
  if (std::strcmp(argv[1], "--version") == 0) {
    std::cout << "tavrel-tool " << kTavrelVersion << "\n";
    return 0;
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
  usage(std::cerr, false);
  return 1;
}
