// A child process for the event queue's tests. As sibling 12 it:
//   1. asks the parent for the configuration and logs "config: " + mail_server;
//   2. runs two delete dialogs with the database and logs their statuses;
//   3. logs "noblockings: N", the replies that were there before asked for;
//   4. logs "event NAME from QUEUE" for each further event, and on SYS_EXIT
//      shuts down;
//   5. ends with 0 after the parent's end of stream, 1 on an exception.
#include "base/log.h"
#include "base/meter.h"
#include "dbms/tql_operations.h"
#include "host/test_child.h"
#include "queues/childqueue.h"
#include "queues/event_names.h"
#include "queues/qdialog.h"

namespace {

uint64_t noblockings() {
  meter::Path instance;
  meter::Path path{"queues", "noblockings"};
  auto* counter =
      dynamic_cast<meter::IntegerCounter*>(meter::root().find(instance, path.begin(), path.end()));
  return counter ? counter->value() : 0;
}

}  // namespace

int main() {
  return run_test_child(
      [](queues::childqueue& queue) {
        log("config: " + queues::server_configuration(queue).mail_server);
        // Two dialogs back to back, so that their numbers follow each other.
        queues::QueueDatabase db(queue);
        int32_t first = tql::delete_object(db, tql::id_t{0, 1, 5}, tql::version_t{3, 4});
        int32_t second = tql::delete_object(db, tql::id_t{0, 1, 5}, tql::version_t{3, 4});
        log("delete status " + std::to_string(first) + ", " + std::to_string(second));
        log("noblockings: " + std::to_string(noblockings()));
      },
      [](const queues::event& e) {
        log("event " + queues::event_name(e.type_index) + " from " + queues::queue_name(e.dest));
      });
}
