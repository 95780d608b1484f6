// tavrel-host: the stand-in parent, scheduler and database of the report
// process, for trying the product on one machine and for end-to-end tests.
//
//   tavrel-host run --world FILE [--reporter PATH] [--until-idle SECONDS] [--stop-after SECONDS]
//                   [--dump FILE] [--log FILE] [--eval-scale X] [--progress]
//                   [--metric PATH]... [--exit-twice]
//   tavrel-host check --world FILE
//
// run: exit code 0 when the reporter exited 0, else the reporter's code (1
// at least). check: prints "ok" or "error: " + the first error with its JSON
// path, exit 1. --progress writes a line to standard output each time a
// ReportInstance's `progress` changes (host/progress_watch.h), for following
// a generation as it runs. A failure of the host itself: "error: " + text, exit 2.
#include <iostream>
#include <string>
#include <vector>

#include "base/args.h"
#include "base/crash.h"
#include "base/error.h"
#include "host/host_runner.h"
#include "host/store_database.h"
#include "host/world_load.h"

static CrashHandlerAtStart install_crash_handler_early;

namespace {

// The reporter beside this program, as the build and the install lay them.
std::string default_reporter(const char* argv0) {
  std::string self = argv0;
  size_t slash = self.rfind('/');
  std::string dir = slash == std::string::npos ? "." : self.substr(0, slash);
  return dir + "/../reporter/tavrel-report";
}

int run(cli::Args& args, const char* argv0) {
  host::HostOptions options;
  options.world = args.required("--world");
  options.reporter = args.option("--reporter").value_or(default_reporter(argv0));
  if (auto idle = args.option("--until-idle")) options.until_idle = cli::Args::to_double(*idle);
  if (auto stop = args.option("--stop-after")) options.stop_after = cli::Args::to_double(*stop);
  options.dump = args.option("--dump").value_or("");
  options.log = args.option("--log").value_or("");
  if (auto scale = args.option("--eval-scale")) options.eval_scale = cli::Args::to_double(*scale);
  options.progress = args.flag("--progress");
  while (auto metric = args.option("--metric")) options.metrics.push_back(*metric);
  options.exit_twice = args.flag("--exit-twice");
  args.done();
  int code = host::run_host(options);
  std::cerr << "tavrel-host: reporter exited with " << code << "\n";
  return code;
}

int check(cli::Args& args) {
  std::string world = args.required("--world");
  args.done();
  host::Database db;
  control::Server_Configuration_Fields config;
  try {
    host::load_world_file(world, db, config);
  } catch (const error::Exception& e) {
    std::cerr << "error: " << e.text() << "\n";
    return 1;
  }
  std::cout << "ok\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::string command = argc > 1 ? argv[1] : "";
  cli::Args args(std::vector<std::string>(argv + std::min(argc, 2), argv + argc));
  try {
    if (command == "run") return run(args, argv[0]);
    if (command == "check") return check(args);
    std::cerr << "usage: tavrel-host run --world FILE [--reporter PATH] [--until-idle SECONDS]\n"
                 "                       [--stop-after SECONDS]\n"
                 "                       [--dump FILE] [--log FILE] [--eval-scale X] [--progress]\n"
                 "                       [--metric PATH]... [--exit-twice]\n"
                 "       tavrel-host check --world FILE\n";
    return 2;
  } catch (const error::Exception& e) {
    std::cerr << "error: " << e.text() << "\n";
    return 2;
  }
}
