// tavrel-tool reports: an overview of every report of a dump: its path,
// kind, schedule in words, period, destination, its instances and its open
// orders; --json for the same as JSON. A file that is no dump gives
// "error: " and exit 2.
#include <iostream>

#include "tools/commands.h"
#include "tools/stored_reports.h"

namespace tools {
namespace {

using nlohmann::json;

const char* const kKinds[] = {"",
                              "availability report",
                              "incident report",
                              "statistics report",
                              "domain overview",
                              "configuration report"};
const char* const kPeriods[] = {"",
                                "yesterday",
                                "last week, Monday to Sunday",
                                "last calendar month",
                                "last calendar year",
                                "everything until the order time",
                                "last calendar quarter"};
const char* const kDays[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                             "Friday", "Saturday", "Sunday"};

int64_t number(const json& object, const std::string& property, int64_t fallback = 0) {
  const json value = plain_value(object, property);
  return value.is_number() ? value.get<int64_t>() : fallback;
}

std::string text(const json& object, const std::string& property) {
  const json value = plain_value(object, property);
  return value.is_string() ? value.get<std::string>() : "";
}

std::string kind_words(const json& report) {
  const int64_t kind = number(report, "type", -1);
  return kind >= 1 && kind <= 5 ? kKinds[kind] : "kind " + std::to_string(kind);
}

// The schedule in words; the time of day is local time in the report's zone.
std::string schedule_words(const json& report) {
  const int64_t date = number(report, "date");
  const int64_t seconds = number(report, "time");
  char at[32];
  std::snprintf(at, sizeof at, " at %02lld:%02lld", static_cast<long long>(seconds / 3600 % 24),
                static_cast<long long>(seconds / 60 % 60));
  const int64_t frequency = number(report, "frequency");
  switch (date) {
    case 1:
      return std::string("every day") + at;
    case 2:
      return std::string("every week on ") +
             (frequency >= 0 && frequency <= 6 ? kDays[frequency]
                                               : "day " + std::to_string(frequency)) +
             at;
    case 3:
      return "every month on day " + std::to_string(frequency) + at;
    case 4:
      return std::string("on the first of every month") + at;
    case 5:
      return std::string("on the first of every quarter") + at;
    default:
      return "not scheduled";
  }
}

std::string period_words(const StoredReport& report) {
  const int64_t period = number(*report.object, "period", -1);
  if (period >= 1 && period <= 6) return kPeriods[period];
  const int64_t duration = number(*report.object, "duration");
  if (duration <= 0) return "none";
  const int64_t start = number(*report.object, "startTime");
  return "fixed, " + iso_time(start, report.zone) + " to " +
         iso_time(start + duration, report.zone);
}

json overview(const StoredReport& report) {
  const json& r = *report.object;
  json instances = json::array();
  for (const StoredInstance& i : report.instances) {
    const json& o = *i.object;
    const int64_t generated = number(o, "generated");
    instances.push_back(
        {{"id", i.id},
         {"order_time", iso_time(number(o, "orderTime"), report.zone)},
         {"progress", number(o, "progress")},
         {"generated", generated ? json(iso_time(generated, report.zone)) : json(nullptr)}});
  }
  json orders = json::array();
  for (const json* child : display_order(r)) {
    if (child->value("class", "") == "ReportOrder") {
      orders.push_back({{"id", child->value("id", "")},
                        {"order_time", iso_time(number(*child, "orderTime"), report.zone)}});
    }
  }
  return {{"id", report.id},
          {"path", report.path},
          {"kind", kind_words(r)},
          {"schedule", schedule_words(r)},
          {"period", period_words(report)},
          {"destination", text(r, "destination")},
          {"instances", instances},
          {"open_orders", orders}};
}

void print(const json& report) {
  std::cout << "Report " << report["id"].get<std::string>() << ": "
            << report["path"].get<std::string>() << "\n";
  for (const char* field : {"kind", "schedule", "period", "destination"}) {
    std::string label = std::string(field) + ":";
    label.resize(12, ' ');
    std::cout << "  " << label << " " << report[field].get<std::string>() << "\n";
  }
  for (const json& i : report["instances"]) {
    std::cout << "  instance     " << i["id"].get<std::string>() << ", ordered for "
              << i["order_time"].get<std::string>() << ", " << i["progress"].get<int64_t>()
              << " %, "
              << (i["generated"].is_null() ? std::string("not generated")
                                           : "generated " + i["generated"].get<std::string>())
              << "\n";
  }
  for (const json& o : report["open_orders"]) {
    std::cout << "  open order   " << o["id"].get<std::string>() << ", for "
              << o["order_time"].get<std::string>() << "\n";
  }
}

int run_reports(Args& args) {
  return with_dump_errors([&] {
    const std::string file = args.required("--dump");
    const bool as_json = args.flag("--json");
    args.done();
    StoredReports stored(file);
    json all = json::array();
    for (const StoredReport& report : stored.reports()) all.push_back(overview(report));
    if (as_json) {
      std::cout << all.dump(2) << "\n";
    } else {
      for (const json& report : all) print(report);
    }
    return 0;
  });
}

}  // namespace

std::vector<Command> reports_commands() {
  return {{"reports", "--dump FILE [--json]  (an overview of every report and its instances)",
           run_reports}};
}

}  // namespace tools
