#include "queues/metering.h"

#include "base/meter.h"
#include "base/time_value.h"
#include "queues/events.h"

namespace queues {
namespace {

// Collects what Metric::reply gives into the matching answer event.
class ReplyEvent : public meter::MetricReply {
 public:
  explicit ReplyEvent(const event& request) : request_(request) {}

  void uint64Value(uint64_t value) override {
    answer =
        std::make_unique<Return_Metric_Uint64_Event>(request_.dest, request_.inresponse, value);
  }
  void timingValue(uint64_t n, uint64_t min, uint64_t max, uint64_t sum,
                   uint64_t sum_squares) override {
    answer = std::make_unique<Return_Metric_Timing_Event>(
        request_.dest, request_.inresponse,
        control::Return_Metric_Timing_Data{n, min, max, sum, sum_squares});
  }

  std::unique_ptr<event> answer;

 private:
  const event& request_;
};

std::unique_ptr<event> error_reply(const event& request, const char* text) {
  return std::make_unique<Return_Metric_Error_Event>(request.dest, request.inresponse, text);
}

meter::Metric* find_metric(const meter::Path& path, meter::Path& instance) {
  return dynamic_cast<meter::Metric*>(meter::root().find(instance, path.begin(), path.end()));
}

control::Metric describe(const meter::Metric& m) {
  return control::Metric{m.name(), m.unit(), m.description(), static_cast<int32_t>(m.type())};
}

control::Metric_Group describe(const meter::Group& g) {
  control::Metric_Group out;
  out.name = g.name();
  for (const meter::Group* child : g.groups()) out.groups.push_back(describe(*child));
  out.tables = g.tables();
  for (const meter::Metric* m : g.metrics()) out.metrics.push_back(describe(*m));
  return out;
}

std::unique_ptr<event> metric_value(const event& request, const meter::Path& path) {
  meter::Path instance;
  meter::Metric* metric = find_metric(path, instance);
  if (metric == nullptr) return error_reply(request, "Unknown metric");
  ReplyEvent reply(request);
  try {
    metric->reply(reply, instance);
  } catch (const meter::ENoSuchInstance&) {
    return error_reply(request, "No such instance");
  }
  if (!reply.answer) return error_reply(request, "No such instance");
  return std::move(reply.answer);
}

}  // namespace

std::unique_ptr<event> metering_reply(const event& request) {
  if (request.exception) return nullptr;
  if (const auto* get = dynamic_cast<const Get_Metric_Event*>(&request)) {
    return metric_value(request, get->data.id);
  }
  if (dynamic_cast<const List_Metrics_Event*>(&request) != nullptr) {
    return std::make_unique<Return_List_Metrics_Event>(request.dest, request.inresponse,
                                                       describe(meter::root()));
  }
  if (const auto* get = dynamic_cast<const Get_Metric_Type_Event*>(&request)) {
    meter::Path instance;
    meter::Metric* metric = find_metric(get->data.id, instance);
    if (metric == nullptr) return error_reply(request, "Unknown metric");
    return std::make_unique<Return_Get_Metric_Type_Event>(request.dest, request.inresponse,
                                                          describe(*metric));
  }
  return nullptr;
}

bool handle_metering_event(const event& request, childqueue& queue) {
  TimeValue start = TimeValue::now();
  std::unique_ptr<event> answer = metering_reply(request);
  if (!answer) return false;
  queue.send(*answer);
  if (request.type_index == GET_METRIC) meter::metering_time().addSince(start);
  return true;
}

}  // namespace queues
