// The stand-in parent's event handling (queue 0): serves the configuration,
// takes INIT_OK, and writes each log request as a line to its log:
//   2026-11-22 10:00:00 log: text      (level 0)
//   2026-11-22 10:00:00 trace: text    (level 4096; other levels by number)
//
// It can also ask the reporter for metrics (GET_METRIC), once INIT_OK has
// come and again whenever the host asks, and writes each answer as a line:
//   2026-11-22 10:00:00 metric PATH (PHASE): 42                  (a counter)
//   2026-11-22 10:00:00 metric PATH (PHASE): n=1 min=2 max=2 sum=2 sum_squares=4
//   2026-11-22 10:00:00 metric PATH (PHASE): error Unknown metric
// PATH is the path's names joined by "/"; PHASE is "ready" for the requests
// sent on INIT_OK and the host's word for later ones. Nothing else is
// answered.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "dbms/control_records.h"
#include "queues/childqueue.h"
#include "queues/event.h"

namespace host {

// Writes "DATE CLOCK " + text and a line end to `log` and flushes.
void write_log_line(std::ostream& log, const std::string& text);

class ParentService {
 public:
  // `metrics`: the paths to ask the reporter for, each as names joined by
  // "/" (the empty text is the empty path).
  ParentService(control::Server_Configuration_Fields config, std::ostream& log,
                std::vector<std::string> metrics = {})
      : config_(std::move(config)), log_(log), metrics_(std::move(metrics)) {}

  // Handles one event that came to the parent; replies through `queue`.
  void handle(const queues::event& e, queues::childqueue& queue);
  // Sends GET_METRIC for each path to the reporter; the answers are logged
  // with `phase`.
  void ask_metrics(queues::childqueue& queue, const std::string& phase);
  // INIT_OK came from the reporter.
  bool initialized() const { return initialized_; }

 private:
  void metric_answer(const queues::event& e);

  control::Server_Configuration_Fields config_;
  std::ostream& log_;
  std::vector<std::string> metrics_;
  // Request number -> path and phase of the GET_METRIC requests sent.
  std::map<uint32_t, std::pair<std::string, std::string>> asked_;
  bool initialized_ = false;
};

}  // namespace host
