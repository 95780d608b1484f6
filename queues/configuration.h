// The server configuration of this process: fetched once from the parent at
// start and never refreshed. Held here so that every layer (logging set-up,
// resources, mailing) reads the one copy.
#pragma once

#include "dbms/control_records.h"

namespace queues {

// The record as last set; all fields empty or 0 before set_configuration.
const control::Server_Configuration_Fields& configuration();
void set_configuration(const control::Server_Configuration_Fields& fields);

}  // namespace queues
