// The stand-in database endpoint (queue 2): turns each request event into a
// call of the in-memory Database and sends the reply event; keeps the
// subscriptions and sends their new results when they are due.
//
// A request the database can't make sense of gets the exception reply
// (event 195) with the text, never a crash; events that are no request of
// the database are ignored.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "host/progress_watch.h"
#include "host/store_database.h"
#include "host/store_subscriptions.h"
#include "queues/childqueue.h"
#include "queues/event.h"

namespace host {

class DatabaseService {
 public:
  // `db` must outlive the service. `eval_scale` scales the least time
  // between two replies of a subscription. `progress`, when not null, is
  // shown every object that a create or update changed; `log`, when not
  // null, gets a line for each change and subscription. Both must outlive
  // the service.
  DatabaseService(Database& db, double eval_scale, ProgressWatch* progress = nullptr,
                  std::ostream* log = nullptr)
      : db_(db), registry_(eval_scale), progress_(progress), log_(log) {}

  // Handles one event that came to the database; replies through `queue`.
  // `now` in seconds since 1970. Raises what sending raises.
  void handle(const queues::event& request, queues::childqueue& queue, double now);
  // Sends the subscription replies that are due at `now`; returns how many.
  size_t send_due(queues::childqueue& queue, double now);
  // When the next subscription reply may be due, if one is waiting.
  std::optional<double> next_due() const { return registry_.next_due(); }
  // Whether a subscription reply waits to be sent or is being treated.
  bool replies_under_way() const { return registry_.under_way(); }
  // True once the world's `vanish_after` requests were answered and another
  // came: that one and all later ones go unanswered, and the host is to
  // take the endpoint away (the siblings then see it die).
  bool gone() const { return gone_; }

 private:
  void dispatch(const queues::event& request, queues::childqueue& queue, double now);
  void subscribe(const queues::event& request, const dbms::Tql_Select_Data& select,
                 queues::childqueue& queue, double now);
  // A line in the log: "WHAT: SENDER OBJECT status N".
  void note(const char* what, const queues::event& request, const std::string& object,
            int32_t status);

  void changed(const tql::id_t& id, int32_t status);

  Database& db_;
  SubscriptionRegistry registry_;
  ProgressWatch* progress_;
  std::ostream* log_;
  int64_t served_ = 0;
  bool gone_ = false;
};

}  // namespace host
