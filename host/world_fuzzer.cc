// Fuzzes the world loader: any text either loads or raises error::Exception
// (a syntax error or an EWorldError); it never crashes.
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/error.h"
#include "host/store_database.h"
#include "host/world_load.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  host::Database db;
  control::Server_Configuration_Fields config;
  try {
    host::load_world_text(std::string(reinterpret_cast<const char*>(data), size), db, config);
  } catch (const error::Exception&) {
  }
  return 0;
}
