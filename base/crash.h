// The crash handler. After install_crash_handler(), a fault signal (SIGSEGV,
// SIGBUS, SIGILL, SIGFPE), std::terminate and a pure virtual call all end in
// one routine that:
//   1. writes a dump file beside the program file (see dump_path_for): the
//      signal, a backtrace and /proc/self/maps;
//   2. forms the result text, one of
//        "An application error has been detected. Please report this error
//         and submit the dump file in '<path>' along with your error report"
//        "Failed to create dump file '<path>' (error <errno>)"
//        "Failed to save dump file to '<path>' (error <errno>)"
//   3. gives it to `notify` (the system log, as a rule) and writes it to
//      standard error, which stands in for the message box of a desktop;
//   4. lets the signal take its default course, so the process ends by it.
// SIGABRT is left alone: it is the fatal assertion's own way out.
// The routine uses only async-signal-safe calls and its own static buffers.
#pragma once

#include <string>

using CrashNotify = void (*)(const char* text);

void install_crash_handler(CrashNotify notify);

// The dump path for a program path: all from the last '.' of the file name
// on is replaced by ".dmp"; a file name without '.' gets ".dmp" added. Only
// the file name is looked at, since on this platform directories may hold
// dots while programs carry no extension. An empty program path gives
// "lumenara.dmp".
std::string dump_path_for(const std::string& program_path);

// Installs the handler with log_system_event as notify, from a static
// initialiser; a program links this object to have it before main().
struct CrashHandlerAtStart {
  CrashHandlerAtStart();
};
