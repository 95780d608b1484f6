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
#include "base/program_path.h"
#include "host/host_runner.h"
#include "host/store_database.h"
#include "host/world_load.h"
#include "tavrel_version.h"

static CrashHandlerAtStart install_crash_handler_early;

namespace {

int run(cli::Args& args) {
  host::HostOptions options;
  options.world = args.required("--world");
  // The reporter that goes with this program: installed, or in the build tree.
  options.reporter =
      args.option("--reporter").value_or(paths::companion_program("tavrel-report", "../reporter"));
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

constexpr char kUsage[] =
    "Usage: tavrel-host run --world FILE [OPTION]...\n"
    "  or:  tavrel-host check --world FILE\n";

constexpr char kHelp[] =
    "\n"
    "The stand-in parent, scheduler and database of tavrel-report(8): loads a world\n"
    "file (objects, time series, configuration), starts the reporter as its child\n"
    "over shared memory and FIFOs, serves its database requests and report orders,\n"
    "and writes the database back as a world file at the end.\n"
    "\n"
    "Commands:\n"
    "  run        run the reporter on the world until it ends or is stopped\n"
    "  check      check a world file; prints \"ok\" or the first error with its JSON path\n"
    "\n"
    "Options:\n"
    "  --world FILE          the world file to load\n"
    "  --reporter PATH       the reporter program (default: the installed tavrel-report,\n"
    "                        or the one of the build tree)\n"
    "  --until-idle SECONDS  stop once nothing happened for this long\n"
    "  --stop-after SECONDS  stop after this long in any case\n"
    "  --dump FILE           write the database to FILE at the end, as a world file\n"
    "  --log FILE            the host's log file (default: standard error)\n"
    "  --eval-scale X        scale the subscriptions' least reply interval by X\n"
    "  --progress            print a line each time a report instance's progress changes\n"
    "  --metric PATH         ask the reporter for the metric PATH (\"queues/noblockings\")\n"
    "                        at the end; repeatable\n"
    "  --exit-twice          send the stop (SYS_EXIT) twice, to try the reporter's\n"
    "                        refusal of the second\n"
    "  --help                print this text and exit\n"
    "  --version             print the version and exit\n"
    "\n"
    "Exit status: run gives the reporter's exit code; check 0 or 1; a failure of\n"
    "the host itself 2, after \"error: \" and the text.\n";

int main(int argc, char** argv) {
  std::string command = argc > 1 ? argv[1] : "";
  if (command == "--help") {
    std::cout << kUsage << kHelp;
    return 0;
  }
  if (command == "--version") {
    std::cout << "tavrel-host " << kTavrelVersion << "\n";
    return 0;
  }
  cli::Args args(std::vector<std::string>(argv + std::min(argc, 2), argv + argc));
  try {
    if (command == "run") return run(args);
    if (command == "check") return check(args);
    std::cerr << kUsage;
    return 2;
  } catch (const error::Exception& e) {
    std::cerr << "error: " << e.text() << "\n";
    return 2;
  }
}
