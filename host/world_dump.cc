#include "host/world_dump.h"

#include "host/world_config.h"
#include "host/world_names.h"
#include "host/world_series.h"
#include "host/world_values.h"
#include "tql/catalogue.h"

namespace host {

namespace {

using Json = nlohmann::json;

Json props_json(const StoredObject& object) {
  Json props = Json::object();
  for (const auto& [number, p] : object.properties)
    props[property_key(number)] = property_to_json(*p);
  return props;
}

Json object_json(const ObjectStore& store, const StoredObject& object) {
  Json out = {{"class", tql::class_name(object.class_)}, {"id", object.id.text()}};
  if (!object.properties.empty()) out["props"] = props_json(object);
  if (object.children.empty()) return out;
  Json children = Json::array();
  for (const tql::id_t& id : object.children)
    children.push_back(object_json(store, *store.find(id)));
  out["children"] = std::move(children);
  return out;
}

Json series_json(const SeriesStore::Key& key, const Series& series) {
  Json records = Json::array();
  for (const tsdb::interval_ptr& r : series.records) records.push_back(record_to_json(*r));
  return {{"owner", key.first.text()},
          {"property", property_key(key.second)},
          {"data_type", series.data_type},
          {"records", std::move(records)}};
}

Json class_names(const std::set<int32_t>& classes) {
  Json names = Json::array();
  for (int32_t c : classes) names.push_back(tql::class_name(c));
  return names;
}

}  // namespace

Json dump_world(const Database& db, const control::Server_Configuration_Fields& config) {
  const ObjectStore& store = db.objects();
  Json world = {{"config", config_to_json(config)},
                {"objects", object_json(store, *store.find(tql::kRootId))}};
  const StoredObject& cluster = *store.find(tql::id_t{});
  if (!cluster.properties.empty()) world["cluster"] = {{"props", props_json(cluster)}};
  Json series = Json::array();
  for (const auto& [key, s] : db.series().all()) series.push_back(series_json(key, s));
  world["series"] = std::move(series);
  if (db.subscription_fault() != 0) {
    world["faults"]["subscription_status"] = db.subscription_fault();
  }
  if (!db.failing_creates().empty())
    world["faults"]["fail_create"] = class_names(db.failing_creates());
  if (!db.failing_updates().empty())
    world["faults"]["fail_update"] = class_names(db.failing_updates());
  if (db.vanish_after()) world["faults"]["vanish_after"] = *db.vanish_after();
  return world;
}

}  // namespace host
