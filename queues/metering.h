// Answers to the metering requests of another process: GET_METRIC (15),
// LIST_METRICS (20) and GET_METRIC_TYPE (22), from the meter tree under
// meter::root() (base/meter.h).
//
// Each answer goes back to the request's sender with the request's number
// and no exception mark: 17 with a counter's value or 19 with a timing's
// five values; 21 with the whole tree; 23 with a metric's name, unit,
// description and type; 16 "Unknown metric" for a path that names no metric
// (a group, a path past a metric, an empty path) and 16 "No such instance"
// when the metric refuses the instance.
#pragma once

#include <memory>

#include "queues/childqueue.h"
#include "queues/event.h"

namespace queues {

// The answer to `request`, owned by the caller; null when `request` is no
// metering request (or a peer's exception reply).
std::unique_ptr<event> metering_reply(const event& request);

// Sends the answer to a metering request through `queue` and returns true;
// returns false, sending nothing, for any other event. The time spent on a
// GET_METRIC, sending included, is added to "metering"/"time". Raises what
// sending raises.
bool handle_metering_event(const event& request, childqueue& queue);

}  // namespace queues
