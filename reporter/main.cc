// tavrel-report: the report generator, a child process of the monitoring
// server. It takes no arguments but --help and --version; see
// reporter_main.h.
#include <cstring>
#include <iostream>

#include "base/crash.h"
#include "reporter/reporter_main.h"
#include "tavrel_version.h"

static CrashHandlerAtStart install_crash_handler_early;

namespace {

constexpr char kHelp[] =
    "Usage: tavrel-report\n"
    "\n"
    "The report generator of the Tavrel monitoring server. It is a child process:\n"
    "the parent starts it, with the shared memory and the FIFOs of its siblings\n"
    "named in the environment, and it serves the parent's report orders and\n"
    "mailing jobs until the parent closes its stream. It is not started by hand;\n"
    "tavrel-host(1) starts it with a database of its own.\n"
    "\n"
    "Options:\n"
    "  --help     print this text and exit\n"
    "  --version  print the version and exit\n"
    "\n"
    "Exit status: 0 after an orderly end; 1 when an error ended it, written to\n"
    "standard error as \"Caught: \" and its text.\n";

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::strcmp(argv[1], "--help") == 0) {
    std::cout << kHelp;
    return 0;
  }
  if (argc > 1 && std::strcmp(argv[1], "--version") == 0) {
    std::cout << "tavrel-report " << kTavrelVersion << "\n";
    return 0;
  }
  return reporter_main();
}
