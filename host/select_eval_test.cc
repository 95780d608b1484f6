// The general rules of select, apart from the reporter's own patterns.
#include "host/select_eval.h"

#include <gtest/gtest.h>

#include "host/store_errors.h"
#include "host/store_test_world.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace host::testing {
namespace {

class SelectRulesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    w.add("root", schema::kNode, "n");
    w.add("n", schema::kCheckGroup, "g1");
    w.add("g1", schema::kCheck, "c1", props(bool_prop(schema::kActive, true)));
    w.add("g1", schema::kCheck, "c2");
    w.add("g1", schema::kCheckGroup, "g2");
    w.add("g2", schema::kCheck, "c3", props(bool_prop(schema::kActive, false)));
  }
  TestWorld w;
};

TEST_F(SelectRulesTest, NestingOfClass13ReachesEveryClass) {
  EXPECT_EQ("n(g1(c1,c2,g2(c3)))", w.select({"n"}, step(schema::kRootClass, 1)));
  EXPECT_EQ("n", w.select({"n"}, step(schema::kRootClass, 0)));
}

TEST_F(SelectRulesTest, NestingOfAClassPassesOnlyThroughThatClass) {
  EXPECT_EQ("g1(g2)", w.select({"g1"}, step(schema::kCheckGroup, 1)));
  EXPECT_EQ("n(g1(c1,c2,g2(c3)))",
            w.select({"n"}, step(schema::kNode, 0,
                                 {step(schema::kCheckGroup, 1, {step(schema::kCheck, 0)})})));
}

TEST_F(SelectRulesTest, ConditionOnAMissingPropertyFails) {
  EXPECT_EQ("(none)", w.select({"c2"}, with_where(step(schema::kCheck, 0),
                                                  bool_prop(schema::kActive, true))));
  EXPECT_EQ("c1", w.select({"c1"},
                           with_where(step(schema::kCheck, 0), bool_prop(schema::kActive, true))));
}

TEST_F(SelectRulesTest, AllConditionsMustHold) {
  tql::pattern_t p =
      with_where(with_where(step(schema::kCheck, 0), bool_prop(schema::kActive, true)),
                 string_prop(schema::kName, "C1"), 7);
  EXPECT_EQ("c1", w.select({"c1"}, p)) << "operator 7 ignores case";
  p.where.back().rel_op = 1;
  EXPECT_EQ("(none)", w.select({"c1"}, p));
}

TEST_F(SelectRulesTest, IncomparableConditionRaisesCode11) {
  tql::pattern_t p = with_where(step(schema::kCheck, 0), uint_prop(schema::kActive, 1));
  try {
    select(w.store(), {w.id("c1")}, p);
    FAIL() << "no exception";
  } catch (const errors::tql& e) {
    EXPECT_EQ(11, e.code());
  }
}

TEST_F(SelectRulesTest, ConditionWithoutPropertyIsABadRequestEvenWhereNothingReachesIt) {
  tql::pattern_t p = step(schema::kCheck, 0);
  p.where.push_back(tql::condition_t{});
  EXPECT_THROW(select(w.store(), {w.id("c1")}, p), EBadRequest);
  EXPECT_THROW(
      select(w.store(), {w.id("n")}, step(schema::kNode, 0, {step(schema::kUser, 0, {p})})),
      EBadRequest);
}

TEST_F(SelectRulesTest, PatternDepthIsBounded) {
  tql::pattern_t deep = step(schema::kRootClass, 0);
  for (int i = 1; i < 64; ++i) deep = step(schema::kRootClass, 0, {deep});
  EXPECT_EQ("n(g1(c1,c2,g2(c3)))", w.select({"n"}, deep));
  deep = step(schema::kRootClass, 0, {deep});
  EXPECT_THROW(select(w.store(), {w.id("n")}, deep), EBadRequest);
}

TEST_F(SelectRulesTest, SeveralBranchesMergeTagsFlagsAndProperties) {
  tql::pattern_t p = step(schema::kNode, 0,
                          {with_tag(step(schema::kCheckGroup, 2), 5),
                           with_tag(wanting(step(schema::kCheckGroup, 0), {schema::kName}), 6)});
  std::vector<tql::patch_t> res = select(w.store(), {w.id("n")}, p);
  EXPECT_EQ("n(g1#5#6)", w.render(res));
  const tql::patch_t& g1 = res.at(0).children.at(0);
  EXPECT_EQ(2, g1.flags);
  EXPECT_EQ(2u, g1.properties.size()) << "all properties win over the wanted ones";
}

TEST_F(SelectRulesTest, ChildrenComeInStoredOrderWhateverTheBranchOrder) {
  EXPECT_EQ("g1(c1,c2,g2)",
            w.select({"g1"}, step(schema::kCheckGroup, 0,
                                  {step(schema::kCheckGroup, 0), step(schema::kCheck, 0)})));
}

TEST_F(SelectRulesTest, WantedPropertiesOnlyAndIdsAndVersions) {
  std::vector<tql::patch_t> res = select(
      w.store(), {w.id("c1")}, wanting(step(schema::kCheck, 0), {schema::kActive, schema::kOrder}));
  ASSERT_EQ(1u, res.size());
  EXPECT_EQ(1u, res[0].properties.size());
  EXPECT_EQ("true", res[0].property(schema::kActive).text());
  EXPECT_EQ(w.id("c1"), res[0].id);
  EXPECT_EQ(w.store().find(w.id("c1"))->version, res[0].version);
  EXPECT_EQ(schema::kCheck, res[0].class_);
}

TEST_F(SelectRulesTest, ClusterInfoIsFoundByTheEmptyId) {
  std::vector<tql::patch_t> res = select(w.store(), {tql::id_t{}}, step(15, 2));
  ASSERT_EQ(1u, res.size());
  EXPECT_TRUE(res[0].id.empty());
}

}  // namespace
}  // namespace host::testing
