#include "host/host_runner.h"

#include <chrono>
#include <fstream>
#include <iostream>
#include <memory>

#include "base/error.h"
#include "base/time_value.h"
#include "host/child_process.h"
#include "host/database_service.h"
#include "host/parent_messenger.h"
#include "host/parent_service.h"
#include "host/scheduler_service.h"
#include "host/stop_signals.h"
#include "host/temp_dir.h"
#include "host/world_dump.h"
#include "host/world_load.h"
#include "io/selector.h"
#include "io/timer.h"
#include "queues/events.h"

namespace host {
namespace {

double now_seconds() {
  TimeValue t = TimeValue::now();
  return t.seconds + t.microseconds / 1e6;
}

// The three endpoints and their services, and the reporter.
class Host {
 public:
  Host(const HostOptions& options, const std::string& fifo_prefix, Database& db,
       const control::Server_Configuration_Fields& config, std::ostream& log)
      : options_(options),
        log_(log),
        parent_(ParentMessenger::create(fifo_prefix, options.pool_size, options.area_size)),
        scheduler_(queues::schd, parent_->configuration()),
        database_(queues::dbms, parent_->configuration()),
        parent_queue_(*parent_),
        scheduler_queue_(scheduler_),
        database_queue_(database_),
        parent_service_(config, log, options.metrics),
        progress_(std::cout),
        scheduler_service_(&log),
        database_service_(db, options.eval_scale, options.progress ? &progress_ : nullptr, &log) {}

  int run();

 private:
  enum Source {
    kSignal = -2,
    kTimer = -1,
    kParent = 0,
    kScheduler = 1,
    kDatabase = 2,
    kReporter = 12
  };

  void serve_round();
  void take(Source from);
  std::optional<double> next_deadline() const;
  bool idle(double now) const;

  const HostOptions& options_;
  std::ostream& log_;
  std::unique_ptr<ParentMessenger> parent_;
  io::SiblingMessenger scheduler_;
  io::SiblingMessenger database_;
  queues::childqueue parent_queue_;
  queues::childqueue scheduler_queue_;
  queues::childqueue database_queue_;
  ParentService parent_service_;
  ProgressWatch progress_;
  SchedulerService scheduler_service_;
  DatabaseService database_service_;
  StopSignals stop_signals_;
  std::unique_ptr<ChildProcess> reporter_;
  const double started_ = now_seconds();
  double last_activity_ = started_;
  bool stopping_ = false;
  bool database_gone_ = false;
};

int Host::run() {
  auto stopped = [this] { return stop_signals_.received() != 0; };
  // The in-process siblings are up once the parent gave them their areas.
  while ((!scheduler_.write_ready() || !database_.write_ready()) && !stopped()) serve_round();
  if (!stopped()) {
    std::vector<std::string> argv{options_.reporter};
    argv.insert(argv.end(), options_.reporter_args.begin(), options_.reporter_args.end());
    reporter_ = std::make_unique<ChildProcess>(argv, parent_->child_environment(),
                                               parent_->pool_descriptor());
    while (!reporter_->exited() && !stopped()) serve_round();
  }
  if (stopped()) {
    // The reporter's destructor kills and reaps it, the caller's TempDir
    // takes the FIFOs.
    std::cerr << "tavrel-host: stopped by signal " << stop_signals_.received() << "\n";
    return 128 + stop_signals_.received();
  }
  parent_->child_died(kReporter);
  return reporter_->exit_code();
}

std::optional<double> Host::next_deadline() const {
  std::optional<double> when = scheduler_service_.next_time();
  auto earliest = [&](std::optional<double> t) {
    if (t && (!when || *t < *when)) when = t;
  };
  earliest(database_service_.next_due());
  // The siblings' start-up is signals only: a poll that absorbs them has no
  // event to return, so before the reporter runs the loop looks again soon.
  if (!reporter_) earliest(now_seconds() + 0.01);
  if (options_.until_idle && !stopping_) earliest(last_activity_ + *options_.until_idle);
  // A stop time before INIT_OK waits for it (an event), not for a timer.
  if (options_.stop_after && !stopping_ && parent_service_.initialized()) {
    earliest(started_ + *options_.stop_after);
  }
  return when;
}

bool Host::idle(double now) const {
  if (stopping_) return false;
  if (options_.stop_after && now - started_ >= *options_.stop_after) return true;
  if (!options_.until_idle) return false;
  double limit = *options_.until_idle;
  if (now - last_activity_ < limit) return false;
  // A subscription reply that waits for its interval, or that the reporter
  // has not acknowledged yet, is work to come.
  if (!database_gone_ && database_service_.replies_under_way()) return false;
  std::optional<double> next = scheduler_service_.next_time();
  return !next || *next > now + limit;
}

void Host::serve_round() {
  io::Selector<int> selector;
  selector.add(parent_queue_.in_front(), kParent);
  selector.add(scheduler_queue_.in_front(), kScheduler);
  if (!database_gone_) selector.add(database_queue_.in_front(), kDatabase);
  selector.add(stop_signals_, kSignal);
  if (reporter_ && !reporter_->exited()) selector.add(*reporter_, kReporter);
  std::unique_ptr<io::Timer> timer;
  if (std::optional<double> deadline = next_deadline()) {
    double wait = std::max(0.0, *deadline - now_seconds());
    timer = std::make_unique<io::Timer>(io::Timer::due_in(
        std::chrono::microseconds(static_cast<int64_t>(std::min(wait, 3600.0) * 1e6) + 1000)));
    selector.add(*timer, kTimer);
  }
  Source who = static_cast<Source>(selector.poll().second);
  if (who == kReporter || who == kSignal) return;
  if (who != kTimer) take(who);
  double now = now_seconds();
  // What is sent now gives the reporter work: it counts as activity, so a
  // host that woke late does not stop in the same round.
  size_t sent = scheduler_service_.send_due(scheduler_queue_, now);
  if (database_service_.gone() && !database_gone_) {
    // Nothing is sent on the endpoint from now on; its area goes back to
    // the pool and the siblings hear that it died.
    database_gone_ = true;
    parent_->child_died(kDatabase);
  }
  if (!database_gone_) sent += database_service_.send_due(database_queue_, now);
  if (sent > 0) last_activity_ = now;
  if (idle(now) && reporter_ && parent_service_.initialized()) {
    stopping_ = true;
    write_log_line(log_, "stop: SYS_EXIT to rept");
    parent_queue_.send(queues::Sys_Exit_Event(queues::rept, 0, {}));
    if (options_.exit_twice) parent_queue_.send(queues::Sys_Exit_Event(queues::rept, 0, {}));
    parent_service_.ask_metrics(parent_queue_, "stopping");
  }
}

void Host::take(Source from) {
  queues::childqueue& queue = from == kParent      ? parent_queue_
                              : from == kScheduler ? scheduler_queue_
                                                   : database_queue_;
  std::unique_ptr<queues::event> e = queue.next_event();
  if (!e) return;  // A sibling's stream ended; the reporter's exit tells the rest.
  last_activity_ = now_seconds();
  if (from == kParent) parent_service_.handle(*e, queue);
  if (from == kScheduler) scheduler_service_.handle(*e);
  if (from == kDatabase) database_service_.handle(*e, queue, last_activity_);
}

}  // namespace

int run_host(const HostOptions& options) {
  Database db;
  control::Server_Configuration_Fields config;
  load_world_file(options.world, db, config);

  std::ofstream log_file;
  if (!options.log.empty()) {
    log_file.open(options.log, std::ios::app);
    if (!log_file) throw error::ESystemError("Cannot open log file " + options.log);
  }
  std::ostream& log = options.log.empty() ? std::cerr : log_file;

  int code;
  {
    TempDir dir("tavrel-host");
    Host host(options, dir.path() + "/tavrelsmem", db, config, log);
    code = host.run();
  }
  if (!options.dump.empty()) {
    std::ofstream out(options.dump);
    out << dump_world(db, config).dump(1) << "\n";
    if (!out) throw error::ESystemError("Cannot write dump " + options.dump);
  }
  return code;
}

}  // namespace host
