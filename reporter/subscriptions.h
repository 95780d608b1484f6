// The two standing subscriptions of the process, and the treatment of each
// reply of the report subscription: the walk that removes what interrupted
// generations left, repairs `progress`, lays each report's next scheduled
// generation and serves the orders given by hand.
//
// The walk keeps nothing between two replies: everything is derived anew
// from the tree it is given. It runs on the main thread.
#pragma once

#include <cstdint>

#include "dbms/tql_records.h"
#include "tql/id.h"
#include "tql/patch.h"

// The report subscription: from the root domain, Domain (nested) → Report
// (all properties, bit 4) → both ReportInstance and ReportOrder (all
// properties); flags 5, least interval 15 seconds.
dbms::Tql_Select_Data report_subscription();
// The mailing subscription: Domain (nested) → Report → ReportInstance →
// ReportSendTo (all properties); flags 1, least interval 15 seconds.
dbms::Tql_Select_Data mailing_subscription();

// What the walk does to the world around it. The production version works
// over the event queue; tests record the calls.
class ReportActions {
 public:
  virtual ~ReportActions() = default;
  // Deletes an object. Raises errors::tql when the database refuses.
  virtual void delete_object(const tql::id_t& id, tql::version_t version) = 0;
  // Sets `progress` of an instance. Raises errors::tql when refused.
  virtual void set_progress(const tql::id_t& id, tql::version_t version, uint32_t progress) = 0;
  // Asks the scheduler for a SCHEDULED_REPORT_GENERATION of the report at
  // `next` (seconds since the epoch).
  virtual void schedule(const tql::id_t& report, tql::version_t version, int64_t next) = 0;
  // generate_report for the order time, then delete_surplus_instances.
  // Returns false when the generation was refused because the report's
  // version is no longer `version` (an earlier order of the same reply
  // changed the report): the order is then left for the next update.
  virtual bool generate(const tql::id_t& report, tql::version_t version, int64_t order_time) = 0;
  // The current time in seconds.
  virtual int64_t now() = 0;
};

// Walks `object` (normally the root domain of a reply): recurses into
// domains, treats each report, and logs "treat_subscriptions got class " and
// the class name for any other child. A property that a report or an
// instance must have, missing or null, raises errors::tql; an order whose
// `orderTime` isn't a date is the fatal assertion "checked_cast failed, ...".
// A report whose stored schedule the calendar can't serve (see schedule.h)
// is logged as "Cannot schedule report ID: TEXT" and gets no scheduling
// event; its orders are still served.
void treat_subscriptions(const tql::patch_t& object, ReportActions& actions);
