#include "host/report_test_world.h"

#include <stdexcept>

#include "host/world_dump.h"
#include "host/world_load.h"
#include "host/world_names.h"

namespace host::testing {

namespace {

using json = nlohmann::json;

json str(const std::string& s) { return {{"string", s}}; }

json check() {
  return {{"class", "Check"},
          {"id", "0.1.5"},
          {"props",
           {{"name", str("load")},
            {"siblingName", str("load")},
            {"longLabel", str("load")},
            {"active", {{"bool", true}}},
            {"dataType", {{"uint", 5}}},
            {"frequency", {{"uint", 60}}},
            {"alertStrategy", {{"enum", {65539, 0}}}},
            {"alertGroup", {{"null", "object"}}},
            {"warnIfAbove", {{"real", 60}}},
            {"alertIfAbove", {{"real", 65}}}}}};
}

json samples() {
  json records = json::array();
  for (int k = 0; k < 240; ++k) {
    const int64_t start = kDataStart + 60 * k;
    if (k % 40 == 0) {
      records.push_back({start, start + 60, 0, 0, 0, 0, 1});
    } else {
      const int v = 15 + k % 60;
      records.push_back({start, start + 60, v, v + 5, v + 10, 1, 0});
    }
  }
  return records;
}

const json* find(const json& o, const std::string& id) {
  if (o.value("id", "") == id) return &o;
  if (!o.contains("children")) return nullptr;
  for (const json& child : o["children"]) {
    if (const json* found = find(child, id)) return found;
  }
  return nullptr;
}

}  // namespace

json report_world() {
  json group = {{"class", "CheckGroup"},
                {"id", "0.1.4"},
                {"props", {{"siblingName", str("System")}}},
                {"children", {check()}}};
  json node = {{"class", "Node"},
               {"id", "0.1.3"},
               {"props",
                {{"name", str("web")},
                 {"longLabel", str("web.example.test")},
                 {"alertGroup", {{"null", "object"}}}}},
               {"children", {group}}};
  json servers = {{"class", "Domain"},
                  {"id", "0.1.2"},
                  {"props", {{"name", str("Servers")}, {"treeLabel", str("Servers")}}},
                  {"children", {node}}};
  json root = {{"class", "Domain"},
               {"id", "0.1"},
               {"props", {{"name", str("Root")}, {"treeLabel", str("Root")}}},
               {"children", {servers}}};
  return {
      {"objects", root},
      {"series",
       {{{"owner", "0.1.5"}, {"property", "tsdbIndex"}, {"data_type", 5}, {"records", samples()}}}},
      {"cluster", {{"props", {{"reportGenerator", str("main")}}}}}};
}

json report_object(const std::string& id, const std::string& name, const std::string& contains,
                   uint32_t kind, const std::string& destination) {
  json p = {{"name", str(name)},
            {"type", {{"enum", {65566, kind}}}},
            {"period", {{"null", "enum"}}},
            {"startTime", {{"date", kDataStart}}},
            {"duration", {{"uint", 14400}}},
            {"contains", {{"object_set", {contains}}}},
            {"date", {{"enum", {65546, 0}}}},
            {"time", {{"date", 0}}},
            {"frequency", {{"uint", 0}}},
            {"order", {{"uint", 0}}},
            {"maxInstances", {{"null", "uint"}}},
            {"timeZone", {{"int", 0}}}};
  if (!destination.empty()) p["destination"] = str(destination);
  json order = {{"class", "ReportOrder"}, {"props", {{"orderTime", {{"date", kOrderTime}}}}}};
  return {{"class", "Report"}, {"id", id}, {"props", p}, {"children", {order}}};
}

tql::id_t id_of(const std::string& text) { return parse_id(text, "id"); }

json& object_in(json& world, const std::string& id) {
  const json* found = find(world["objects"], id);
  if (found == nullptr) throw std::out_of_range("no object " + id + " in the world");
  return const_cast<json&>(*found);
}

// Through the text form, as a world file comes: numbers built in C++ are
// signed, those read from a file unsigned when they can be.
WorldDatabase::WorldDatabase(const json& world) { load_world_text(world.dump(), store_, config_); }

json WorldDatabase::object(const std::string& id) const {
  const json dump = dump_world(store_, config_);
  const json* found = find(dump["objects"], id);
  return found ? *found : json();
}

std::vector<json> WorldDatabase::children(const std::string& id,
                                          const std::string& class_name) const {
  std::vector<json> out;
  const json o = object(id);
  if (o.is_null() || !o.contains("children")) return out;
  for (const json& child : o["children"]) {
    if (child["class"] == class_name) out.push_back(child);
  }
  return out;
}

json WorldDatabase::series(const std::string& id, const std::string& property) const {
  const json dump = dump_world(store_, config_);
  if (!dump.contains("series")) return json::array();
  for (const json& s : dump["series"]) {
    if (s["owner"] == id && s["property"] == property) return s["records"];
  }
  return json::array();
}

std::vector<std::string> WorldDatabase::incidents(const std::string& id) const {
  std::vector<std::string> out;
  for (const json& record : series(id, "tsdbIncident")) out.push_back(record[1]);
  return out;
}

json value_of(const json& object, const std::string& property) {
  if (!object.contains("props") || !object["props"].contains(property)) return json();
  return object["props"][property].begin().value();
}

}  // namespace host::testing
