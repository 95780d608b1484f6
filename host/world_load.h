// Loading world files (the format is in WORLD.md): the configuration, the
// object tree from the root domain, the ClusterInfo object and the series.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "dbms/control_records.h"
#include "host/store_database.h"

namespace host {

// Loads `world` into `db`, which must be fresh (as constructed), and the
// `config` member into `config`. Raises EWorldError naming the JSON path of
// the first bad value; `db` is then partly loaded and should be dropped.
void load_world(const nlohmann::json& world, Database& db,
                control::Server_Configuration_Fields& config);

// Parses `text` as JSON and loads it. A syntax error, a number out of the
// range of a double, or arrays and objects nested deeper than 1024 levels is
// an EWorldError "not valid JSON: " + the reason (which gives the byte
// position). Nothing else than error::Exception leaves it.
void load_world_text(const std::string& text, Database& db,
                     control::Server_Configuration_Fields& config);

// Reads the file and loads it. A file that can't be read is an EWorldError
// "cannot read world file NAME".
void load_world_file(const std::string& file, Database& db,
                     control::Server_Configuration_Fields& config);

}  // namespace host
