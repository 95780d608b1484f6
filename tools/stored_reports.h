// The reports of a dump of tavrel-host (the world format, host/WORLD.md),
// read straight from its JSON for export: the Report objects with their
// domain path, their instances, the result tree in display order, and the
// series of the tree's charts and logs.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace tools {

// A dump that can't be read; tavrel-tool prints its text and exits 2.
struct BadDump {
  std::string text;
};

struct StoredInstance {
  const nlohmann::json* object;  // the ReportInstance
  std::string id;
};

struct StoredReport {
  const nlohmann::json* object;  // the Report
  std::string id;
  std::string path;  // the names of the domains above it and its own, joined by " / "
  int32_t zone;      // seconds east of UTC of its times; kLocalZone: the TZ's
  std::vector<StoredInstance> instances;
};

inline constexpr int32_t kLocalZone = 0xffffff;

class StoredReports {
 public:
  // Reads `file`; raises BadDump when it isn't a readable dump.
  explicit StoredReports(const std::string& file);

  const std::vector<StoredReport>& reports() const { return reports_; }
  // The report and instance of `id`; raises BadDump "No instance ID".
  std::pair<const StoredReport*, const StoredInstance*> instance(const std::string& id) const;
  // The records of the series `property` of `owner`; an empty array if none.
  const nlohmann::json& series(const std::string& owner, const std::string& property) const;

 private:
  void collect(const nlohmann::json& object, const std::string& path);

  nlohmann::json dump_;
  std::vector<StoredReport> reports_;
  std::map<std::pair<std::string, std::string>, const nlohmann::json*> series_;
};

// Runs a command over a dump: a BadDump, a dump value of the wrong type
// and an error::Exception (a bad argument) are written as "error: " and
// the text to standard error, and give exit code 2.
int with_dump_errors(const std::function<int()>& command);

// The children of `object` in display order: by `order`, those without one
// first, ties in stored order.
std::vector<const nlohmann::json*> display_order(const nlohmann::json& object);

// The plain value of a stored property ({"string": "x"} gives "x"); null
// when absent or null.
nlohmann::json plain_value(const nlohmann::json& object, const std::string& property);

// `seconds` as ISO 8601 with the offset of `zone` ("2023-11-13T00:00:00+01:00").
std::string iso_time(int64_t seconds, int32_t zone);

}  // namespace tools
