#include "reporter/reporter_main.h"

#include <cstdio>

#include "base/error.h"
#include "base/log.h"
#include "base/meter.h"
#include "io/parent_watch.h"
#include "io/selector.h"
#include "io/sibling_messenger.h"
#include "queues/childqueue.h"
#include "queues/configuration.h"
#include "queues/events.h"
#include "queues/qdialog.h"
#include "reporter/event_loop.h"
#include "reporter/subscriptions.h"
#include "resource/collection.h"

namespace {

// Makes the queue the process's queue for the dialogs and the logger, and
// takes it away again when the scope ends, so that later messages go to
// standard error.
class QueueInstalled {
 public:
  explicit QueueInstalled(queues::childqueue& queue) { queues::set_log_queue(&queue); }
  ~QueueInstalled() { queues::set_log_queue(nullptr); }
  QueueInstalled(const QueueInstalled&) = delete;
  QueueInstalled& operator=(const QueueInstalled&) = delete;
};

// How long the process may go on after its parent ended before SIGALRM ends
// it. The orderly end (end of stream on the parent's queue, or the lost-peer
// error of a dialog) takes a moment; the guard is for what doesn't wait
// through the messenger or waitReady.
constexpr unsigned kParentGraceSeconds = 60;

// Every waitReady of the process ends when the parent has ended, so that a
// wait outside the messenger (a mail server that doesn't answer) doesn't
// outlive it.
class ParentGuarded {
 public:
  ParentGuarded() { io::set_wait_guard(&watch_); }
  ~ParentGuarded() { io::set_wait_guard(nullptr); }
  ParentGuarded(const ParentGuarded&) = delete;
  ParentGuarded& operator=(const ParentGuarded&) = delete;

 private:
  io::ParentWatch watch_;
};

void apply_configuration(const control::Server_Configuration_Fields& config) {
  queues::set_configuration(config);
  set_log_mask(static_cast<uint32_t>(config.log_mask));
  set_stop_text(config.stop_on_log_match);
  resource::resources().set_directory(config.resource_directory);
}

void run() {
  ParentGuarded guarded;
  io::SiblingMessenger messenger(queues::rept, "smem");
  {
    queues::childqueue queue(messenger);
    QueueInstalled installed(queue);
    log("Report running");
    apply_configuration(queues::server_configuration(queue));

    uint32_t report_select_id = queue.new_request_number();
    queue.send(queues::Tql_Select_Event(queues::dbms, report_select_id, report_subscription()));
    queue.send(
        queues::Init_Ok_Event(queues::main, 0, {{queues::schd, queues::dbms, queues::tsdb}}));
    uint32_t sendto_select_id = queue.new_request_number();
    queue.send(queues::Tql_Select_Event(queues::dbms, sendto_select_id, mailing_subscription()));

    event_loop(queue, report_select_id, sendto_select_id);
    // A parent that closed its stream without SYS_EXIT never acknowledged a
    // shutdown, and there is nothing to complete.
    if (messenger.shutdown_acknowledged()) messenger.completeShutdown();
  }
}

}  // namespace

int reporter_main() {
  // The static meters join the tree, so that GET_METRIC sees live values.
  meter::open_registry();
  io::guard_parent_death(kParentGraceSeconds);
  // All messages until the configuration has come.
  set_log_mask(0xFFFFFFFFu);
  try {
    run();
    return 0;
  } catch (const error::Exception& e) {
    std::fprintf(stderr, "Caught: %s\n", e.text().c_str());
    return 1;
  }
}
