// tavrel-tool world-check: validates a world file of the stand-in host.
#include <iostream>

#include "host/store_database.h"
#include "host/world_load.h"
#include "tools/commands.h"

namespace tools {
namespace {

// Loads the file into a fresh database; the first fault leaves as an
// exception, which main prints as "error: " and its text (JSON path first).
int run_world_check(Args& args) {
  const std::string file = args.required("--world");
  args.done();
  host::Database db;
  control::Server_Configuration_Fields config;
  host::load_world_file(file, db, config);
  std::cout << "ok: " << db.objects().size() << " objects, " << db.series().all().size()
            << " series, " << db.series().record_count() << " records\n";
  return 0;
}

}  // namespace

std::vector<Command> world_commands() {
  return {
      {"world-check", "--world FILE  (checks a world file of the stand-in host)", run_world_check}};
}

}  // namespace tools
