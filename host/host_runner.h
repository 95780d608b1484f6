// tavrel-host run: the stand-in siblings around one real reporter process.
//
// Loads the world, makes the messenger's pool with the parent (0), the
// scheduler (1) and the database (2) in this process, starts the reporter
// as sibling 12 and serves it until it ends. With an idle limit, an orderly
// stop (SYS_EXIT, then the messenger's shutdown) begins once that many
// seconds passed with no event exchanged or sent, no scheduled event due
// within them, and no subscription reply waiting to be sent or for the
// reporter's acknowledgement; with a stop time, it begins that many seconds after the start even
// while events flow (the reporter takes the SYS_EXIT when it is next free).
// When the world's faults make the database vanish, the host takes the
// endpoint away as if its process had died: the reporter gets SiblingDied.
// The whole database can then be written to a dump in the world
// format. The stop can send SYS_EXIT twice, to try the reporter's refusal
// of the second; metrics named in the options are asked for when the
// reporter is ready and again right after the stop's SYS_EXIT.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace host {

struct HostOptions {
  std::string world;                       // World file to load.
  std::string reporter;                    // The reporter program.
  std::vector<std::string> reporter_args;  // Its arguments; the report process takes none.
  std::optional<double> until_idle;        // Seconds without events before the stop.
  std::optional<double> stop_after;        // Seconds after the start before the stop, busy or not.
  std::string dump;                  // Where to write the database at the end; empty: nowhere.
  std::string log;                   // The parent's log file; empty: standard error.
  double eval_scale = 1.0;           // Scale of the subscriptions' least reply interval.
  bool progress = false;             // Progress lines of generations on standard output.
  std::vector<std::string> metrics;  // Metric paths ("queues/noblockings") to ask for.
  bool exit_twice = false;           // The stop sends SYS_EXIT twice.
  uint64_t pool_size = 64u << 20;    // Bytes of the shared pool.
  uint64_t area_size = 4u << 20;     // Bytes of each sibling's write area.
};

// Runs the host; returns the reporter's exit code (0 when it exited 0), or
// 128 + the signal when SIGINT, SIGTERM or SIGHUP stopped the host: the
// reporter is then killed and the FIFOs removed, and the dump still written.
// Raises error::Exception when the world can't be loaded or the system
// refuses the pool, the FIFOs or the process.
int run_host(const HostOptions& options);

}  // namespace host
