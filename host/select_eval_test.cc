// The general rules of select, apart from the reporter's own patterns.
#include "host/select_eval.h"

#include <gtest/gtest.h>

#include "host/store_errors.h"
#include "host/store_test_world.h"
#include "tql/errors.h"

namespace host::testing {
namespace {

class SelectRulesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    w.add("root", kNode, "n");
    w.add("n", kCheckGroup, "g1");
    w.add("g1", kCheck, "c1", props(bool_prop(pActive, true)));
    w.add("g1", kCheck, "c2");
    w.add("g1", kCheckGroup, "g2");
    w.add("g2", kCheck, "c3", props(bool_prop(pActive, false)));
  }
  TestWorld w;
};

TEST_F(SelectRulesTest, NestingOfClass13ReachesEveryClass) {
  EXPECT_EQ("n(g1(c1,c2,g2(c3)))", w.select({"n"}, step(kAny, 1)));
  EXPECT_EQ("n", w.select({"n"}, step(kAny, 0)));
}

TEST_F(SelectRulesTest, NestingOfAClassPassesOnlyThroughThatClass) {
  EXPECT_EQ("g1(g2)", w.select({"g1"}, step(kCheckGroup, 1)));
  EXPECT_EQ("n(g1(c1,c2,g2(c3)))",
            w.select({"n"}, step(kNode, 0, {step(kCheckGroup, 1, {step(kCheck, 0)})})));
}

TEST_F(SelectRulesTest, ConditionOnAMissingPropertyFails) {
  EXPECT_EQ("(none)", w.select({"c2"}, with_where(step(kCheck, 0), bool_prop(pActive, true))));
  EXPECT_EQ("c1", w.select({"c1"}, with_where(step(kCheck, 0), bool_prop(pActive, true))));
}

TEST_F(SelectRulesTest, AllConditionsMustHold) {
  tql::pattern_t p = with_where(with_where(step(kCheck, 0), bool_prop(pActive, true)),
                                string_prop(pName, "C1"), 7);
  EXPECT_EQ("c1", w.select({"c1"}, p)) << "operator 7 ignores case";
  p.where.back().rel_op = 1;
  EXPECT_EQ("(none)", w.select({"c1"}, p));
}

TEST_F(SelectRulesTest, IncomparableConditionRaisesCode11) {
  tql::pattern_t p = with_where(step(kCheck, 0), uint_prop(pActive, 1));
  try {
    select(w.store(), {w.id("c1")}, p);
    FAIL() << "no exception";
  } catch (const errors::tql& e) {
    EXPECT_EQ(11, e.code());
  }
}

TEST_F(SelectRulesTest, ConditionWithoutPropertyIsABadRequestEvenWhereNothingReachesIt) {
  tql::pattern_t p = step(kCheck, 0);
  p.where.push_back(tql::condition_t{});
  EXPECT_THROW(select(w.store(), {w.id("c1")}, p), EBadRequest);
  EXPECT_THROW(select(w.store(), {w.id("n")}, step(kNode, 0, {step(kUser, 0, {p})})), EBadRequest);
}

TEST_F(SelectRulesTest, PatternDepthIsBounded) {
  tql::pattern_t deep = step(kAny, 0);
  for (int i = 1; i < 64; ++i) deep = step(kAny, 0, {deep});
  EXPECT_EQ("n(g1(c1,c2,g2(c3)))", w.select({"n"}, deep));
  deep = step(kAny, 0, {deep});
  EXPECT_THROW(select(w.store(), {w.id("n")}, deep), EBadRequest);
}

TEST_F(SelectRulesTest, SeveralBranchesMergeTagsFlagsAndProperties) {
  tql::pattern_t p = step(kNode, 0, {with_tag(step(kCheckGroup, 2), 5),
                                     with_tag(wanting(step(kCheckGroup, 0), {pName}), 6)});
  std::vector<tql::patch_t> res = select(w.store(), {w.id("n")}, p);
  EXPECT_EQ("n(g1#5#6)", w.render(res));
  const tql::patch_t& g1 = res.at(0).children.at(0);
  EXPECT_EQ(2, g1.flags);
  EXPECT_EQ(2u, g1.properties.size()) << "all properties win over the wanted ones";
}

TEST_F(SelectRulesTest, ChildrenComeInStoredOrderWhateverTheBranchOrder) {
  EXPECT_EQ("g1(c1,c2,g2)",
            w.select({"g1"}, step(kCheckGroup, 0, {step(kCheckGroup, 0), step(kCheck, 0)})));
}

TEST_F(SelectRulesTest, WantedPropertiesOnlyAndIdsAndVersions) {
  std::vector<tql::patch_t> res =
      select(w.store(), {w.id("c1")}, wanting(step(kCheck, 0), {pActive, pOrder}));
  ASSERT_EQ(1u, res.size());
  EXPECT_EQ(1u, res[0].properties.size());
  EXPECT_EQ("true", res[0].property(pActive).text());
  EXPECT_EQ(w.id("c1"), res[0].id);
  EXPECT_EQ(w.store().find(w.id("c1"))->version, res[0].version);
  EXPECT_EQ(kCheck, res[0].class_);
}

TEST_F(SelectRulesTest, ClusterInfoIsFoundByTheEmptyId) {
  std::vector<tql::patch_t> res = select(w.store(), {tql::id_t{}}, step(15, 2));
  ASSERT_EQ(1u, res.size());
  EXPECT_TRUE(res[0].id.empty());
}

}  // namespace
}  // namespace host::testing
