#include "host/store_subscriptions.h"

#include <algorithm>

namespace host {

namespace {

constexpr int32_t kSubscribeAcknowledged = 4;

}  // namespace

dbms::Return_Tql_Select_Data SubscriptionRegistry::subscribe(const Database& db,
                                                             const SubscriptionKey& key,
                                                             const dbms::Tql_Select_Data& request,
                                                             double now) {
  Subscription s;
  s.request = request;
  s.last_sent = db.select(request);
  s.needs_ack = (request.flags & kSubscribeAcknowledged) != 0;
  s.awaiting_ack = s.needs_ack;
  s.last_sent_time = now;
  s.evaluated_at = db.objects().changes();
  dbms::Return_Tql_Select_Data first = s.last_sent;
  subscriptions_.insert_or_assign(key, std::move(s));
  return first;
}

void SubscriptionRegistry::acknowledge(queues::queue_t queue,
                                       const dbms::Tql_Acknowledge_Data& request) {
  auto it = subscriptions_.find({queue, request.req_id_to_ack});
  if (it != subscriptions_.end()) it->second.awaiting_ack = false;
}

dbms::Return_Tql_Forget_Data SubscriptionRegistry::forget(queues::queue_t queue,
                                                          const dbms::Tql_Forget_Data& request) {
  dbms::Return_Tql_Forget_Data reply;
  reply.forgotten_req_id = request.req_id_to_forget;
  if (subscriptions_.erase({queue, request.req_id_to_forget}) == 0) {
    reply.status = kStatusNotFound;
    reply.details.push_back(
        {0, "No subscription number " + std::to_string(request.req_id_to_forget)});
  }
  return reply;
}

double SubscriptionRegistry::earliest(const Subscription& s) const {
  const double interval = static_cast<double>(std::max<int64_t>(s.request.min_eval_interval, 0));
  return s.last_sent_time + interval * eval_scale_;
}

std::vector<DueReply> SubscriptionRegistry::due(const Database& db, double now) {
  std::vector<DueReply> out;
  const uint64_t changes = db.objects().changes();
  for (auto& [key, s] : subscriptions_) {
    if (s.evaluated_at != changes) {
      s.evaluated_at = changes;
      dbms::Return_Tql_Select_Data result = db.select(s.request);
      if (result == s.last_sent) {
        s.pending.reset();
      } else {
        s.pending = std::move(result);
      }
    }
    if (!s.pending || s.awaiting_ack || now < earliest(s)) continue;
    s.last_sent = std::move(*s.pending);
    s.pending.reset();
    s.last_sent_time = now;
    s.awaiting_ack = s.needs_ack;
    out.push_back({key, s.last_sent});
  }
  return out;
}

bool SubscriptionRegistry::under_way() const {
  for (const auto& [key, s] : subscriptions_) {
    if (s.pending || s.awaiting_ack) return true;
  }
  return false;
}

std::optional<double> SubscriptionRegistry::next_due() const {
  std::optional<double> next;
  for (const auto& [key, s] : subscriptions_) {
    if (!s.pending || s.awaiting_ack) continue;
    const double t = earliest(s);
    if (!next || t < *next) next = t;
  }
  return next;
}

}  // namespace host
