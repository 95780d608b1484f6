// The `config` member of a world file: the fields of the server
// configuration record by name. Strings are JSON strings, numbers integers,
// booleans true/false, `modem_options` an array of strings, the time spans
// (`snmp_timeout_initial`, `snmp_timeout_max`) a number of seconds with up to
// six decimals. A field left out keeps its value.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "dbms/control_records.h"

namespace host {

// Sets the fields named in `value`. Raises EWorldError at `path` (as
// "config.log_mask") for an unknown field or a value of the wrong type.
void config_from_json(const nlohmann::json& value, const std::string& path,
                      control::Server_Configuration_Fields& config);
// Every field.
nlohmann::json config_to_json(const control::Server_Configuration_Fields& config);

}  // namespace host
