// The frame of the test children that stand in the reporter's place under
// tavrel-host: sibling 12 over the real messenger and queue.
#pragma once

#include <functional>

#include "queues/childqueue.h"
#include "queues/event.h"

// Opens the meter registry, the messenger and the queue (global and for
// the log), runs `work`, then reads events, handing each to `on_event` (may
// be empty), until SYS_EXIT has started the shutdown and the parent has
// closed its stream. Returns the exit code: 0, or 1 after writing
// "Caught: " and the text of an error::Exception to standard error.
int run_test_child(const std::function<void(queues::childqueue&)>& work,
                   const std::function<void(const queues::event&)>& on_event);
