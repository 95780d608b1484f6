// Runs with TZ=Europe/Copenhagen (see CMakeLists.txt).
#include "reporter/subscriptions.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tql/errors.h"
#include "tql/schema.h"

namespace {

// 5 January 2026 09:59 and 10:00 in Copenhagen.
constexpr int64_t k0959 = 1767603540;
constexpr int64_t k1000 = 1767603600;
constexpr int64_t kDay = 86400;

// Records each action as a short text; fails the ids it is told to.
class ActionRecorder : public ReportActions {
 public:
  void delete_object(const tql::id_t& id, tql::version_t) override {
    if (id == fail_id) throw errors::tql(errors::tql::kUpdatedByOther);
    calls.push_back("delete " + id.text());
  }
  void set_progress(const tql::id_t& id, tql::version_t version, uint32_t progress) override {
    if (id == fail_id) throw errors::tql(errors::tql::kUpdatedByOther);
    calls.push_back("progress " + id.text() + " v" + std::to_string(version.first) + " " +
                    std::to_string(progress));
  }
  void schedule(const tql::id_t& report, tql::version_t version, int64_t next) override {
    calls.push_back("schedule " + report.text() + " v" + std::to_string(version.first) + " " +
                    std::to_string(next));
  }
  // Like the driver: a generation changes the report, so that every later
  // call with the version of the same reply is refused as stale.
  bool generate(const tql::id_t& report, tql::version_t version, int64_t order_time) override {
    const bool fresh = !generated_version || !(*generated_version == version);
    calls.push_back((fresh ? "generate " : "stale ") + report.text() + " " +
                    std::to_string(order_time));
    if (fresh) generated_version = version;
    return fresh;
  }
  int64_t now() override { return clock; }

  std::vector<std::string> calls;
  tql::id_t fail_id;
  int64_t clock = k0959;
  std::optional<tql::version_t> generated_version;
};

tql::patch_t object(int32_t class_, tql::id_t id, int64_t version = 1) {
  tql::patch_t p;
  p.class_ = class_;
  p.id = id;
  p.version = {version, 1};
  return p;
}

template <int32_t K>
void set(tql::patch_t& p, int32_t number, typename tql::kind_traits<K>::value_type v) {
  p.set_property(tql::make_property<K>(number, v));
}

// A daily report at 10:00.
tql::patch_t reportObject(uint32_t date = 1, tql::id_t id = {0, 1, 5}) {
  tql::patch_t r = object(schema::kReport, id, 7);
  set<tql::kind::kEnum>(r, schema::kDate, tql::enum_value_t{0x1000a, date});
  set<tql::kind::kDate>(r, schema::kTime, 36000);
  set<tql::kind::kUint>(r, schema::kFrequency, 0);
  return r;
}

tql::patch_t instance(uint32_t n, uint32_t worker, std::optional<int64_t> order_time,
                      std::optional<uint32_t> progress = 100) {
  tql::patch_t i = object(schema::kReportInstance, {0, 1, n}, n);
  set<tql::kind::kUint>(i, schema::kWorkerNode, worker);
  if (order_time) set<tql::kind::kDate>(i, schema::kOrderTime, *order_time);
  if (progress) set<tql::kind::kUint>(i, schema::kProgress, *progress);
  return i;
}

tql::patch_t order(uint32_t n, int64_t order_time) {
  tql::patch_t o = object(schema::kReportOrder, {0, 1, n});
  set<tql::kind::kDate>(o, schema::kOrderTime, order_time);
  return o;
}

std::vector<std::string> walk(const tql::patch_t& root, ActionRecorder& r) {
  treat_subscriptions(root, r);
  return r.calls;
}

tql::patch_t domain_with(tql::patch_t child) {
  tql::patch_t d = object(schema::kDomain, tql::kRootId);
  d.children.push_back(std::move(child));
  return d;
}

// The calls of a walk over the root domain with `report` in it.
std::vector<std::string> calls_for(tql::patch_t report) {
  ActionRecorder r;
  return walk(domain_with(std::move(report)), r);
}

TEST(TreatSubscriptions, NewReportIsDueAtItsNextTimeAfterNow) {
  EXPECT_EQ((std::vector<std::string>{"schedule 0.1.5 v7 " + std::to_string(k1000)}),
            calls_for(reportObject()));
  ActionRecorder later;
  later.clock = k1000;
  EXPECT_EQ((std::vector<std::string>{"schedule 0.1.5 v7 " + std::to_string(k1000 + kDay)}),
            walk(domain_with(reportObject()), later));
}

TEST(TreatSubscriptions, ScheduleKindNoneLaysNothingButServesOrders) {
  tql::patch_t r0 = reportObject(0);
  r0.properties.erase(schema::kTime);  // Not read for kind 0.
  r0.children.push_back(order(20, 1700000000));
  EXPECT_EQ((std::vector<std::string>{"generate 0.1.5 1700000000", "delete 0.1.20"}),
            calls_for(std::move(r0)));
}

TEST(TreatSubscriptions, FinishedInstancesSetTheLastTimeAndGetTheirProgressRepaired) {
  tql::patch_t r0 = reportObject();
  r0.children.push_back(instance(10, 0, k1000 - kDay, 50));
  r0.children.push_back(instance(11, 0, k1000 + kDay));                // progress 100: no write
  r0.children.push_back(instance(12, 0, std::nullopt, std::nullopt));  // progress missing
  r0.children.push_back(instance(13, 0, k1000, 99));
  EXPECT_EQ((std::vector<std::string>{"progress 0.1.10 v10 100", "progress 0.1.13 v13 100",
                                      "schedule 0.1.5 v7 " + std::to_string(k1000 + 2 * kDay)}),
            calls_for(std::move(r0)));
}

TEST(TreatSubscriptions, SteadyStateWritesNothing) {
  tql::patch_t r0 = reportObject(0);
  r0.children.push_back(instance(10, 0, k1000));
  r0.children.push_back(object(schema::kReportSendTo, {0, 1, 40}));  // Neither pass looks at it.
  EXPECT_TRUE(calls_for(std::move(r0)).empty());
}

TEST(TreatSubscriptions, UnfinishedInstancesGoAndDontCount) {
  tql::patch_t r0 = reportObject();
  r0.children.push_back(instance(10, 1, k1000 + 5 * kDay, 40));
  r0.children.push_back(order(20, k1000 + 5 * kDay));  // waits for a later update
  r0.children.push_back(order(21, k1000 - kDay));      // nothing for that time: generated
  EXPECT_EQ(
      (std::vector<std::string>{"delete 0.1.10", "schedule 0.1.5 v7 " + std::to_string(k1000),
                                "generate 0.1.5 " + std::to_string(k1000 - kDay), "delete 0.1.21"}),
      calls_for(std::move(r0)));
}

TEST(TreatSubscriptions, ServedOrdersAreDeletedWithoutAGeneration) {
  tql::patch_t r0 = reportObject(0);
  r0.children.push_back(instance(10, 0, 1700000000));
  r0.children.push_back(instance(11, 1, 1700000000));  // The first one for the time stays.
  r0.children.push_back(order(20, 1700000000));
  EXPECT_EQ((std::vector<std::string>{"delete 0.1.11", "delete 0.1.20"}), calls_for(std::move(r0)));
}

// Each update serves one order more: an order refused as stale stays, and
// the next reply (with the report's new version) carries it out.
TEST(TreatSubscriptions, OrdersRefusedAsStaleStayForTheNextUpdate) {
  tql::patch_t r0 = reportObject(0);
  for (uint32_t k = 0; k < 3; ++k) r0.children.push_back(order(20 + k, 100 + k));
  ActionRecorder r;
  EXPECT_EQ((std::vector<std::string>{"generate 0.1.5 100", "delete 0.1.20", "stale 0.1.5 101",
                                      "stale 0.1.5 102"}),
            walk(domain_with(r0), r));
  r0.children.erase(r0.children.begin());
  r0.children.push_back(instance(10, 0, 100));
  r0.version.first = 8;
  r.calls.clear();
  EXPECT_EQ((std::vector<std::string>{"generate 0.1.5 101", "delete 0.1.21", "stale 0.1.5 102"}),
            walk(domain_with(r0), r));
}

TEST(TreatSubscriptions, RefusedWritesAreSkipped) {
  tql::patch_t r0 = reportObject(0);
  r0.children.push_back(instance(10, 1, std::nullopt));
  r0.children.push_back(instance(11, 0, std::nullopt, 3));
  r0.children.push_back(order(12, 5));
  ActionRecorder r;
  r.fail_id = {0, 1, 10};
  EXPECT_EQ(
      (std::vector<std::string>{"progress 0.1.11 v11 100", "generate 0.1.5 5", "delete 0.1.12"}),
      walk(domain_with(r0), r));
  ActionRecorder progress_refused;
  progress_refused.fail_id = {0, 1, 11};
  EXPECT_EQ((std::vector<std::string>{"delete 0.1.10", "generate 0.1.5 5", "delete 0.1.12"}),
            walk(domain_with(r0), progress_refused));
  ActionRecorder order_refused;
  order_refused.fail_id = {0, 1, 12};
  EXPECT_EQ(
      (std::vector<std::string>{"delete 0.1.10", "progress 0.1.11 v11 100", "generate 0.1.5 5"}),
      walk(domain_with(r0), order_refused));
}

TEST(TreatSubscriptions, WalksNestedDomainsInOrderAndSkipsOtherClasses) {
  tql::patch_t inner = object(schema::kDomain, {0, 1, 2});
  inner.children.push_back(reportObject(1, {0, 1, 6}));
  tql::patch_t root = domain_with(reportObject(1, {0, 1, 5}));
  root.children.push_back(object(4, {0, 1, 3}));  // a Node: logged and skipped
  root.children.push_back(std::move(inner));
  ActionRecorder r;
  EXPECT_EQ((std::vector<std::string>{"schedule 0.1.5 v7 " + std::to_string(k1000),
                                      "schedule 0.1.6 v7 " + std::to_string(k1000)}),
            walk(root, r));
}

TEST(TreatSubscriptions, MissingRequiredPropertiesRaise) {
  tql::patch_t no_worker = reportObject();
  no_worker.children.push_back(instance(10, 0, std::nullopt));
  no_worker.children.back().properties.erase(schema::kWorkerNode);
  ActionRecorder r;
  EXPECT_THROW(walk(domain_with(no_worker), r), errors::tql);

  tql::patch_t no_time = reportObject();
  no_time.properties.erase(schema::kTime);
  EXPECT_THROW(walk(domain_with(no_time), r), errors::tql);

  tql::patch_t null_date = reportObject();
  null_date.properties[schema::kDate]->is_null = true;
  EXPECT_THROW(walk(domain_with(null_date), r), errors::tql);
  EXPECT_TRUE(r.calls.empty());
}

TEST(TreatSubscriptions, AScheduleTheCalendarCantServeIsSkippedButOrdersAreServed) {
  tql::patch_t bad = reportObject(9);
  bad.children.push_back(order(20, 5));
  EXPECT_EQ((std::vector<std::string>{"generate 0.1.5 5", "delete 0.1.20"}),
            calls_for(std::move(bad)));
}

TEST(TreatSubscriptionsDeathTest, AnOrderTimeThatIsNoDateIsFatal) {
  tql::patch_t r0 = reportObject(0);
  tql::patch_t o = object(schema::kReportOrder, {0, 1, 20});
  set<tql::kind::kUint>(o, schema::kOrderTime, 5);
  r0.children.push_back(std::move(o));
  ActionRecorder r;
  EXPECT_DEATH(walk(domain_with(std::move(r0)), r),
               "checked_cast failed, property kind 20 should have been property_date_t");
}

TEST(Subscriptions, ThePatternsOfTheTwoStandingSelects) {
  dbms::Tql_Select_Data reports = report_subscription();
  EXPECT_EQ(std::list<tql::id_t>{tql::kRootId}, reports.root_ids);
  EXPECT_EQ(5, reports.flags);
  EXPECT_EQ(15, reports.min_eval_interval);
  EXPECT_EQ(schema::kDomain, reports.pattern.class_);
  EXPECT_EQ(1, reports.pattern.flags);
  ASSERT_EQ(1u, reports.pattern.next.size());
  const tql::pattern_t& r = reports.pattern.next[0];
  EXPECT_EQ(schema::kReport, r.class_);
  EXPECT_EQ(6, r.flags);
  ASSERT_EQ(2u, r.next.size());
  EXPECT_EQ(schema::kReportInstance, r.next[0].class_);
  EXPECT_EQ(2, r.next[0].flags);
  EXPECT_EQ(schema::kReportOrder, r.next[1].class_);
  EXPECT_EQ(2, r.next[1].flags);

  dbms::Tql_Select_Data mailing = mailing_subscription();
  EXPECT_EQ(std::list<tql::id_t>{tql::kRootId}, mailing.root_ids);
  EXPECT_EQ(1, mailing.flags);
  EXPECT_EQ(15, mailing.min_eval_interval);
  std::vector<std::pair<int32_t, int32_t>> steps;
  for (const tql::pattern_t* p = &mailing.pattern; p != nullptr;
       p = p->next.empty() ? nullptr : p->next.data()) {
    EXPECT_LE(p->next.size(), 1u);
    steps.emplace_back(p->class_, p->flags);
  }
  EXPECT_EQ((std::vector<std::pair<int32_t, int32_t>>{{schema::kDomain, 1},
                                                      {schema::kReport, 0},
                                                      {schema::kReportInstance, 0},
                                                      {schema::kReportSendTo, 2}}),
            steps);
}

}  // namespace
