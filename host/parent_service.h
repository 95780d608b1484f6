// The stand-in parent's event handling (queue 0): serves the configuration,
// takes INIT_OK, and writes each log request as a line to its log:
//   2026-11-22 10:00:00 log: text      (level 0)
//   2026-11-22 10:00:00 trace: text    (level 4096; other levels by number)
// Nothing else is answered.
#pragma once

#include <ostream>

#include "dbms/control_records.h"
#include "queues/childqueue.h"
#include "queues/event.h"

namespace host {

class ParentService {
 public:
  ParentService(control::Server_Configuration_Fields config, std::ostream& log)
      : config_(std::move(config)), log_(log) {}

  // Handles one event that came to the parent; replies through `queue`.
  void handle(const queues::event& e, queues::childqueue& queue);
  // INIT_OK came from the reporter.
  bool initialized() const { return initialized_; }

 private:
  control::Server_Configuration_Fields config_;
  std::ostream& log_;
  bool initialized_ = false;
};

}  // namespace host
