#include "host/store_objects.h"

#include <gtest/gtest.h>

#include "tql/schema.h"

namespace host {
namespace {

std::vector<tql::property_ptr> order(uint32_t n) {
  std::vector<tql::property_ptr> props;
  props.emplace_back(tql::make_property<tql::kind::kUint>(schema::kOrder, n));
  return props;
}

TEST(ObjectStoreTest, StartsWithRootDomainAndClusterInfo) {
  ObjectStore store;
  ASSERT_NE(store.find(tql::kRootId), nullptr);
  EXPECT_EQ(schema::kDomain, store.find(tql::kRootId)->class_);
  ASSERT_NE(store.find({}), nullptr);
  EXPECT_EQ(schema::kClusterInfo, store.find({})->class_);
  EXPECT_EQ(2u, store.size());
}

TEST(ObjectStoreTest, CreateAssignsFreshIdsAndVersions) {
  ObjectStore store;
  ChangeResult a = store.create(tql::kRootId, schema::kDomain, {});
  ChangeResult b = store.create(a.id, schema::kNode, {}, tql::id_t{0, 1, 2});
  ChangeResult c = store.create(a.id, schema::kNode, {});
  ASSERT_EQ(0, a.status);
  EXPECT_EQ("0.1.1", a.id.text());
  EXPECT_EQ("0.1.2", b.id.text());
  EXPECT_EQ("0.1.3", c.id.text()) << "an id given by the caller is skipped";
  EXPECT_NE(a.version, b.version);
  EXPECT_EQ((std::vector<tql::id_t>{b.id, c.id}), store.find(a.id)->children);
  EXPECT_EQ(3u, store.changes());
}

TEST(ObjectStoreTest, CreateRejectsMissingParentUnknownClassAndTakenId) {
  ObjectStore store;
  EXPECT_EQ(kStatusNotFound, store.create(tql::id_t{9, 9}, schema::kNode, {}).status);
  EXPECT_EQ(kStatusNotFound, store.create({}, schema::kNode, {}).status)
      << "ClusterInfo takes no children";
  EXPECT_EQ(kStatusClassNotAllowed, store.create(tql::kRootId, 78, {}).status);
  EXPECT_EQ(kStatusDuplicate, store.create(tql::kRootId, schema::kNode, {}, tql::kRootId).status);
  EXPECT_EQ(0u, store.changes());
}

TEST(ObjectStoreTest, TreeDepthIsBounded) {
  ObjectStore store;
  tql::id_t parent = tql::kRootId;
  for (int level = 1; level <= kMaxDepth; ++level) {
    ChangeResult r = store.create(parent, schema::kNode, {});
    ASSERT_EQ(0, r.status) << level;
    parent = r.id;
  }
  ChangeResult deeper = store.create(parent, schema::kNode, {});
  EXPECT_EQ(kStatusClassNotAllowed, deeper.status);
  EXPECT_EQ("No object may lie deeper than 256 levels", deeper.detail);
}

TEST(ObjectStoreTest, ReportInstanceOrderMustBeUniqueAmongSiblings) {
  ObjectStore store;
  ChangeResult report = store.create(tql::kRootId, schema::kReport, {});
  ChangeResult first = store.create(report.id, schema::kReportInstance, order(1));
  ASSERT_EQ(0, first.status);
  ChangeResult clash = store.create(report.id, schema::kReportInstance, order(1));
  EXPECT_EQ(kStatusDuplicate, clash.status);
  EXPECT_NE(std::string::npos, clash.detail.find("same order 1"));
  ChangeResult second = store.create(report.id, schema::kReportInstance, order(2));
  ASSERT_EQ(0, second.status);
  EXPECT_EQ(kStatusDuplicate, store.update(second.id, second.version, order(1)).status);
  EXPECT_EQ(0, store.update(first.id, first.version, order(1)).status)
      << "an instance doesn't clash with itself";
  EXPECT_EQ(0, store.create(report.id, schema::kNode, order(1)).status)
      << "only ReportInstance siblings count";
}

TEST(ObjectStoreTest, UpdateChecksVersionAndGivesANewOne) {
  ObjectStore store;
  ChangeResult a = store.create(tql::kRootId, schema::kNode, order(1));
  ChangeResult u = store.update(a.id, a.version, order(5));
  ASSERT_EQ(0, u.status);
  EXPECT_NE(a.version, u.version);
  EXPECT_EQ("5", store.find(a.id)->properties.at(schema::kOrder)->text());
  EXPECT_EQ(kStatusVersion, store.update(a.id, a.version, order(6)).status);
  EXPECT_EQ("5", store.find(a.id)->properties.at(schema::kOrder)->text());
  EXPECT_EQ(kStatusNotFound, store.update(tql::id_t{7}, {}, order(6)).status);
}

TEST(ObjectStoreTest, RemoveTakesTheSubtreeAndChecksVersion) {
  ObjectStore store;
  ChangeResult d = store.create(tql::kRootId, schema::kDomain, {});
  ChangeResult n = store.create(d.id, schema::kNode, {});
  ChangeResult n2 = store.create(n.id, schema::kNode, {});
  std::vector<tql::id_t> removed;
  EXPECT_EQ(kStatusVersion, store.remove(d.id, n.version, removed).status);
  EXPECT_TRUE(removed.empty());
  ASSERT_EQ(0, store.remove(d.id, d.version, removed).status);
  EXPECT_EQ((std::vector<tql::id_t>{d.id, n.id, n2.id}), removed);
  EXPECT_EQ(nullptr, store.find(n2.id));
  EXPECT_TRUE(store.find(tql::kRootId)->children.empty());
  EXPECT_EQ(kStatusNotFound, store.remove(d.id, d.version, removed).status);
}

TEST(ObjectStoreTest, RootAndClusterInfoCannotBeRemoved) {
  ObjectStore store;
  std::vector<tql::id_t> removed;
  EXPECT_EQ(kStatusAccessDenied, store.remove(tql::kRootId, {0, 1}, removed).status);
  EXPECT_EQ(kStatusAccessDenied, store.remove({}, {0, 1}, removed).status);
}

}  // namespace
}  // namespace host
