#include "analysis/selection_patterns.h"

#include <gtest/gtest.h>

#include "analysis/node_classes.h"
#include "analysis/report_selection.h"
#include "tql/catalogue.h"
#include "tql/schema.h"

namespace {

const tql::id_t kA{0, 1, 7};
const tql::id_t kB{0, 1, 8};
const tql::id_t kC{0, 1, 9};
const tql::id_t kD{0, 1, 10};

// A property's value text without quotes.
std::string Text(const tql::property_t& p) {
  std::string out;
  for (char c : p.text()) {
    if (c != '"') out += c;
  }
  return out;
}

// "Class/flags#tag(conditions)[next ...]", conditions as property, operator
// and value text.
std::string Render(const tql::pattern_t& p) {
  std::string out = tql::class_name(p.class_) + "/" + std::to_string(p.flags);
  if (p.tag != -1) out += "#" + std::to_string(p.tag);
  if (!p.where.empty()) {
    out += "(";
    for (const tql::condition_t& c : p.where) {
      if (out.back() != '(') out += ",";
      out += tql::property_name(c.prop->name) + (c.rel_op == tql::kEqual ? "=" : "~") +
             std::to_string(c.rel_op) + ":" + Text(*c.prop);
    }
    out += ")";
  }
  if (!p.next.empty()) {
    out += "[";
    for (const tql::pattern_t& n : p.next) out += (out.back() == '[' ? "" : " ") + Render(n);
    out += "]";
  }
  return out;
}

tql::object_set_t Set(std::initializer_list<tql::id_t> ids) {
  tql::object_set_t s;
  for (const tql::id_t& id : ids) s.emplace(id, tql::origin_t{});
  return s;
}

std::string RenderPaths(std::list<std::string> path) {
  tql::pattern_list_t list;
  pathPatterns(path, list);
  std::string out;
  for (const tql::pattern_t& p : list) out += (out.empty() ? "" : " | ") + Render(p);
  return out;
}

TEST(PathPatterns, TwoElementsAreReadAsGroupAndCheckAndAsCheckAndAccumulation) {
  EXPECT_EQ(
      "CheckGroup/2(siblingName=1:Services)[Check/6#0(siblingName=1:HTTP,active=1:true)] | "
      "Check/2(siblingName=1:Services,active=1:true)[CheckAccumulation/6#0(siblingName=1:HTTP)]",
      RenderPaths({"Services", "HTTP"}));
}

TEST(PathPatterns, LongerPathsWrapGroupsOutermostFirst) {
  EXPECT_EQ(
      "CheckGroup/2(siblingName=1:A)[CheckGroup/2(siblingName=1:B)"
      "[Check/6#0(siblingName=1:C,active=1:true)]] | "
      "CheckGroup/2(siblingName=1:A)[Check/2(siblingName=1:B,active=1:true)"
      "[CheckAccumulation/6#0(siblingName=1:C)]]",
      RenderPaths({"A", "B", "C"}));
}

TEST(PathPatterns, OneElementHasOnlyTheCheckReadingAndAnEmptyPathNone) {
  EXPECT_EQ("Check/6#0(siblingName=1:HTTP,active=1:true)", RenderPaths({"HTTP"}));
  EXPECT_EQ("", RenderPaths({}));
}

TEST(TagCheckPattern, TakesTheRecordsOfTheNodesTagsInOrder) {
  std::vector<ReportSelectionRecord> records(3);
  records[1].checkPaths = {{"G", "X"}, {}};
  // Record 0 has no paths: all active checks. Tag 5 names no record.
  EXPECT_EQ(
      "Node/6[CheckGroup/3[Check/6#0(active=1:true)[CheckAccumulation/2#0]] "
      "CheckGroup/2(siblingName=1:G)[Check/6#0(siblingName=1:X,active=1:true)] "
      "Check/2(siblingName=1:G,active=1:true)[CheckAccumulation/6#0(siblingName=1:X)]]",
      Render(*tagCheckPattern(records, {0, 1, 5})));
  EXPECT_EQ("Node/6", Render(*tagCheckPattern(records, {})));
}

TEST(OldStyleCheckPattern, ListedChecksAndTheFallbackToAllActiveOnes) {
  EXPECT_EQ("Node/2[CheckGroup/3[Check/6#0(id~12:{0.1.7},active=1:true)[CheckAccumulation/2#0]]]",
            Render(*oldStyleCheckPattern(Set({kA}), false)));
  EXPECT_EQ("Node/6[CheckGroup/3[Check/6#0(active=1:true)[CheckAccumulation/2#0]]]",
            Render(*oldStyleCheckPattern(Set({kA}), true)));
}

TEST(TreePatterns, OldStyleTakesListedDomainsAndListedNodes) {
  EXPECT_EQ("Domain/6[Domain/2(id~12:{0.1.7})[Domain/3[Node/2]] Domain/3[Node/2(id~12:{0.1.7})]]",
            Render(*oldStyleTreePattern(Set({kA}))));
}

TEST(TreePatterns, SelectionsTagTheirNodesWithTheirIndex) {
  std::vector<ReportSelectionRecord> records(2);
  records[0].contains = Set({kA});
  records[1].contains = Set({kB});
  records[1].nodeClasses = Set({kC});
  EXPECT_EQ(
      "Domain/3["
      "Domain/2(id~12:{0.1.7})[Domain/3[Node/2#0]] Node/6#0(id~12:{0.1.7}) "
      "Domain/2(id~12:{0.1.8})[Domain/3[Node/2#1(nodeClasses~11:{0.1.9})]] "
      "Node/6#1(id~12:{0.1.8},nodeClasses~11:{0.1.9})]",
      Render(*selectionTreePattern(records, NodeClassCatalogue{})));
}

tql::patch_t NodeClass(const tql::id_t& id, bool autoPromote, tql::object_set_t parents) {
  tql::patch_t p;
  p.class_ = schema::kNodeClass;
  p.id = id;
  p.set_property(tql::make_boolean_property(schema::kAutoPromote, autoPromote));
  p.set_property(
      tql::make_property<tql::kind::kObjectSet>(schema::kInheritsFrom, std::move(parents)));
  return p;
}

std::string Conditions(const NodeClassCatalogue& catalogue, const tql::id_t& id) {
  std::list<tql::condition_t> conditions;
  resolveNodeClass(conditions, catalogue, id);
  std::string out;
  for (const tql::condition_t& c : conditions) out += (out.empty() ? "" : " & ") + Text(*c.prop);
  return out;
}

TEST(NodeClasses, ClassesStandForThemselvesAndEveryClassDerivedFromThem) {
  tql::patch_t domain;
  domain.class_ = schema::kDomain;
  domain.children.push_back(NodeClass(kA, false, {}));
  domain.children.push_back(NodeClass(kB, false, Set({kA})));
  tql::patch_t sub;
  sub.class_ = schema::kDomain;
  sub.children.push_back(NodeClass(kC, false, Set({kB})));
  domain.children.push_back(std::move(sub));
  const NodeClassCatalogue catalogue = catalogueOf(domain);
  EXPECT_EQ("{0.1.7, 0.1.8, 0.1.9}", Conditions(catalogue, kA));
  EXPECT_EQ("{0.1.9}", Conditions(catalogue, kC));
  // A class the catalogue doesn't hold is taken as a plain class.
  EXPECT_EQ("{0.1.10}", Conditions(catalogue, kD));
}

TEST(NodeClasses, AnAutoPromoteClassAddsOneConditionPerParent) {
  tql::patch_t domain;
  domain.class_ = schema::kDomain;
  domain.children.push_back(NodeClass(kA, false, {}));
  domain.children.push_back(NodeClass(kB, false, {}));
  domain.children.push_back(NodeClass(kC, true, Set({kA, kB})));
  EXPECT_EQ("{0.1.7, 0.1.9} & {0.1.8, 0.1.9}", Conditions(catalogueOf(domain), kC));
}

TEST(NodeClasses, CyclesEnd) {
  tql::patch_t domain;
  domain.class_ = schema::kDomain;
  domain.children.push_back(NodeClass(kA, false, Set({kB})));
  domain.children.push_back(NodeClass(kB, false, Set({kA})));
  domain.children.push_back(NodeClass(kC, true, Set({kD})));
  domain.children.push_back(NodeClass(kD, true, Set({kC})));
  const NodeClassCatalogue catalogue = catalogueOf(domain);
  EXPECT_EQ("{0.1.7, 0.1.8}", Conditions(catalogue, kA));
  EXPECT_EQ("", Conditions(catalogue, kC));
}

}  // namespace
