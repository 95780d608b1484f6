#include "tools/stored_reports.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <iostream>

#include "base/error.h"

namespace tools {

using nlohmann::json;

namespace {

// The stored children (a reference into the dump, never a copy).
const json& children_of(const json& object) {
  static const json kNone = json::array();
  auto it = object.find("children");
  return it != object.end() && it->is_array() ? *it : kNone;
}

}  // namespace

StoredReports::StoredReports(const std::string& file) {
  std::ifstream in(file);
  if (!in) throw BadDump{"Cannot read " + file};
  try {
    dump_ = json::parse(in);
  } catch (const json::exception&) {
    throw BadDump{file + " is no dump of tavrel-host: not JSON"};
  }
  if (!dump_.is_object() || !dump_.contains("objects") || !dump_["objects"].is_object()) {
    throw BadDump{file + " is no dump of tavrel-host: no \"objects\""};
  }
  if (dump_.contains("series") && !dump_["series"].is_array()) {
    throw BadDump{file + " is no dump of tavrel-host: \"series\" is no list"};
  }
  if (!dump_.contains("series")) dump_["series"] = json::array();
  for (const json& s : dump_["series"]) {
    if (s.is_object() && s.contains("owner") && s["owner"].is_string() && s.contains("property") &&
        s["property"].is_string() && s.contains("records")) {
      series_[{s["owner"].get<std::string>(), s["property"].get<std::string>()}] = &s["records"];
    }
  }
  collect(dump_["objects"], "");
}

void StoredReports::collect(const json& object, const std::string& path) {
  const std::string cls = object.value("class", "");
  const json name = plain_value(object, "name");
  const std::string here = name.is_string() ? name.get<std::string>() : "";
  const std::string full = path.empty() ? here : path + " / " + here;
  if (cls == "Report") {
    StoredReport report{&object, object.value("id", ""), full, kLocalZone, {}};
    const json zone = plain_value(object, "timeZone");
    if (zone.is_number_integer()) report.zone = zone.get<int32_t>();
    for (const json* child : display_order(object)) {
      if (child->value("class", "") == "ReportInstance") {
        report.instances.push_back({child, child->value("id", "")});
      }
    }
    reports_.push_back(std::move(report));
    return;
  }
  // The root domain's name isn't part of a path.
  const std::string below = object.contains("id") && object["id"] != "0.1" ? full : "";
  for (const json& child : children_of(object)) collect(child, below);
}

std::pair<const StoredReport*, const StoredInstance*> StoredReports::instance(
    const std::string& id) const {
  for (const StoredReport& report : reports_) {
    for (const StoredInstance& instance : report.instances) {
      if (instance.id == id) return {&report, &instance};
    }
  }
  throw BadDump{"No instance " + id};
}

const json& StoredReports::series(const std::string& owner, const std::string& property) const {
  static const json kNone = json::array();
  auto it = series_.find({owner, property});
  return it == series_.end() ? kNone : *it->second;
}

int with_dump_errors(const std::function<int()>& command) {
  try {
    return command();
  } catch (const BadDump& e) {
    std::cerr << "error: " << e.text << "\n";
  } catch (const json::exception& e) {
    // A value of another type than a dump has there.
    std::cerr << "error: the file is no dump of tavrel-host: " << e.what() << "\n";
  } catch (const error::Exception& e) {
    std::cerr << "error: " << e.text() << "\n";
  }
  return 2;
}

std::vector<const json*> display_order(const json& object) {
  std::vector<const json*> children;
  for (const json& child : children_of(object)) children.push_back(&child);
  std::stable_sort(children.begin(), children.end(), [](const json* a, const json* b) {
    const json oa = plain_value(*a, "order"), ob = plain_value(*b, "order");
    if (!oa.is_number() || !ob.is_number()) return !oa.is_number() && ob.is_number();
    return oa.get<int64_t>() < ob.get<int64_t>();
  });
  return children;
}

json plain_value(const json& object, const std::string& property) {
  if (!object.contains("props") || !object["props"].contains(property)) return nullptr;
  const json& typed = object["props"][property];
  if (!typed.is_object() || typed.empty() || typed.contains("null")) return nullptr;
  const json& value = typed.begin().value();
  if (typed.contains("enum") && value.is_array() && value.size() == 2) return value[1];
  return value;
}

std::string iso_time(int64_t seconds, int32_t zone) {
  std::time_t t = static_cast<std::time_t>(seconds);
  std::tm tm{};
  long offset = zone;
  if (zone == kLocalZone) {
    localtime_r(&t, &tm);
    offset = tm.tm_gmtoff;
  } else {
    std::time_t shifted = t + zone;
    gmtime_r(&shifted, &tm);
  }
  char text[64];
  const long minutes = (offset < 0 ? -offset : offset) / 60;
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d%c%02ld:%02ld", tm.tm_year + 1900,
                tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec, offset < 0 ? '-' : '+',
                minutes / 60, minutes % 60);
  return text;
}

}  // namespace tools
