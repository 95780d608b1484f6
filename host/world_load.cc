#include "host/world_load.h"

#include <fstream>
#include <set>
#include <sstream>

#include "host/store_errors.h"
#include "host/world_config.h"
#include "host/world_names.h"
#include "host/world_series.h"
#include "host/world_values.h"
#include "tql/schema.h"

namespace host {

namespace {

using Json = nlohmann::json;

// Deeper JSON is refused before it is parsed, so that no walk over a parsed
// value (a copy, a comparison, a dump: the JSON library does these
// recursively) can run out of stack. An object level of the tree takes two
// JSON levels (the object and its children array), so objects at kMaxDepth
// stay well within it and get the loader's own message.
constexpr size_t kMaxJsonDepth = 1024;

// Raises when arrays and objects in `text` nest deeper than kMaxJsonDepth.
// Brackets within strings don't count; syntax is left to the parser.
void check_nesting(const std::string& text) {
  size_t depth = 0;
  bool in_string = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (in_string) {
      if (c == '\\') {
        ++i;
      } else if (c == '"') {
        in_string = false;
      }
    } else if (c == '"') {
      in_string = true;
    } else if (c == '[' || c == '{') {
      if (++depth > kMaxJsonDepth) {
        throw EWorldError("", "not valid JSON: arrays and objects nested deeper than " +
                                  std::to_string(kMaxJsonDepth) + " levels at byte " +
                                  std::to_string(i + 1));
      }
    } else if ((c == ']' || c == '}') && depth > 0) {
      --depth;
    }
  }
}

// Raises unless `value` is an object whose members are all in `allowed`.
void check_members(const Json& value, const std::string& path, const std::set<std::string>& allowed,
                   const char* what) {
  if (!value.is_object()) throw EWorldError(path, std::string("expected ") + what);
  for (auto it = value.begin(); it != value.end(); ++it) {
    if (allowed.count(it.key()) == 0) throw EWorldError(path + "." + it.key(), "unknown member");
  }
}

const Json& required(const Json& value, const std::string& path, const char* key) {
  auto it = value.find(key);
  if (it == value.end()) throw EWorldError(path, std::string("missing member \"") + key + "\"");
  return *it;
}

std::string string_member(const Json& value, const std::string& path, const char* key) {
  const Json& v = required(value, path, key);
  if (!v.is_string()) throw EWorldError(path + "." + key, "expected a string");
  return v.get<std::string>();
}

// Whether `object` has `name` or `siblingName` equal to `segment`.
bool named(const StoredObject& object, const std::string& segment) {
  for (int32_t number : {schema::kName, schema::kSiblingName}) {
    auto it = object.properties.find(number);
    if (it == object.properties.end() || it->second->is_null || it->second->type() != 7) continue;
    if (static_cast<const tql::property_string_t&>(*it->second).value == segment) return true;
  }
  return false;
}

class WorldLoader {
 public:
  explicit WorldLoader(Database& db) : db_(db) {}

  void load(const Json& world, control::Server_Configuration_Fields& config);

 private:
  // A property whose value refers to objects, set once all objects exist.
  struct Reference {
    tql::id_t object;
    int32_t number;
    const Json* value;
    std::string path;
  };

  void reserve_ids(const Json& object, const std::string& path, int depth);
  void load_root(const Json& object, const std::string& path);
  void load_object(const Json& object, const std::string& path, const tql::id_t& parent);
  void load_children(const Json& object, const std::string& path, const tql::id_t& parent);
  void apply_props(const tql::id_t& id, const Json& object, const std::string& path);
  void set_properties(const tql::id_t& id, std::vector<tql::property_ptr> props,
                      const std::string& path);
  void load_series(const Json& series, const std::string& path);
  void load_faults(const Json& faults);
  tql::id_t resolve(const std::string& reference, const std::string& path) const;
  tql::id_t next_id();

  Database& db_;
  const Resolver resolver_ = [this](const std::string& r, const std::string& p) {
    return resolve(r, p);
  };
  std::set<tql::id_t> reserved_;
  std::vector<Reference> references_;
  uint32_t serial_ = 1;
};

void WorldLoader::load(const Json& world, control::Server_Configuration_Fields& config) {
  check_members(world, "", {"comment", "config", "objects", "cluster", "series", "faults"},
                "a world: an object with config, objects, cluster, series and faults");
  if (world.contains("faults")) load_faults(world["faults"]);
  if (world.contains("config")) config_from_json(world["config"], "config", config);
  if (world.contains("objects")) {
    reserve_ids(world["objects"], "objects", 0);
    load_root(world["objects"], "objects");
  }
  if (world.contains("cluster")) {
    check_members(world["cluster"], "cluster", {"props"}, "an object with props");
    apply_props(tql::id_t{}, world["cluster"], "cluster");
  }
  for (const Reference& r : references_) {
    std::vector<tql::property_ptr> props;
    props.push_back(property_from_json(r.number, *r.value, r.path, resolver_));
    set_properties(r.object, std::move(props), r.path);
  }
  if (world.contains("series")) {
    const Json& series = world["series"];
    if (!series.is_array()) throw EWorldError("series", "expected an array");
    for (size_t i = 0; i < series.size(); ++i) {
      load_series(series[i], "series[" + std::to_string(i) + "]");
    }
  }
}

void WorldLoader::load_faults(const Json& faults) {
  check_members(faults, "faults",
                {"subscription_status", "fail_create", "fail_update", "vanish_after"},
                "an object with subscription_status, fail_create, fail_update and vanish_after");
  if (faults.contains("vanish_after")) {
    const Json& count = faults["vanish_after"];
    if (!count.is_number_integer() || count.get<int64_t>() < 0) {
      throw EWorldError("faults.vanish_after", "expected a number of requests from 0");
    }
    db_.set_vanish_after(count.get<int64_t>());
  }
  if (faults.contains("subscription_status")) {
    const Json& status = faults["subscription_status"];
    if (!status.is_number_integer() || status.get<int64_t>() < 0 ||
        status.get<int64_t>() > INT32_MAX) {
      throw EWorldError("faults.subscription_status", "expected a status from 0 to 2147483647");
    }
    db_.set_subscription_fault(static_cast<int32_t>(status.get<int64_t>()));
  }
  for (const char* kind : {"fail_create", "fail_update"}) {
    if (!faults.contains(kind)) continue;
    const Json& classes = faults[kind];
    const std::string at = std::string("faults.") + kind;
    if (!classes.is_array()) throw EWorldError(at, "expected an array of class names");
    for (size_t i = 0; i < classes.size(); ++i) {
      const std::string path = at + "[" + std::to_string(i) + "]";
      if (!classes[i].is_string()) throw EWorldError(path, "expected a class name");
      const int32_t number = class_number(classes[i].get<std::string>(), path);
      if (kind == std::string("fail_create")) {
        db_.fail_creates_of(number);
      } else {
        db_.fail_updates_of(number);
      }
    }
  }
}

void WorldLoader::reserve_ids(const Json& object, const std::string& path, int depth) {
  if (!object.is_object()) return;  // load_object says what is wrong.
  if (depth > kMaxDepth) {
    throw EWorldError(path, "objects nested deeper than " + std::to_string(kMaxDepth) + " levels");
  }
  auto id = object.find("id");
  if (id != object.end() && id->is_string()) {
    tql::id_t parsed = parse_id(id->get<std::string>(), path + ".id");
    if (!reserved_.insert(parsed).second) {
      throw EWorldError(path + ".id", "id \"" + parsed.text() + "\" given twice");
    }
  }
  auto children = object.find("children");
  if (children == object.end() || !children->is_array()) return;
  for (size_t i = 0; i < children->size(); ++i) {
    reserve_ids((*children)[i], path + ".children[" + std::to_string(i) + "]", depth + 1);
  }
}

void WorldLoader::load_root(const Json& object, const std::string& path) {
  check_members(object, path, {"class", "id", "props", "children"}, "an object");
  if (string_member(object, path, "class") != "Domain") {
    throw EWorldError(path + ".class", "the root object is a Domain");
  }
  if (object.contains("id") && string_member(object, path, "id") != tql::kRootId.text()) {
    throw EWorldError(path + ".id", "the root domain has the id 0.1");
  }
  apply_props(tql::kRootId, object, path);
  load_children(object, path, tql::kRootId);
}

void WorldLoader::load_object(const Json& object, const std::string& path,
                              const tql::id_t& parent) {
  check_members(object, path, {"class", "id", "props", "children"}, "an object");
  const int32_t class_ = class_number(string_member(object, path, "class"), path + ".class");
  tql::id_t id =
      object.contains("id") ? parse_id(string_member(object, path, "id"), path + ".id") : next_id();
  if (id.empty() || id == tql::kRootId) throw EWorldError(path + ".id", "id taken by the system");
  ChangeResult r = db_.objects().create(parent, class_, {}, id);
  if (r.status != 0) throw EWorldError(path, r.detail);
  apply_props(id, object, path);
  load_children(object, path, id);
}

void WorldLoader::load_children(const Json& object, const std::string& path,
                                const tql::id_t& parent) {
  auto children = object.find("children");
  if (children == object.end()) return;
  if (!children->is_array()) throw EWorldError(path + ".children", "expected an array");
  for (size_t i = 0; i < children->size(); ++i) {
    load_object((*children)[i], path + ".children[" + std::to_string(i) + "]", parent);
  }
}

void WorldLoader::apply_props(const tql::id_t& id, const Json& object, const std::string& path) {
  auto props = object.find("props");
  if (props == object.end()) return;
  const std::string props_path = path + ".props";
  if (!props->is_object()) throw EWorldError(props_path, "expected an object of properties");
  std::vector<tql::property_ptr> now;
  for (auto it = props->begin(); it != props->end(); ++it) {
    const std::string p = props_path + "." + it.key();
    const int32_t number = property_number(it.key(), p);
    if (is_reference_value(it.value())) {
      references_.push_back({id, number, &it.value(), p});
    } else {
      now.push_back(property_from_json(number, it.value(), p, resolver_));
    }
  }
  set_properties(id, std::move(now), props_path);
}

void WorldLoader::set_properties(const tql::id_t& id, std::vector<tql::property_ptr> props,
                                 const std::string& path) {
  if (props.empty()) return;
  ChangeResult r = db_.objects().update(id, db_.objects().find(id)->version, std::move(props));
  if (r.status != 0) throw EWorldError(path, r.detail);
}

void WorldLoader::load_series(const Json& series, const std::string& path) {
  check_members(series, path, {"owner", "property", "data_type", "records"},
                "a series: an object with owner, property, data_type and records");
  const tql::id_t owner = resolve(string_member(series, path, "owner"), path + ".owner");
  const int32_t index =
      property_number(string_member(series, path, "property"), path + ".property");
  const Json& type = required(series, path, "data_type");
  const bool small =
      type.is_number_integer() && type.get<int64_t>() >= 0 && type.get<int64_t>() < 100;
  const int32_t data_type = small ? static_cast<int32_t>(type.get<int64_t>()) : 0;
  const int32_t record_class = record_class_of(data_type);
  if (record_class == 0) throw EWorldError(path + ".data_type", "expected a data type, 2 to 6");
  if (db_.series().find(owner, index) != nullptr) {
    throw EWorldError(
        path, "a second series for owner " + owner.text() + " and property " + property_key(index));
  }
  const Json& records = required(series, path, "records");
  if (!records.is_array()) throw EWorldError(path + ".records", "expected an array");
  std::vector<tsdb::interval_ptr> out;
  out.reserve(records.size());
  for (size_t i = 0; i < records.size(); ++i) {
    out.push_back(record_from_json(record_class, records[i],
                                   [&] { return path + ".records[" + std::to_string(i) + "]"; }));
  }
  db_.series().put(owner, index, data_type, std::move(out));
}

tql::id_t WorldLoader::resolve(const std::string& reference, const std::string& path) const {
  if (reference.empty() || reference[0] != '/') {
    tql::id_t id = parse_id(reference, path);
    // 0.2 and 0.3 are markers of the system (an inherited alert group, ...)
    // that name no object.
    if (id == tql::kId02 || id == tql::kId03) return id;
    if (db_.objects().find(id) == nullptr) {
      throw EWorldError(path, "no object with id \"" + reference + "\"");
    }
    return id;
  }
  const StoredObject* at = db_.objects().find(tql::kRootId);
  size_t pos = 1;
  while (pos < reference.size()) {
    const size_t slash = std::min(reference.find('/', pos), reference.size());
    const std::string segment = reference.substr(pos, slash - pos);
    const StoredObject* next = nullptr;
    for (const tql::id_t& child : at->children) {
      const StoredObject* c = db_.objects().find(child);
      if (named(*c, segment)) {
        next = c;
        break;
      }
    }
    if (next == nullptr) {
      throw EWorldError(path, "no object at \"" + reference + "\": nothing named \"" + segment +
                                  "\" in " + reference.substr(0, pos));
    }
    at = next;
    pos = slash + 1;
  }
  return at->id;
}

tql::id_t WorldLoader::next_id() {
  for (;;) {
    tql::id_t id{0, 1, serial_++};
    if (reserved_.count(id) == 0 && db_.objects().find(id) == nullptr) return id;
  }
}

}  // namespace

void load_world(const Json& world, Database& db, control::Server_Configuration_Fields& config) {
  WorldLoader(db).load(world, config);
}

void load_world_text(const std::string& text, Database& db,
                     control::Server_Configuration_Fields& config) {
  check_nesting(text);
  Json world;
  try {
    world = Json::parse(text);
  } catch (const Json::exception& e) {
    // Not only parse_error: a number too big for a double is out_of_range.
    throw EWorldError("", std::string("not valid JSON: ") + e.what());
  }
  load_world(world, db, config);
}

void load_world_file(const std::string& file, Database& db,
                     control::Server_Configuration_Fields& config) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  if (!in.is_open() || !(text << in.rdbuf())) {
    throw EWorldError("", "cannot read world file " + file);
  }
  load_world_text(text.str(), db, config);
}

}  // namespace host
