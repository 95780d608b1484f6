// Database: the stand-in's object database and time-series store, and the
// functions that turn the dbms request records into reply records. This is
// what the host's database endpoint (queue 2) calls for each request event;
// the endpoint sends the reply record back as the answering event.
//
// Each function returns the reply with the database status: 0 on success,
// else a code of errors::tql with one detail line (msg_type 0) that says
// why. A malformed request (a null property or record, a record that doesn't
// fit the data type, a negative count) raises EBadRequest instead, whose text
// the endpoint sends as an exception reply. Nothing here raises for a status.
//
// Subscriptions are not served here (see store_subscriptions.h); select()
// ignores the subscription bit of `flags`. Not thread safe.
#pragma once

#include <optional>
#include <set>

#include "dbms/tql_records.h"
#include "dbms/tsdb_records.h"
#include "host/store_objects.h"
#include "host/store_series.h"

namespace host {

class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  ObjectStore& objects() { return objects_; }
  const ObjectStore& objects() const { return objects_; }
  SeriesStore& series() { return series_; }
  const SeriesStore& series() const { return series_; }

  // TQL_SELECT: one result per root found (select_eval.h); a condition that
  // can't be compared gives status 11.
  dbms::Return_Tql_Select_Data select(const dbms::Tql_Select_Data& request) const;
  // TQL_CREATE: a non-empty `new_id` is used as the new object's id.
  dbms::Return_Tql_Create_Data create(const dbms::Tql_Create_Data& request);
  dbms::Return_Tql_Update_Data update(const dbms::Tql_Update_Data& request);
  // TQL_DELETE: removes the object's subtree and the series of every object
  // in it.
  dbms::Return_Tql_Delete_Data remove(const dbms::Tql_Delete_Data& request);

  // TSDB_GET_DATA (store_series_read.h). No object: status 1. An object
  // without that series: status 0, no records, data type 0.
  dbms::Return_TSDB_Get_Data_Data get_data(const dbms::TSDB_Get_Data_Data& request) const;
  // TSDB_PUT_DATA: replaces the series. No object: status 1.
  dbms::Return_TSDB_Put_Data_Data put_data(const dbms::TSDB_Put_Data_Data& request);
  // TSDB_APPEND_DATA_RECORD: appends in time order. `new_state` is not kept.
  dbms::Return_TSDB_Append_Data_Record_Data append_data_record(
      const dbms::TSDB_Append_Data_Record_Data& request);

  // A fault that the world asks for (WORLD.md, `faults`): a status other
  // than 0 refuses every subscription with that status. 0 at first.
  int32_t subscription_fault() const { return subscription_fault_; }
  void set_subscription_fault(int32_t status) { subscription_fault_ = status; }

  // Test switches (the world's `faults`): every create, or every update, of
  // an object of `class_` fails with kInjectedFailure and the detail
  // "Injected failure: creates of CLASS fail" ("updates of"), so that tests
  // can fail a report's generation at a chosen step.
  static constexpr int32_t kInjectedFailure = 10;
  void fail_creates_of(int32_t class_) { failing_creates_.insert(class_); }
  void fail_updates_of(int32_t class_) { failing_updates_.insert(class_); }
  const std::set<int32_t>& failing_creates() const { return failing_creates_; }
  const std::set<int32_t>& failing_updates() const { return failing_updates_; }

  // Test switch (the world's `faults`): the database endpoint answers this
  // many requests and then vanishes, as a crashed database process would.
  // Empty: it never does. The endpoint counts; the store only keeps it.
  std::optional<int64_t> vanish_after() const { return vanish_after_; }
  void set_vanish_after(int64_t requests) { vanish_after_ = requests; }

 private:
  ObjectStore objects_;
  SeriesStore series_;
  int32_t subscription_fault_ = 0;
  std::set<int32_t> failing_creates_;
  std::set<int32_t> failing_updates_;
  std::optional<int64_t> vanish_after_;
};

}  // namespace host
