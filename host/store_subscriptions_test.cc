#include "host/store_subscriptions.h"

#include <gtest/gtest.h>

#include "host/store_errors.h"
#include "host/store_test_world.h"
#include "tql/schema.h"

namespace host {
namespace {

constexpr queues::queue_t kRept = static_cast<queues::queue_t>(12);

class SubscriptionTest : public ::testing::Test {
 protected:
  // The report subscription's pattern, with min_eval_interval 15 scaled to
  // 0.15 seconds.
  dbms::Tql_Select_Data reports(int32_t flags) {
    dbms::Tql_Select_Data r;
    r.root_ids = {tql::kRootId};
    r.pattern = testing::step(schema::kDomain, 1, {testing::step(schema::kReport, 6)});
    r.flags = flags;
    r.min_eval_interval = 15;
    return r;
  }
  ChangeResult add(int32_t class_) { return db.objects().create(tql::kRootId, class_, {}); }
  std::string shown(const dbms::Return_Tql_Select_Data& reply) {
    std::string out = std::to_string(reply.status) + ":";
    for (const tql::patch_t& p : reply.res) out += std::to_string(p.children.size());
    return out;
  }

  Database db;
  SubscriptionRegistry registry{0.01};
};

TEST_F(SubscriptionTest, FirstReplyAtOnceThenOneAfterTheIntervalForAChange) {
  add(schema::kReport);
  EXPECT_EQ("0:1", shown(registry.subscribe(db, {kRept, 7}, reports(1), 0.0)));
  EXPECT_TRUE(registry.due(db, 1.0).empty()) << "nothing changed";
  add(schema::kReport);
  EXPECT_TRUE(registry.due(db, 0.1).empty()) << "the interval has not passed";
  ASSERT_TRUE(registry.next_due().has_value());
  EXPECT_DOUBLE_EQ(0.15, *registry.next_due());
  std::vector<DueReply> due = registry.due(db, 0.15);
  ASSERT_EQ(1u, due.size());
  EXPECT_EQ((SubscriptionKey{kRept, 7}), due[0].key);
  EXPECT_EQ("0:2", shown(due[0].reply));
  EXPECT_TRUE(registry.due(db, 5.0).empty()) << "sent once";
  EXPECT_FALSE(registry.next_due().has_value());
}

TEST_F(SubscriptionTest, OnlyTheNewestResultGoesOutAfterSeveralChanges) {
  registry.subscribe(db, {kRept, 7}, reports(1), 0.0);
  add(schema::kReport);
  EXPECT_TRUE(registry.due(db, 0.05).empty());
  add(schema::kReport);
  std::vector<DueReply> due = registry.due(db, 0.2);
  ASSERT_EQ(1u, due.size());
  EXPECT_EQ("0:2", shown(due[0].reply));
}

TEST_F(SubscriptionTest, ChangesOutsideTheResultOrUndoneCauseNoReply) {
  add(schema::kReport);
  registry.subscribe(db, {kRept, 7}, reports(1), 0.0);
  add(schema::kNode);
  EXPECT_TRUE(registry.due(db, 1.0).empty());
  ChangeResult r = add(schema::kReport);
  std::vector<tql::id_t> removed;
  db.objects().remove(r.id, r.version, removed);
  EXPECT_TRUE(registry.due(db, 2.0).empty());
}

TEST_F(SubscriptionTest, AcknowledgedSubscriptionWaitsForItsAcknowledgement) {
  registry.subscribe(db, {kRept, 3}, reports(5), 0.0);
  add(schema::kReport);
  EXPECT_TRUE(registry.due(db, 1.0).empty()) << "the first reply is not acknowledged yet";
  EXPECT_FALSE(registry.next_due().has_value());
  registry.acknowledge(kRept, {3});
  ASSERT_EQ(1u, registry.due(db, 1.0).size());
  add(schema::kReport);
  EXPECT_TRUE(registry.due(db, 2.0).empty());
  registry.acknowledge(kRept, {3});
  EXPECT_EQ(1u, registry.due(db, 2.0).size());
}

// The host does not stop for idleness while a reply waits to be sent or is
// still being treated by the reporter.
TEST_F(SubscriptionTest, UnderWayWhileAReplyWaitsToBeSentOrForItsAcknowledgement) {
  registry.subscribe(db, {kRept, 7}, reports(1), 0.0);
  EXPECT_FALSE(registry.under_way()) << "the first reply went out with the subscription";
  add(schema::kReport);
  EXPECT_TRUE(registry.due(db, 0.1).empty());
  EXPECT_TRUE(registry.under_way()) << "a changed result waits for the interval";
  EXPECT_EQ(1u, registry.due(db, 0.15).size());
  EXPECT_FALSE(registry.under_way());

  registry.subscribe(db, {kRept, 3}, reports(5), 1.0);
  EXPECT_TRUE(registry.under_way()) << "the reporter has not acknowledged the reply";
  registry.acknowledge(kRept, {3});
  EXPECT_TRUE(registry.due(db, 2.0).empty());
  EXPECT_FALSE(registry.under_way());
}

TEST_F(SubscriptionTest, ForgetEndsOnlyThatSubscription) {
  registry.subscribe(db, {kRept, 1}, reports(1), 0.0);
  registry.subscribe(db, {kRept, 2}, reports(1), 0.0);
  registry.subscribe(db, {static_cast<queues::queue_t>(9), 1}, reports(1), 0.0);
  dbms::Return_Tql_Forget_Data f = registry.forget(kRept, {1});
  EXPECT_EQ(0, f.status);
  EXPECT_EQ(1u, f.forgotten_req_id);
  add(schema::kReport);
  std::vector<DueReply> due = registry.due(db, 1.0);
  ASSERT_EQ(2u, due.size());
  EXPECT_EQ((SubscriptionKey{static_cast<queues::queue_t>(9), 1}), due[0].key);
  EXPECT_EQ((SubscriptionKey{kRept, 2}), due[1].key);
  dbms::Return_Tql_Forget_Data again = registry.forget(kRept, {1});
  EXPECT_EQ(1, again.status);
  ASSERT_EQ(1u, again.details.size());
  EXPECT_EQ("No subscription number 1", again.details.front().msg);
}

TEST_F(SubscriptionTest, MalformedPatternRegistersNothing) {
  dbms::Tql_Select_Data bad = reports(1);
  bad.pattern.next[0].where.push_back(tql::condition_t{});
  EXPECT_THROW(registry.subscribe(db, {kRept, 1}, bad, 0.0), EBadRequest);
  EXPECT_EQ(0u, registry.size());
}

TEST_F(SubscriptionTest, ZeroIntervalRepliesAtOnce) {
  dbms::Tql_Select_Data r = reports(1);
  r.min_eval_interval = 0;
  registry.subscribe(db, {kRept, 1}, r, 0.0);
  add(schema::kReport);
  EXPECT_EQ(1u, registry.due(db, 0.0).size());
}

}  // namespace
}  // namespace host
