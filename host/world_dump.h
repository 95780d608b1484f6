// Dumping the whole database (objects, ClusterInfo, series) and the
// configuration as a world file, which loads again into an equal database.
#pragma once

#include <nlohmann/json.hpp>

#include "dbms/control_records.h"
#include "host/store_database.h"

namespace host {

// Every object with its id, class, properties (by catalogue name, else by
// number) and children in order; every series with its owner's id.
// Versions are not written: a loaded world gets fresh ones.
nlohmann::json dump_world(const Database& db, const control::Server_Configuration_Fields& config);

}  // namespace host
