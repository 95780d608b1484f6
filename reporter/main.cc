// tavrel-report: the report generator, a child process of the monitoring
// server. It takes no arguments; see reporter_main.h.
#include "base/crash.h"
#include "reporter/reporter_main.h"

static CrashHandlerAtStart install_crash_handler_early;

int main() { return reporter_main(); }
