// The walk of the issue tree (ReportDomain, ReportHost, ReportSingleRawIssue)
// against the stand-in's database in memory: the result objects each level
// writes, their order, hiding, the incident log, and a refused write.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "analysis/check_selector.h"
#include "analysis/generation_context.h"
#include "analysis/plan.h"
#include "analysis/report_issue.h"
#include "analysis/selection_patterns.h"
#include "dbms/tql_operations.h"
#include "host/report_test_world.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

using host::testing::kDataStart;
using host::testing::object_in;
using host::testing::value_of;
using json = nlohmann::json;

class CountingProgress : public Progress {
 public:
  void advance(uint32_t steps) override { done += steps; }
  uint32_t done = 0;
};

// A node with a copy of web's check group (ids from `id` + 1), whose check
// has no samples.
json node(const std::string& id, const std::string& name, const std::string& long_label,
          const json& world) {
  json group = world["objects"]["children"][0]["children"][0]["children"][0];
  group["id"] = id + "1";
  group["children"][0]["id"] = id + "2";
  return {{"class", "Node"},
          {"id", id},
          {"props",
           {{"name", {{"string", name}}},
            {"longLabel", {{"string", long_label}}},
            {"alertGroup", {{"null", "object"}}}}},
          {"children", {group}}};
}

class ReportWalkTest : public ::testing::Test {
 protected:
  // Walks the tree of Servers (0.1.2) from the root domain with the report
  // `kind` over the four hours of data, writing under a new instance.
  void walk(ReportKind kind) {
    db_ = std::make_unique<host::testing::WorldDatabase>(world_);
    for (int32_t class_ : failing_) db_->store().fail_creates_of(class_);
    instance_ = tql::create_object(db_->db(), tql::kRootId, schema::kReportInstance, {}, 0).new_id;
    issue_.kind = kind;
    issue_.hasPeriod = true;
    issue_.start = kDataStart;
    issue_.duration = 14400;
    tql::object_set_t contains;
    contains[tql::id_t{0, 1, 2}] = {};
    std::unique_ptr<tql::patch_t> tree =
        tql::select_one(db_->db(), tql::kRootId, oldStyleTreePattern(contains), 0);
    ASSERT_TRUE(tree);
    OldStyleCheckSelector selector(db_->db(), contains);
    const GenerationContext context{db_->db(), issue_, flags_, tree->id};
    ReportDomain root(*tree, context, 0, selector, progress_);
    IssueStats stats;
    int64_t first = kDataStart + 14400;
    root.analyse(instance_, reportIntervals(nullptr, issue_.start, issue_.duration), stats, first,
                 timeZoneValue(0));
    first_sample_ = first;
  }

  json folder(const std::string& id) { return db_->object(id); }
  // The names of the children of `o`, in creation order.
  static std::vector<std::string> names(const json& o) {
    std::vector<std::string> out;
    if (!o.contains("children")) return out;
    for (const json& child : o["children"]) {
      const json name = value_of(child, "name");
      out.push_back(name.is_string() ? name.get<std::string>() : child["class"].get<std::string>());
    }
    return out;
  }
  // The one child of `o` named `name`.
  static json child(const json& o, const std::string& name) {
    for (const json& c : o["children"]) {
      if (value_of(c, "name") == name) return c;
    }
    return json();
  }
  json instance() { return db_->object(instance_.text()); }

  json world_ = host::testing::report_world();
  std::vector<int32_t> failing_;
  std::unique_ptr<host::testing::WorldDatabase> db_;
  tql::id_t instance_;
  ResolvedIssue issue_;
  ReportFlags flags_;
  CountingProgress progress_;
  int64_t first_sample_ = 0;
};

TEST_F(ReportWalkTest, EachLevelWritesItsFolderAndTheCheckItsStatisticsAndChart) {
  walk(ReportKind::kAvailability);
  const json root = child(instance(), "Root");
  ASSERT_FALSE(root.is_null()) << instance().dump();
  const json servers = child(root, "Servers");
  const json web = child(servers, "web.example.test");
  ASSERT_FALSE(web.is_null()) << servers.dump();
  const json load = child(web, "load");
  ASSERT_FALSE(load.is_null()) << web.dump();
  EXPECT_EQ(1u, progress_.done);
  EXPECT_EQ(kDataStart, first_sample_);
  // The chart keeps a copy of the check's samples.
  bool charted = false;
  for (const json& c : load["children"]) {
    if (c["class"] != "ReportResultGraph") continue;
    charted = true;
    EXPECT_FALSE(db_->series(c["id"], "tsdbIndex").empty());
  }
  EXPECT_TRUE(charted) << names(load).size();
  // The domain's sums come after its nodes.
  EXPECT_EQ((std::vector<std::string>{"web.example.test", "Availability",
                                      "Worst node availability is web.example.test"}),
            names(servers));
}

TEST_F(ReportWalkTest, NodesComeBeforeSubdomainsAndInTheOrderOfTheirLabels) {
  json& servers = object_in(world_, "0.1.2");
  servers["children"].push_back(
      {{"class", "Domain"},
       {"id", "0.1.20"},
       {"props", {{"name", {{"string", "Sub"}}}, {"treeLabel", {{"string", "Sub"}}}}},
       {"children", {node("0.1.21", "deep", "deep.example.test", world_)}}});
  servers["children"].push_back(node("0.1.30", "alpha", "alpha.example.test", world_));
  walk(ReportKind::kStatistics);
  std::vector<std::string> folders;
  const json servers_folder = child(child(instance(), "Root"), "Servers");
  for (const json& c : servers_folder["children"]) {
    if (c["class"] == "ReportResultFolder") folders.push_back(value_of(c, "name"));
  }
  EXPECT_EQ((std::vector<std::string>{"alpha.example.test", "web.example.test", "Sub"}), folders);
  EXPECT_EQ(3u, progress_.done);
}

TEST_F(ReportWalkTest, LevelsAtTheHideLevelWithValuesOverTheThresholdAreDeleted) {
  issue_.hideLevel = 2;
  issue_.hideThreshold = 0;
  walk(ReportKind::kAvailability);
  const json servers = child(child(instance(), "Root"), "Servers");
  ASSERT_FALSE(servers.is_null());
  EXPECT_TRUE(child(servers, "web.example.test").is_null()) << servers.dump();
}

TEST_F(ReportWalkTest, AnIncidentReportKeepsTheNodesIncidentsThatTheFlagsAskFor) {
  world_["series"].push_back({{"owner", "0.1.3"},
                              {"property", "tsdbIncident"},
                              {"data_type", 4},
                              {"records",
                               {{4, "web is down", kDataStart + 600},
                                {1, "web is up", kDataStart + 900},
                                {2, "web is slow", kDataStart + 1200}}}});
  flags_.warnScore = true;
  walk(ReportKind::kIncidents);
  const json web = child(child(child(instance(), "Root"), "Servers"), "web.example.test");
  ASSERT_FALSE(web.is_null());
  std::vector<std::string> kept;
  for (const json& c : web["children"]) {
    if (c["class"] != "ReportResultLog") continue;
    for (const json& r : db_->series(c["id"], "tsdbIncident")) kept.push_back(r[1]);
  }
  EXPECT_EQ((std::vector<std::string>{"web is down", "web is slow"}), kept);
}

TEST_F(ReportWalkTest, AConfigurationReportDescribesTheCheckWithoutAChart) {
  walk(ReportKind::kConfiguration);
  const json load =
      child(child(child(child(instance(), "Root"), "Servers"), "web.example.test"), "load");
  ASSERT_FALSE(load.is_null());
  for (const json& c : load["children"]) EXPECT_NE("ReportResultGraph", c["class"]);
  EXPECT_FALSE(names(load).empty());
}

TEST_F(ReportWalkTest, ARefusedWriteLeavesTheWalkAndWhatWasWrittenStays) {
  failing_ = {schema::kReportResultGraph};
  EXPECT_THROW(walk(ReportKind::kAvailability), errors::tql);
  const json web = child(child(child(instance(), "Root"), "Servers"), "web.example.test");
  EXPECT_FALSE(child(web, "load").is_null());
  EXPECT_EQ(0u, progress_.done);
}

}  // namespace
