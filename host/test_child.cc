#include "host/test_child.h"

#include <cstdio>

#include "base/error.h"
#include "base/meter.h"
#include "io/sibling_messenger.h"

int run_test_child(const std::function<void(queues::childqueue&)>& work,
                   const std::function<void(const queues::event&)>& on_event) {
  meter::open_registry();
  try {
    io::SiblingMessenger messenger(12, "smem");
    queues::childqueue queue(messenger);
    queues::set_log_queue(&queue);
    work(queue);
    bool stopping = false;
    for (;;) {
      std::unique_ptr<queues::event> e = queue.next_event();
      if (!e) {
        if (!queue.is_at_end(queues::main)) continue;
        queues::set_log_queue(nullptr);
        messenger.completeShutdown();
        return 0;
      }
      if (on_event) on_event(*e);
      if (e->type_index == queues::SYS_EXIT && !stopping) {
        stopping = true;
        queue.shutdown();
      }
    }
  } catch (const error::Exception& e) {
    queues::set_log_queue(nullptr);
    std::fprintf(stderr, "Caught: %s\n", e.text().c_str());
    return 1;
  }
}
