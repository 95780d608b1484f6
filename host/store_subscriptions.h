// SubscriptionRegistry: the standing selects (TQL_SELECT with bit 1 of
// `flags`) and when each is owed a new reply.
//
// A subscription gets a whole reply at once, and a new whole reply whenever
// a change of the database changes its result, but:
//  - not sooner than `min_eval_interval` seconds, times the eval scale,
//    after its previous reply (the change waits, and the newest result goes
//    out when the time has come);
//  - when it was made with bit 4 of `flags` (flags 5), not before the
//    TQL_ACKNOWLEDGE of its previous reply.
// A change that is undone before its reply went out causes no reply.
//
// The registry sends nothing itself: the database endpoint calls due()
// after each change and when next_due() has come, and sends what it gets.
// Times are seconds on any steady clock the caller chooses. Not thread safe.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "dbms/tql_records.h"
#include "host/store_database.h"
#include "protocol/queue.h"

namespace host {

// A subscription is known by the subscriber's queue and request number.
using SubscriptionKey = std::pair<queues::queue_t, uint32_t>;

// A reply that is due: the RETURN_TQL_SELECT to send to `key.first` with
// `inresponse` equal to `key.second`.
struct DueReply {
  SubscriptionKey key;
  dbms::Return_Tql_Select_Data reply;
};

class SubscriptionRegistry {
 public:
  // `eval_scale` multiplies every `min_eval_interval` (tests use a small one).
  explicit SubscriptionRegistry(double eval_scale = 1.0) : eval_scale_(eval_scale) {}

  // Registers `request` (replacing a subscription of the same key) and
  // returns its first reply, to be sent at once. Raises EBadRequest for a
  // malformed pattern, and then registers nothing.
  dbms::Return_Tql_Select_Data subscribe(const Database& db, const SubscriptionKey& key,
                                         const dbms::Tql_Select_Data& request, double now);
  // TQL_ACKNOWLEDGE from `queue`: the subscription may get its next reply.
  // Unknown numbers are ignored.
  void acknowledge(queues::queue_t queue, const dbms::Tql_Acknowledge_Data& request);
  // TQL_FORGET from `queue`: ends the subscription. Status 0, or 1 with a
  // detail when there is none of that number.
  dbms::Return_Tql_Forget_Data forget(queues::queue_t queue, const dbms::Tql_Forget_Data& request);

  // Evaluates the subscriptions again if the database changed since their
  // last evaluation, and returns the replies due at `now`, marking them sent.
  std::vector<DueReply> due(const Database& db, double now);
  // The earliest time at which a held-back reply becomes due by its
  // interval, or none. Held back for an acknowledgement doesn't count: the
  // acknowledgement is the event to call due() after.
  std::optional<double> next_due() const;
  // Whether a reply waits to be sent or for its acknowledgement.
  bool under_way() const;

  size_t size() const { return subscriptions_.size(); }

 private:
  struct Subscription {
    dbms::Tql_Select_Data request;
    bool needs_ack = false;  // Made with bit 4 of `flags`.
    bool awaiting_ack = false;
    dbms::Return_Tql_Select_Data last_sent;
    double last_sent_time = 0;
    uint64_t evaluated_at = 0;  // The database's change count at the last evaluation.
    std::optional<dbms::Return_Tql_Select_Data> pending;
  };

  double earliest(const Subscription& s) const;

  double eval_scale_;
  std::map<SubscriptionKey, Subscription> subscriptions_;
};

}  // namespace host
