// The patterns that the reporter sends, each against a small world, with
// what the stand-in returns (the table in README.md).
#include <gtest/gtest.h>

#include "host/select_eval.h"
#include "host/store_test_world.h"
#include "tql/schema.h"

namespace host::testing {
namespace {

using tql::pattern_t;

// Reports and their objects:
// root ─ d1 ─ t1 (ReportText)
//           ├ d2 ─ r1 ─ i1 ─ s1 (ReportSendTo), f1 (folder) ─ row1; rt1 (text)
//           │    │    ├ i2, o1 (ReportOrder), sel1 ─ cs1, plan1 ─ week ─ monday ─ ev1
//           │    │    │                                       └ date1 ─ ev2
//           │    │    └ issue1
//           │    └ n1 (Node)
//           └ d3 ─ t3
//      └ d4 ─ r2
class ReportWorldTest : public ::testing::Test {
 protected:
  void SetUp() override {
    w.add("root", schema::kDomain, "d1");
    w.add("d1", schema::kReportText, "t1");
    w.add("d1", schema::kDomain, "d2");
    w.add("d2", schema::kReport, "r1", props(uint_prop(schema::kMaxInstances, 2)));
    w.add("r1", schema::kReportInstance, "i1", props(uint_prop(schema::kDate, 100)));
    w.add("i1", schema::kReportSendTo, "s1");
    w.add("i1", schema::kReportResultFolder, "f1", props(uint_prop(schema::kOrder, 2)));
    w.add("f1", schema::kReportResultRow, "row1");
    w.add("i1", schema::kReportText, "rt1", props(uint_prop(schema::kOrder, 1)));
    w.add("r1", schema::kReportInstance, "i2", props(uint_prop(schema::kDate, 50)));
    w.add("r1", schema::kReportOrder, "o1");
    w.add("r1", schema::kReportSelection, "sel1");
    w.add("sel1", schema::kReportCheckSelection, "cs1");
    w.add("r1", schema::kPlan, "plan1");
    w.add("plan1", schema::kWeekPlanner, "week");
    w.add("week", schema::kDayPlanner, "monday");
    w.add("monday", schema::kEvent, "ev1");
    w.add("plan1", schema::kDatePlanner, "date1");
    w.add("date1", schema::kEvent, "ev2");
    w.add("r1", schema::kReportIssue, "issue1");
    w.add("d2", schema::kNode, "n1");
    w.add("d1", schema::kDomain, "d3");
    w.add("d3", schema::kReportText, "t3");
    w.add("root", schema::kDomain, "d4");
    w.add("d4", schema::kReport, "r2");
  }
  pattern_t definition(const std::string& report) {
    pattern_t plan = step(
        schema::kPlan, 2,
        {step(schema::kExpectedEvent, 2), step(88, 2),
         step(schema::kWeekPlanner, 2, {step(schema::kDayPlanner, 2, {step(schema::kEvent, 2)})})});
    pattern_t rep = with_where(
        step(schema::kReport, 6,
             {step(schema::kReportIssue, 2),
              step(schema::kReportSelection, 6, {step(schema::kReportCheckSelection, 2)}), plan}),
        object_prop(0, w.id(report)));
    return wanting(step(schema::kDomain, 1, {step(schema::kReportText, 2), rep}), {schema::kName});
  }
  TestWorld w;
};

TEST_F(ReportWorldTest, ReportSubscriptionKeepsOnlyDomainsWithReports) {
  pattern_t p = step(schema::kDomain, 1,
                     {step(schema::kReport, 6,
                           {step(schema::kReportInstance, 2), step(schema::kReportOrder, 2)})});
  EXPECT_EQ("root(d1(d2(r1(i1,i2,o1))),d4(r2))", w.select({"root"}, p));
}

TEST_F(ReportWorldTest, ReportSubscriptionIsEmptyWithoutReports) {
  TestWorld empty;
  empty.add("root", schema::kDomain, "d");
  EXPECT_EQ("(none)", empty.select({"root"}, step(schema::kDomain, 1, {step(schema::kReport, 6)})));
}

TEST_F(ReportWorldTest, MailingSubscriptionReturnsTheWholeWalk) {
  pattern_t p = step(schema::kDomain, 1,
                     {step(schema::kReport, 0,
                           {step(schema::kReportInstance, 0, {step(schema::kReportSendTo, 2)})})});
  EXPECT_EQ("root(d1(d2(r1(i1(s1),i2)),d3),d4(r2))", w.select({"root"}, p));
}

TEST_F(ReportWorldTest, DefinitionIsThePathToTheReportWithTextsAndWholePlan) {
  EXPECT_EQ("root(d1(t1,d2(r1(sel1(cs1),plan1(week(monday(ev1)),date1(ev2)),issue1))))",
            w.select({"root"}, definition("r1")));
  EXPECT_EQ("root(d4(r2))", w.select({"root"}, definition("r2")));
}

TEST_F(ReportWorldTest, DefinitionReturnsOnlyTheNameOfDomainsButAllOfTheReport) {
  std::vector<tql::patch_t> res = select(w.store(), {tql::kRootId}, definition("r1"));
  ASSERT_EQ(1u, res.size());
  const tql::patch_t& d1 = res[0].children.at(0);
  EXPECT_EQ(1u, d1.properties.size());
  EXPECT_NE(nullptr, d1.find_property(schema::kName));
  const tql::patch_t& r1 = d1.children.at(1).children.at(0);
  EXPECT_EQ(3u, r1.properties.size()) << "name, siblingName and maxInstances";
  const tql::patch_t& date1 = r1.children.at(1).children.at(1);
  EXPECT_EQ(2u, date1.properties.size()) << "the date planner comes whole";
}

TEST_F(ReportWorldTest, ReadModelReturnsTheWantedChildClasses) {
  pattern_t p =
      step(schema::kRootClass, 0,
           {wanting(step(schema::kReportResultFolder, 0), {schema::kOrder, schema::kName}),
            wanting(step(schema::kReportText, 0), {schema::kOrder})});
  std::vector<tql::patch_t> res = select(w.store(), {w.id("i1")}, p);
  EXPECT_EQ("i1(f1,rt1)", w.render(res));
  EXPECT_EQ(2u, res.at(0).children.at(0).properties.size());
  EXPECT_EQ(1u, res.at(0).children.at(1).properties.size());
  EXPECT_TRUE(res.at(0).properties.empty());
}

TEST_F(ReportWorldTest, SurplusInstancesAndMailingLookups) {
  pattern_t surplus = wanting(
      step(schema::kReport, 0, {wanting(step(schema::kReportInstance, 0), {schema::kDate})}),
      {schema::kMaxInstances});
  std::vector<tql::patch_t> res = select(w.store(), {w.id("r1")}, surplus);
  EXPECT_EQ("r1(i1,i2)", w.render(res));
  EXPECT_EQ("2", res.at(0).property(schema::kMaxInstances).text());
  EXPECT_EQ("50", res.at(0).children.at(1).property(schema::kDate).text());
  EXPECT_EQ("r1", w.select({"r1"}, step(schema::kReport, 2)));
  EXPECT_EQ("i1", w.select({"i1"}, step(schema::kReportInstance, 2)));
  EXPECT_EQ("(none)", w.select({"i1"}, step(schema::kReport, 2))) << "class must match";
}

// Domains, nodes and checks:
// root ─ top ─ na
//            ├ sub ─ nb (nodeClasses cls1)
//            │     ├ nx ─ g1 ─ c1 ─ acc1
//            │     │    │    ├ c2 (inactive)
//            │     │    │    └ g2 ─ c3
//            │     │    └ g3 ─ c4
//            │     └ subsub ─ nc
//            ├ other ─ nd (nodeClasses cls2) ─ p2 (Plan) ─ dp ─ ev3
//            └ u1 (User) ─ ap1, ap2 (AlertPath)
//      ├ cls1, cls2 (NodeClass)
class NodeWorldTest : public ::testing::Test {
 protected:
  void SetUp() override {
    w.add("root", schema::kNodeClass, "cls1", props(bool_prop(schema::kAutoPromote, false)));
    w.add("root", schema::kNodeClass, "cls2");
    w.add("root", schema::kDomain, "top");
    w.add("top", schema::kNode, "na");
    w.add("top", schema::kDomain, "sub");
    w.add("sub", schema::kNode, "nb", props(object_set_prop(schema::kNodeClasses, {w.id("cls1")})));
    w.add("sub", schema::kNode, "nx");
    w.add("nx", schema::kCheckGroup, "g1");
    w.add("g1", schema::kCheck, "c1", props(bool_prop(schema::kActive, true)));
    w.add("c1", schema::kCheckAccumulation, "acc1");
    w.add("g1", schema::kCheck, "c2", props(bool_prop(schema::kActive, false)));
    w.add("g1", schema::kCheckGroup, "g2");
    w.add("g2", schema::kCheck, "c3", props(bool_prop(schema::kActive, true)));
    w.add("nx", schema::kCheckGroup, "g3");
    w.add("g3", schema::kCheck, "c4", props(bool_prop(schema::kActive, true)));
    w.add("sub", schema::kDomain, "subsub");
    w.add("subsub", schema::kNode, "nc");
    w.add("top", schema::kDomain, "other");
    w.add("other", schema::kNode, "nd",
          props(object_set_prop(schema::kNodeClasses, {w.id("cls2")})));
    w.add("nd", schema::kPlan, "p2");
    w.add("p2", schema::kDayPlanner, "dp");
    w.add("dp", schema::kEvent, "ev3");
    w.add("top", schema::kUser, "u1");
    w.add("u1", schema::kAlertPath, "ap1");
    w.add("u1", schema::kAlertPath, "ap2");
  }
  tql::property_ptr ids(const std::vector<std::string>& labels) {
    std::vector<tql::id_t> v;
    for (const std::string& l : labels) v.push_back(w.id(l));
    return object_set_prop(0, v);
  }
  pattern_t old_style_tree(const std::vector<std::string>& contains) {
    pattern_t p1 =
        with_where(step(schema::kDomain, 2, {step(schema::kDomain, 3, {step(schema::kNode, 2)})}),
                   ids(contains), 12);
    pattern_t p2 =
        step(schema::kDomain, 3, {with_where(step(schema::kNode, 2), ids(contains), 12)});
    return step(schema::kDomain, 6, {p1, p2});
  }
  // One selection record: listed domains and nodes, and a node class
  // condition when `cls` is given.
  std::vector<pattern_t> selection(int tag, const std::vector<std::string>& contains,
                                   const std::string& cls) {
    pattern_t node = with_tag(step(schema::kNode, 2), tag);
    pattern_t listed = with_where(with_tag(step(schema::kNode, 6), tag), ids(contains), 12);
    if (!cls.empty()) {
      node = with_where(node, object_set_prop(schema::kNodeClasses, {w.id(cls)}), 11);
      listed = with_where(listed, object_set_prop(schema::kNodeClasses, {w.id(cls)}), 11);
    }
    return {
        with_where(step(schema::kDomain, 2, {step(schema::kDomain, 3, {node})}), ids(contains), 12),
        listed};
  }
  pattern_t checks_of_groups(tql::property_ptr check_where) {
    pattern_t check =
        with_tag(step(schema::kCheck, 6, {with_tag(step(schema::kCheckAccumulation, 2), 0)}), 0);
    if (check_where) check = with_where(check, std::move(check_where), 12);
    check = with_where(check, bool_prop(schema::kActive, true));
    return step(schema::kCheckGroup, 3, {check});
  }
  // The two readings of one check path of a selection.
  std::vector<pattern_t> path_readings(const std::vector<std::string>& path) {
    const size_t n = path.size();
    pattern_t check = with_where(with_where(with_tag(step(schema::kCheck, 6), 0),
                                            string_prop(schema::kSiblingName, path[n - 1])),
                                 bool_prop(schema::kActive, true));
    for (size_t i = n - 1; i-- > 0;) {
      check = with_where(step(schema::kCheckGroup, 2, {check}),
                         string_prop(schema::kSiblingName, path[i]));
    }
    pattern_t acc = with_where(with_tag(step(schema::kCheckAccumulation, 6), 0),
                               string_prop(schema::kSiblingName, path[n - 1]));
    acc = with_where(
        with_where(step(schema::kCheck, 2, {acc}), string_prop(schema::kSiblingName, path[n - 2])),
        bool_prop(schema::kActive, true));
    for (size_t i = n - 2; i-- > 0;) {
      acc = with_where(step(schema::kCheckGroup, 2, {acc}),
                       string_prop(schema::kSiblingName, path[i]));
    }
    return {check, acc};
  }
  pattern_t tag_selector(const std::vector<std::vector<std::string>>& paths) {
    pattern_t node = step(schema::kNode, 6);
    for (const auto& path : paths) {
      for (pattern_t& p : path_readings(path)) node.next.push_back(std::move(p));
    }
    return node;
  }
  TestWorld w;
};

TEST_F(NodeWorldTest, OldStyleTreeHasListedDomainsWholeAndListedNodes) {
  EXPECT_EQ("top(na,sub(nb,nx,subsub(nc)))", w.select({"top"}, old_style_tree({"sub", "na"})));
  EXPECT_EQ("top(other(nd))", w.select({"top"}, old_style_tree({"nd"})));
}

TEST_F(NodeWorldTest, OldStyleTreeThatSelectsNoNodeIsEmpty) {
  EXPECT_EQ("(none)", w.select({"top"}, old_style_tree({"c1"})));
}

TEST_F(NodeWorldTest, SelectionTreeTagsNodesByRecord) {
  pattern_t root = step(schema::kDomain, 3);
  for (pattern_t& p : selection(0, {"sub"}, "cls1")) root.next.push_back(p);
  for (pattern_t& p : selection(1, {"nd", "nb"}, "")) root.next.push_back(p);
  EXPECT_EQ("top(sub(nb#0#1),other(nd#1))", w.select({"top"}, root));
}

TEST_F(NodeWorldTest, SelectionWithoutNodeClassesTakesAllNodesBelowListedDomains) {
  pattern_t root = step(schema::kDomain, 3);
  for (pattern_t& p : selection(0, {"sub"}, "")) root.next.push_back(p);
  EXPECT_EQ("top(sub(nb#0,nx#0,subsub(nc#0)))", w.select({"top"}, root));
  pattern_t none = step(schema::kDomain, 3);
  for (pattern_t& p : selection(0, {"sub"}, "cls2")) none.next.push_back(p);
  EXPECT_EQ("(none)", w.select({"top"}, none));
}

TEST_F(NodeWorldTest, NoCheckSelectorReturnsTheNodeAlone) {
  EXPECT_EQ("nx", w.select({"nx"}, step(schema::kNode, 2)));
}

TEST_F(NodeWorldTest, OldStyleCheckSelectorTakesListedActiveChecks) {
  pattern_t listed = step(schema::kNode, 2, {checks_of_groups(ids({"c1", "c3"}))});
  EXPECT_EQ("nx(g1(c1#0(acc1#0),g2(c3#0)))", w.select({"nx"}, listed));
}

TEST_F(NodeWorldTest, OldStyleCheckSelectorIsEmptyWhenNoListedCheckIsActive) {
  EXPECT_EQ("(none)", w.select({"nx"}, step(schema::kNode, 2, {checks_of_groups(ids({"c2"}))})));
  pattern_t fallback = step(schema::kNode, 6, {checks_of_groups(nullptr)});
  EXPECT_EQ("nx(g1(c1#0(acc1#0),g2(c3#0)),g3(c4#0))", w.select({"nx"}, fallback));
  EXPECT_EQ("(none)", w.select({"na"}, fallback)) << "a node without checks";
}

TEST_F(NodeWorldTest, TagSelectorReadsPathsAsCheckOrAccumulation) {
  EXPECT_EQ("nx(g1(c1#0,g2(c3#0)))",
            w.select({"nx"}, tag_selector({{"g1", "c1"}, {"g1", "g2", "c3"}})));
  EXPECT_EQ("nx(g1(c1(acc1#0)))", w.select({"nx"}, tag_selector({{"g1", "c1", "acc1"}})));
  EXPECT_EQ("nx(g1(c1#0(acc1#0)))",
            w.select({"nx"}, tag_selector({{"g1", "c1"}, {"g1", "c1", "acc1"}})));
}

TEST_F(NodeWorldTest, TagSelectorSkipsMissingAndInactiveChecks) {
  EXPECT_EQ("(none)",
            w.select({"nx"}, tag_selector({{"g1", "c2"}, {"g3", "cX"}, {"g1", "c1", "accX"}})));
  pattern_t all = step(schema::kNode, 6, {checks_of_groups(nullptr)});
  EXPECT_EQ("nx(g1(c1#0(acc1#0),g2(c3#0)),g3(c4#0))", w.select({"nx"}, all));
}

TEST_F(NodeWorldTest, NodeClassCatalogueComesWithTheWantedProperties) {
  pattern_t p =
      step(schema::kDomain, 1,
           {wanting(step(schema::kNodeClass, 0), {schema::kInheritsFrom, schema::kAutoPromote})});
  std::vector<tql::patch_t> res = select(w.store(), {tql::kRootId}, p);
  EXPECT_EQ("root(cls1,cls2,top(sub(subsub),other))", w.render(res));
  EXPECT_EQ(1u, res.at(0).children.at(0).properties.size());
}

TEST_F(NodeWorldTest, AlertGroupLookupsGiveThePathToTheObject) {
  pattern_t to_check =
      step(schema::kDomain, 1,
           {step(schema::kNode, 2,
                 {step(schema::kCheckGroup, 1,
                       {with_where(step(schema::kCheck, 0), object_prop(0, w.id("c3")))})})});
  EXPECT_EQ("top(sub(nx(g1(g2(c3)))))", w.select({"top"}, to_check));
  pattern_t inherit =
      wanting(step(schema::kRootClass, 1,
                   {wanting(with_where(step(schema::kRootClass, 0), object_prop(0, w.id("c3"))),
                            {schema::kAlertGroupProperty})}),
              {schema::kAlertGroupProperty});
  EXPECT_EQ("root(top(sub(nx(g1(g2(c3))))))", w.select({"root"}, inherit));
  EXPECT_EQ("root(top(sub(nb)))", w.select({"root"}, [&] {
    pattern_t p = inherit;
    p.next[0].where.front().prop = object_prop(0, w.id("nb"));
    return p;
  }()));
}

TEST_F(NodeWorldTest, AlertPathLookupStartsAtTheGivenDomainItself) {
  pattern_t p =
      step(schema::kDomain, 0,
           {step(schema::kDomain, 1,
                 {step(schema::kUser, 0,
                       {with_where(step(schema::kAlertPath, 2), object_prop(0, w.id("ap2")))})})});
  EXPECT_EQ("top(u1(ap2))", w.select({"top"}, p));
}

TEST_F(NodeWorldTest, PlanLookupReturnsTheObjectWithItsWholePlan) {
  pattern_t plan = step(schema::kRootClass, 4,
                        {step(schema::kPlan, 2,
                              {step(schema::kWeekPlanner, 2,
                                    {step(schema::kDayPlanner, 2, {step(schema::kEvent, 2)})})})});
  EXPECT_EQ("nd(p2(dp(ev3)))", w.select({"nd"}, plan));
  EXPECT_EQ("na", w.select({"na"}, plan)) << "no plan: the object alone";
}

TEST_F(NodeWorldTest, SeveralRootsGiveOneResultPerRootFound) {
  EXPECT_EQ("c1 ap1", w.select({"c1", "missing", "ap1"}, step(schema::kRootClass, 2)));
}

}  // namespace
}  // namespace host::testing
