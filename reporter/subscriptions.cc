#include "reporter/subscriptions.h"

#include <map>

#include "base/fatal.h"
#include "base/log.h"
#include "base/time_value.h"
#include "reporter/schedule.h"
#include "tql/catalogue.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/pattern.h"
#include "tql/schema.h"
#include "tql/value_of.h"

namespace {

dbms::Tql_Select_Data subscription(std::unique_ptr<tql::pattern_t> pattern, int32_t flags) {
  dbms::Tql_Select_Data s;
  s.root_ids = {tql::kRootId};
  s.pattern = std::move(*pattern);
  s.flags = flags;
  s.min_eval_interval = 15;
  return s;
}

void append(std::string& text, const char* part) { text += part; }
void append(std::string& text, const tql::id_t& id) { text += id.text(); }
void append(std::string& text, int64_t n) { text += std::to_string(n); }

// A trace message of texts, ids and numbers, put together only when tracing
// is on.
template <class... Parts>
void trace(const Parts&... parts) {
  if (!log_tracing()) return;
  std::string text;
  (append(text, parts), ...);
  log(text, kLogTrace);
}

uint32_t required_uint(const tql::patch_t& object, int32_t number) {
  uint32_t v = 0;
  tql::decode_uint(object.property(number), v);
  return v;
}

// The report's `date`: the value of an enum (whatever its enumeration), or
// of a uint. Missing, null or another kind raises errors::tql.
uint32_t schedule_kind(const tql::patch_t& report) {
  const tql::property_t& p = report.property(schema::kDate);
  const auto* kind = dynamic_cast<const tql::property_enum_t*>(&p);
  if (kind != nullptr && !kind->is_null) return kind->value.value;
  return required_uint(report, schema::kDate);
}

// An instance of the report as the first pass saw it.
struct SeenInstance {
  const tql::patch_t* instance;
  uint32_t worker_node;
};

// One report: both passes over its children.
class ReportTreatment {
 public:
  ReportTreatment(const tql::patch_t& report, ReportActions& actions)
      : report_(report), actions_(actions) {}

  void run() {
    trace("Got a report, id=", report_.id);
    for (const tql::patch_t& child : report_.children) {
      if (child.class_ == schema::kReportInstance) treat_instance(child);
    }
    schedule();
    for (const tql::patch_t& child : report_.children) {
      if (child.class_ == schema::kReportOrder) treat_order(child);
    }
  }

 private:
  void treat_instance(const tql::patch_t& instance) {
    trace("  Got an instance, id=", instance.id);
    const int64_t* order_time = tql::value_of<tql::property_date_t>(instance, schema::kOrderTime);
    uint32_t worker = required_uint(instance, schema::kWorkerNode);
    if (order_time != nullptr) by_order_time_.emplace(*order_time, SeenInstance{&instance, worker});
    if (worker != 0) {
      trace("Deleting partially generated report");
      try {
        actions_.delete_object(instance.id, instance.version);
      } catch (const errors::tql&) {
        trace("Could not delete, skipping.");
      }
      return;
    }
    trace("Instance is completely generated");
    if (order_time != nullptr && *order_time > last_) last_ = *order_time;
    const uint32_t* progress = tql::value_of<tql::property_uint_t>(instance, schema::kProgress);
    if (progress == nullptr) {
      log("Progress not found in report issue " + instance.id.text());
      return;
    }
    if (*progress == 100) return;
    log("Fixing up progress (was: " + std::to_string(*progress) + "%) for issue " +
        instance.id.text());
    try {
      actions_.set_progress(instance.id, instance.version, 100);
    } catch (const errors::tql& e) {
      log("Unable to fix progress: " + e.text());
    }
  }

  void schedule() {
    if (last_ == 0) last_ = actions_.now();
    uint32_t date = schedule_kind(report_);
    int64_t next = 0;
    if (date != kScheduleNone) {
      int64_t time = 0;
      tql::decode_date(report_.property(schema::kTime), time);
      uint32_t frequency = 0;
      if (date == kScheduleWeekly || date == kScheduleMonthly) {
        frequency = required_uint(report_, schema::kFrequency);
      }
      try {
        next = calc_next_generation_time(last_, static_cast<int32_t>(date), time,
                                         static_cast<int32_t>(frequency),
                                         timeZoneValue(kEnvironmentZone));
      } catch (const error::EParseError& e) {
        log("Cannot schedule report " + report_.id.text() + ": " + e.text());
        return;
      }
    }
    trace("Last: ", last_, ", next: ", next);
    if (next != 0) actions_.schedule(report_.id, report_.version, next);
  }

  void treat_order(const tql::patch_t& order) {
    trace("  Sporadic order, id=", order.id);
    const tql::property_t& p = order.property(schema::kOrderTime);
    const auto* date = dynamic_cast<const tql::property_date_t*>(&p);
    TAVREL_ASSERT(date != nullptr, "checked_cast failed, property kind " +
                                       std::to_string(p.type()) +
                                       " should have been property_date_t");
    auto found = by_order_time_.find(date->value);
    if (found == by_order_time_.end()) {
      trace("  I grab this order");
      // An order refused as stale stays: every generation changes the
      // report, so each update serves one order more, and none is lost.
      if (!actions_.generate(report_.id, report_.version, date->value)) return;
      delete_order(order, "Could not delete report order, skipping.");
    } else if (found->second.worker_node == 0) {
      delete_order(order, "Could not delete old report order, skipping.");
    }
    // Otherwise the unfinished instance for that time is being deleted; a
    // later reply shows the order alone, and it is carried out then.
  }

  void delete_order(const tql::patch_t& order, const char* failure) {
    try {
      actions_.delete_object(order.id, order.version);
    } catch (const errors::tql&) {
      trace(failure);
    }
  }

  const tql::patch_t& report_;
  ReportActions& actions_;
  std::map<int64_t, SeenInstance> by_order_time_;
  int64_t last_ = 0;
};

}  // namespace

dbms::Tql_Select_Data report_subscription() {
  auto domain = tql::make_pattern(schema::kDomain, tql::kPatternNested);
  auto report = tql::make_pattern(schema::kReport, tql::kPatternAllProps | tql::kPatternBit4);
  report = tql::add_next(
      std::move(report),
      tql::pattern_list(tql::make_pattern(schema::kReportInstance, tql::kPatternAllProps),
                        tql::make_pattern(schema::kReportOrder, tql::kPatternAllProps)));
  return subscription(tql::add_next(std::move(domain), std::move(report)), 5);
}

dbms::Tql_Select_Data mailing_subscription() {
  auto sendto = tql::make_pattern(schema::kReportSendTo, tql::kPatternAllProps);
  auto instance = tql::add_next(tql::make_pattern(schema::kReportInstance, 0), std::move(sendto));
  auto report = tql::add_next(tql::make_pattern(schema::kReport, 0), std::move(instance));
  return subscription(
      tql::add_next(tql::make_pattern(schema::kDomain, tql::kPatternNested), std::move(report)), 1);
}

void treat_subscriptions(const tql::patch_t& object, ReportActions& actions) {
  for (const tql::patch_t& child : object.children) {
    if (child.class_ == schema::kDomain) {
      treat_subscriptions(child, actions);
    } else if (child.class_ == schema::kReport) {
      ReportTreatment(child, actions).run();
    } else {
      log("treat_subscriptions got class " + tql::class_name(child.class_));
    }
  }
}
