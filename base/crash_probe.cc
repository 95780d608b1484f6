// A program that crashes on purpose, for the crash handler's tests:
//   crash_probe segv | terminate | abort
#include <csignal>
#include <cstring>
#include <exception>

#include "base/crash.h"
#include "base/fatal.h"

static CrashHandlerAtStart install;

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  if (std::strcmp(argv[1], "segv") == 0) std::raise(SIGSEGV);
  if (std::strcmp(argv[1], "terminate") == 0) std::terminate();
  if (std::strcmp(argv[1], "abort") == 0) assertion_failed("probe");
  return 0;
}
