#include "host/parent_service.h"

#include "base/time_text.h"
#include "base/time_value.h"
#include "base/zone.h"
#include "queues/events.h"

namespace host {
namespace {

std::vector<std::string> split_path(const std::string& text) {
  std::vector<std::string> names;
  if (text.empty()) return names;
  size_t start = 0;
  for (;;) {
    size_t slash = text.find('/', start);
    names.push_back(text.substr(start, slash - start));
    if (slash == std::string::npos) return names;
    start = slash + 1;
  }
}

}  // namespace

void write_log_line(std::ostream& log, const std::string& text) {
  int32_t now = TimeValue::now().seconds;  // One reading for date and clock.
  log << date2str(now, timeZoneValue(0)) << " " << clock2str(now % 86400) << " " << text << "\n";
  log.flush();
}

void ParentService::handle(const queues::event& e, queues::childqueue& queue) {
  using namespace queues;
  if (e.exception) return;
  switch (e.type_index) {
    case REQUEST_SERVER_CONFIGURATION:
      queue.send(Server_Configuration_Event(e.dest, e.inresponse, config_));
      break;
    case INIT_OK:
      initialized_ = true;
      ask_metrics(queue, "ready");
      break;
    case SYSTEM_LOG_REQUEST: {
      const auto& request = dynamic_cast<const Log_Request_Event&>(e).data;
      std::string level = request.log_type == 0      ? "log"
                          : request.log_type == 4096 ? "trace"
                                                     : "level " + std::to_string(request.log_type);
      write_log_line(log_, level + ": " + request.msg);
      break;
    }
    case RETURN_METRIC_ERROR:
    case RETURN_METRIC_UINT64:
    case RETURN_METRIC_TIMING:
      metric_answer(e);
      break;
    default:
      break;
  }
}

void ParentService::ask_metrics(queues::childqueue& queue, const std::string& phase) {
  for (const std::string& path : metrics_) {
    uint32_t request = queue.new_request_number();
    asked_[request] = {path, phase};
    queue.send(queues::Get_Metric_Event(queues::rept, request, {split_path(path)}));
  }
}

void ParentService::metric_answer(const queues::event& e) {
  using namespace queues;
  auto asked = asked_.find(e.inresponse);
  if (asked == asked_.end()) return;
  std::string value;
  if (const auto* error = dynamic_cast<const Return_Metric_Error_Event*>(&e)) {
    value = "error " + error->data;
  } else if (const auto* count = dynamic_cast<const Return_Metric_Uint64_Event*>(&e)) {
    value = std::to_string(count->data);
  } else if (const auto* timing = dynamic_cast<const Return_Metric_Timing_Event*>(&e)) {
    const control::Return_Metric_Timing_Data& t = timing->data;
    value = "n=" + std::to_string(t.n) + " min=" + std::to_string(t.min) +
            " max=" + std::to_string(t.max) + " sum=" + std::to_string(t.sum) +
            " sum_squares=" + std::to_string(t.sum_squares);
  }
  write_log_line(log_,
                 "metric " + asked->second.first + " (" + asked->second.second + "): " + value);
  asked_.erase(asked);
}

}  // namespace host
