#include "queues/childqueue.h"

#include <chrono>
#include <cstdio>

#include "base/error.h"
#include "base/fatal.h"
#include "base/log.h"
#include "base/meter.h"
#include "io/errors.h"
#include "queues/event_io.h"
#include "queues/events.h"

namespace queues {

namespace {

meter::Group queues_group(nullptr, "queues");
meter::MicroSecondTiming blockings(&queues_group, "blockings", "us",
                                   "The time spent blocked awaiting reply from another process");
meter::IntegerCounter noblockings(
    &queues_group, "noblockings", "",
    "The number of times a reply from another process was immediately available");

bool valid_queue(int32_t q) { return q >= 0 && q < 23; }

}  // namespace

childqueue::childqueue(io::SiblingMessenger& messenger) : messenger_(messenger), front_(*this) {
  set_underlying(&messenger_.some_sibling(), true);
  selector_.add(messenger_.some_sibling(), nullptr);
}

childqueue::~childqueue() {
  set_underlying(&messenger_.some_sibling(), false);
  selector_.remove(messenger_.some_sibling());
}

uint32_t childqueue::new_request_number() {
  uint32_t n = next_request_++;
  if (next_request_ == 0) next_request_ = 1;
  return n;
}

protocol::ioprim& childqueue::prim(queue_t q) {
  auto it = prims_.find(q);
  if (it == prims_.end()) {
    io::SiblingImplementation& s = messenger_.sibling(q);
    it = prims_.emplace(q, std::make_unique<protocol::ioprim>(s.input(), s.output())).first;
  }
  return *it->second;
}

void childqueue::send(const event& e) {
  protocol::ioprim& p = prim(e.dest);
  p << e;
  p.flush();
}

std::unique_ptr<event> childqueue::read_one() {
  selector_.wait(false);
  int32_t from = messenger_.next_ready_sibling();
  try {
    std::unique_ptr<event> e = read_event(prim(static_cast<queue_t>(from)));
    if (valid_queue(from)) at_end_[from] = false;
    e->dest = static_cast<queue_t>(from);
    return e;
  } catch (const io::EEndOfStream&) {
    if (valid_queue(from)) at_end_[from] = true;
    messenger_.take_end_of_stream(from);
    return nullptr;
  }
}

void childqueue::rearm() {
  set_underlying(&messenger_.some_sibling(), true);
  ready_ = false;
}

std::unique_ptr<event> childqueue::take_pending(Pending::iterator it) {
  Key key{(*it)->inresponse, (*it)->dest};
  bool found = false;
  auto range = index_.equal_range(key);
  for (auto i = range.first; i != range.second; ++i) {
    if (i->second == it) {
      index_.erase(i);
      found = true;
      break;
    }
  }
  TAVREL_ASSERT(found, "Corrupted index set");
  std::unique_ptr<event> e = std::move(*it);
  pending_.erase(it);
  if (pending_.empty()) rearm();
  return e;
}

std::unique_ptr<event> childqueue::next_event() {
  if (!pending_.empty()) return take_pending(pending_.begin());
  std::unique_ptr<event> e = read_one();
  rearm();
  return e;
}

std::unique_ptr<event> childqueue::wait_reply(uint32_t request, queue_t peer) {
  auto found = index_.find(Key{request, peer});
  if (found != index_.end()) {
    noblockings.increment();
    return take_pending(found->second);
  }
  auto start = std::chrono::steady_clock::now();
  std::unique_ptr<event> reply;
  for (;;) {
    if (is_at_end(peer) || is_at_end(main)) return nullptr;
    reply = read_one();
    if (!reply) continue;
    if (reply->inresponse == request && reply->dest == peer) break;
    Key key{reply->inresponse, reply->dest};
    pending_.push_back(std::move(reply));
    index_.emplace(key, std::prev(pending_.end()));
    set_underlying(&messenger_.some_sibling(), false);
    ready_ = true;
  }
  auto spent = std::chrono::steady_clock::now() - start;
  blockings.add(
      static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(spent).count()));
  if (pending_.empty()) rearm();
  return reply;
}

bool childqueue::is_at_end(queue_t q) const { return valid_queue(q) && at_end_[q]; }

void childqueue::shutdown() { messenger_.initiateShutdown(); }

void childqueue::underlyingIsReady(io::Selectable& s) {
  TAVREL_ASSERT(&s == &messenger_.some_sibling(),
                "childqueue::underlyingIsReady got wrong Selectable");
  set_underlying(&s, false);
  ready_ = true;
}

void set_log_queue(childqueue* q) {
  if (!q) {
    set_log_sink(nullptr);
    return;
  }
  // A message that comes while another is being sent (the messenger logs a
  // failed signal write from inside the send) would write into the event
  // half written; one that can't be sent (the parent has gone) would raise
  // from log(). Both go to standard error instead.
  set_log_sink([q](const std::string& msg, uint32_t log_type) {
    static bool sending = false;
    if (!sending) {
      sending = true;
      try {
        control::Log_Request_Data data;
        data.msg = msg;
        data.log_type = log_type;
        q->send(Log_Request_Event(main, q->new_request_number(), std::move(data)));
        sending = false;
        return;
      } catch (const error::Exception&) {
        sending = false;
      }
    }
    std::fprintf(stderr, "Log: %s\n", msg.c_str());
    std::fflush(stderr);
  });
}

}  // namespace queues
