// tavrel-tool export: the stored instances of a dump as CSV (RFC 4180
// quoting, CR LF line ends) or JSON, for spreadsheets and dashboards. Bad
// arguments and a file that is no dump give "error: " and exit 2.
#include <iostream>

#include "tools/commands.h"
#include "tools/stored_reports.h"

namespace tools {
namespace {

using nlohmann::json;

std::string text_of(const json& object, const std::string& property) {
  const json value = plain_value(object, property);
  if (value.is_string()) return value.get<std::string>();
  return value.is_null() ? "" : value.dump();
}

// One field of a CSV line, quoted when it holds a comma, a quote or a line break.
std::string csv_field(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

void csv_line(std::ostream& out, const std::vector<std::string>& fields) {
  for (size_t i = 0; i < fields.size(); ++i) out << (i ? "," : "") << csv_field(fields[i]);
  out << "\r\n";
}

const char* severity_name(int64_t severity) {
  switch (severity) {
    case 1:
      return "ok";
    case 2:
      return "warning";
    case 4:
      return "alert";
    default:
      return "unknown";
  }
}

class CsvWriter {
 public:
  CsvWriter(std::ostream& out, const StoredReports& stored) : out_(out), stored_(stored) {
    csv_line(out_, {"instance", "kind", "path", "label", "value", "refers_to", "time", "severity",
                    "count", "first", "last"});
  }

  void instance(const StoredReport& report, const StoredInstance& instance) {
    zone_ = report.zone;
    id_ = instance.id;
    items(*instance.object, "");
  }

 private:
  void items(const json& object, const std::string& path) {
    for (const json* child : display_order(object)) {
      const std::string cls = child->value("class", "");
      const std::string name = text_of(*child, "name");
      const std::string id = child->value("id", "");
      if (cls == "ReportResultFolder") {
        items(*child, path.empty() ? name : path + " / " + name);
      } else if (cls == "ReportResultRow") {
        csv_line(out_, {id_, "row", path, name, text_of(*child, "text"),
                        text_of(*child, "originNode"), "", "", "", "", ""});
      } else if (cls == "ReportResultLog") {
        for (const json& entry : stored_.series(id, "tsdbIncident")) {
          if (!entry.is_array() || entry.size() < 3 || !entry[0].is_number() ||
              !entry[2].is_number()) {
            continue;
          }
          csv_line(out_,
                   {id_, "log", path, name, entry[1].is_string() ? entry[1].get<std::string>() : "",
                    "", iso_time(entry[2].get<int64_t>(), zone_),
                    severity_name(entry[0].get<int64_t>()), "", "", ""});
        }
      } else if (cls == "ReportResultGraph") {
        const json& records = stored_.series(id, "tsdbIndex");
        const bool any = !records.empty() && records.front().is_array() &&
                         records.back().is_array() && records.front().size() > 1 &&
                         records.front()[0].is_number() && records.back()[1].is_number();
        csv_line(out_, {id_, "chart", path, name, "", "", "", "", std::to_string(records.size()),
                        any ? iso_time(records.front()[0].get<int64_t>(), zone_) : "",
                        any ? iso_time(records.back()[1].get<int64_t>(), zone_) : ""});
      }
    }
  }

  std::ostream& out_;
  const StoredReports& stored_;
  int32_t zone_ = kLocalZone;
  std::string id_;
};

// The object with its typed properties as stored, an "iso" text beside each
// date, its series (charts and logs) and its children in display order.
json tree(const json& object, const StoredReports& stored, int32_t zone) {
  json out = {{"class", object.value("class", "")}, {"id", object.value("id", "")}};
  json props = object.value("props", json::object());
  for (auto& [name, typed] : props.items()) {
    if (typed.contains("date") && typed["date"].is_number()) {
      typed["iso"] = iso_time(typed["date"].get<int64_t>(), zone);
    }
  }
  out["props"] = props;
  for (const char* property : {"tsdbIndex", "tsdbIncident"}) {
    const json& records = stored.series(out["id"].get<std::string>(), property);
    if (!records.empty()) out["series"][property] = records;
  }
  json children = json::array();
  for (const json* child : display_order(object)) children.push_back(tree(*child, stored, zone));
  out["children"] = children;
  return out;
}

json instance_json(const StoredReports& stored, const StoredReport& report,
                   const StoredInstance& instance) {
  return {{"report", report.id},
          {"report_path", report.path},
          {"zone_offset", report.zone == kLocalZone ? json(nullptr) : json(report.zone)},
          {"tree", tree(*instance.object, stored, report.zone)}};
}

int run_export(Args& args) {
  return with_dump_errors([&] {
    const std::string file = args.required("--dump");
    const auto id = args.option("--instance");
    const std::string format = args.required("--format");
    args.done();
    if (format != "csv" && format != "json") throw BadDump{"--format must be csv or json"};
    StoredReports stored(file);
    std::vector<std::pair<const StoredReport*, const StoredInstance*>> chosen;
    if (id) {
      chosen.push_back(stored.instance(*id));
    } else {
      for (const StoredReport& report : stored.reports()) {
        for (const StoredInstance& instance : report.instances)
          chosen.push_back({&report, &instance});
      }
    }
    if (format == "csv") {
      CsvWriter csv(std::cout, stored);
      for (auto [report, instance] : chosen) csv.instance(*report, *instance);
    } else {
      json all = json::array();
      for (auto [report, instance] : chosen)
        all.push_back(instance_json(stored, *report, *instance));
      std::cout << all.dump(2) << "\n";
    }
    return 0;
  });
}

}  // namespace

std::vector<Command> export_commands() {
  return {{"export",
           "--dump FILE [--instance ID] --format csv|json  (stored reports as CSV or JSON)",
           run_export}};
}

}  // namespace tools
