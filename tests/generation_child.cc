// A child for the end-to-end tests of report generation, run by tavrel-host
// in the reporter's place until the reporter's own main loop exists here.
// As sibling 12 it:
//   1. fetches the configuration, takes its log mask and tells the parent
//      INIT_OK;
//   2. for each entry "ID@TIME" (or "ID@TIME@stale") of the environment
//      variable TAVREL_TEST_GENERATE, separated by blanks, reads the report's
//      current version and calls generate_report with it (with "stale", with
//      a version that is one change older), and logs "generated ID: RESULT"
//      with the returned id ("" for none);
//   3. waits for SYS_EXIT, shuts down and ends with 0 after the parent's end
//      of stream; 1 on an exception that reaches it.
#include <cstdlib>
#include <sstream>
#include <string>

#include "base/log.h"
#include "dbms/tql_operations.h"
#include "host/test_child.h"
#include "queues/childqueue.h"
#include "queues/events.h"
#include "queues/qdialog.h"
#include "reporter/generation.h"
#include "tql/schema.h"

namespace {

tql::id_t parseId(const std::string& text) {
  tql::id_t id;
  std::istringstream in(text);
  std::string part;
  while (std::getline(in, part, '.')) id.push_back(static_cast<uint32_t>(std::stoul(part)));
  return id;
}

void generate(dbms::Database& db, ReportFlags& flags, const std::string& entry) {
  std::istringstream in(entry);
  std::string id_text, time_text, mode;
  std::getline(in, id_text, '@');
  std::getline(in, time_text, '@');
  std::getline(in, mode);
  const tql::id_t id = parseId(id_text);
  std::unique_ptr<tql::patch_t> report = tql::get_object(db, id, schema::kReport);
  tql::version_t version = report ? report->version : tql::version_t{};
  if (mode == "stale") version.first -= 1;
  const tql::id_t result = generate_report(db, flags, id, version,
                                           TimeValue(static_cast<int32_t>(std::stol(time_text))));
  log("generated " + id_text + ": " + result.text());
}

}  // namespace

int main() {
  return run_test_child(
      [](queues::childqueue& queue) {
        set_log_mask(static_cast<uint32_t>(queues::server_configuration(queue).log_mask));
        queues::Init_Ok_Event ready;
        ready.dest = queues::main;
        queue.send(ready);
        const char* entries = std::getenv("TAVREL_TEST_GENERATE");
        std::istringstream list(entries != nullptr ? entries : "");
        queues::QueueDatabase db(queue);
        ReportFlags flags;
        for (std::string entry; list >> entry;) generate(db, flags, entry);
      },
      {});
}
