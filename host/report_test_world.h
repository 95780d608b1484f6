// Test support for the code that generates, reads and mails reports without
// processes: the stand-in's database in memory, loaded from a world, with
// the direct calls of dbms::Database on it, and what was written read back
// in the dumped (JSON) form of WORLD.md.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "dbms/control_records.h"
#include "host/direct_database.h"
#include "host/store_database.h"

namespace host::testing {

inline constexpr int64_t kDataStart = 1700006400;          // 2023-11-15 00:00 UTC
inline constexpr int64_t kOrderTime = kDataStart + 20000;  // Every report's order.

// Root 0.1 → Domain Servers 0.1.2 → Node web 0.1.3 → CheckGroup 0.1.4 →
// Check load 0.1.5 (continuous, data type 5, warn above 60, alert above
// 65), sampled every minute over four hours from kDataStart with a value
// rising from 16, and no response in every 40th minute; ClusterInfo's
// reportGenerator "main".
nlohmann::json report_world();

// A Report `id` over the fixed four hours from kDataStart, containing
// `contains`, of `kind` (the `type` enumeration's value), with one order at
// kOrderTime; `destination` when not empty.
nlohmann::json report_object(const std::string& id, const std::string& name,
                             const std::string& contains = "0.1.2", uint32_t kind = 1,
                             const std::string& destination = "");

// The id written as "0.1.90".
tql::id_t id_of(const std::string& text);

// The object with `id` in `world`'s tree; raises std::out_of_range.
nlohmann::json& object_in(nlohmann::json& world, const std::string& id);

class WorldDatabase {
 public:
  explicit WorldDatabase(const nlohmann::json& world);
  WorldDatabase(const WorldDatabase&) = delete;
  WorldDatabase& operator=(const WorldDatabase&) = delete;

  dbms::Database& db() { return direct_; }
  Database& store() { return store_; }

  // The stored object `id` in dumped form, with its children; null when
  // there is none.
  nlohmann::json object(const std::string& id) const;
  // The children of `id` of the class named `class_name`.
  std::vector<nlohmann::json> children(const std::string& id, const std::string& class_name) const;
  // The texts of the incident series (tsdbIncident) of `id`, in time order.
  std::vector<std::string> incidents(const std::string& id) const;
  // The records of the series `property` of `id`; empty when none.
  nlohmann::json series(const std::string& id, const std::string& property) const;

 private:
  Database store_;
  control::Server_Configuration_Fields config_;
  DirectDatabase direct_{store_};
};

// The plain value of a dumped property ({"uint": 5} gives 5); null when the
// object has no such property.
nlohmann::json value_of(const nlohmann::json& object, const std::string& property);

}  // namespace host::testing
