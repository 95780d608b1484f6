// The rows of a configuration report: alert groups with their inheritance,
// a check's settings, its LogCheck rules, and the rows of nodes and domains.
#include "analysis/check_configuration.h"

#include <gtest/gtest.h>

#include "analysis/summary_rows.h"
#include "analysis/test_patches.h"
#include "analysis/test_rows.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

using namespace testing_patches;
using testing_rows::Objects;
using testing_rows::Rows;
using Lines = std::vector<std::string>;

const tql::id_t kFolder{0, 99};
const tql::id_t kReportRoot{0, 1};

std::string row(const std::string& label, const std::string& value,
                const std::string& parent = "0.99") {
  return "row under " + parent + " \"" + label + "\" = \"" + value + "\" origin ";
}

std::string folder(const std::string& id, const std::string& name,
                   const std::string& parent = "0.99") {
  return "folder " + id + " under " + parent + " type 4 \"" + name + "\" origin ";
}

tql::patch_t withGroup(tql::patch_t p, tql::id_t group) {
  withObject(p, schema::kAlertGroupProperty, group);
  return p;
}

tql::patch_t alertGroup(tql::id_t id, std::string name, std::vector<tql::id_t> members = {}) {
  tql::patch_t g = objectWithId(schema::kAlertGroup, id);
  withString(g, schema::kName, std::move(name));
  if (!members.empty()) withObjectSet(g, schema::kMembers, std::move(members));
  return g;
}

// The tree of the report: root domain 0.1 (group 0.1.50) > domain 0.1.2
// (group 0.1.51) > domain 0.1.3 (inherits) > node 0.1.10 (`nodeGroup`) >
// group > check 0.1.20.
struct World {
  Objects objects;
  tql::patch_t check = withGroup(objectWithId(schema::kCheck, {0, 1, 20}), tql::kId02);

  explicit World(tql::id_t nodeGroup) {
    objects.stored[{0, 1, 50}] = alertGroup({0, 1, 50}, "Ops-top");
    objects.stored[{0, 1, 51}] = alertGroup({0, 1, 51}, "Ops-sub");
    objects.stored[{0, 1, 52}] = alertGroup({0, 1, 52}, "Web team");
    const tql::patch_t node = withGroup(objectWithId(schema::kNode, {0, 1, 10}), nodeGroup);
    objects.selectOneReplies["0.1 Domain/1 > Node/2 > CheckGroup/1 > Check/0[id=0.1.20]"] =
        objectWithId(schema::kDomain, {0, 1},
                     {objectWithId(schema::kDomain, {0, 1, 3}, {tql::patch_t(node)})});
    auto chainTo = [&](tql::patch_t leaf) {
      return withGroup(
          objectWithId(schema::kDomain, {0, 1},
                       {withGroup(objectWithId(schema::kDomain, {0, 1, 2},
                                               {withGroup(objectWithId(schema::kDomain, {0, 1, 3},
                                                                       {std::move(leaf)}),
                                                          tql::kId03)}),
                                  {0, 1, 51})}),
          {0, 1, 50});
    };
    objects.selectOneReplies["0.1 ./1 > ./0[id=0.1.20]"] = chainTo(node);
    objects.selectOneReplies["0.1 ./1 > ./0[id=0.1.10]"] = chainTo(node);
  }
};

TEST(AlertGroupRows, NullGroupIsNone) {
  Rows rows;
  Objects objects;
  tql::patch_t check = objectWithId(schema::kCheck, {0, 1, 20});
  withNull(check, schema::kAlertGroupProperty, 10);
  writeAlertGroupRows(rows, objects, kFolder, check, kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "none")}), rows.lines);
  EXPECT_TRUE(objects.calls.empty());
}

TEST(AlertGroupRows, AbsentGroupRaises) {
  Rows rows;
  Objects objects;
  EXPECT_THROW(writeAlertGroupRows(rows, objects, kFolder, objectWithId(schema::kCheck, {0, 1, 20}),
                                   kReportRoot),
               errors::tql);
}

TEST(AlertGroupRows, OwnGroupWithItsPathsInSetOrder) {
  Rows rows;
  Objects objects;
  objects.stored[{0, 1, 52}] = alertGroup({0, 1, 52}, "Web team", {{0, 1, 71}, {0, 1, 70}});
  for (uint32_t n : {70u, 71u}) {
    tql::patch_t path = objectWithId(schema::kAlertPath, {0, 1, n});
    withString(path, schema::kLongLabel, n == 70 ? "pager" : "mail");
    objects.selectOneReplies["0.1 Domain/0 > Domain/1 > User/0 > AlertPath/2[id=0.1." +
                             std::to_string(n) + "]"] =
        objectWithId(schema::kDomain, {0, 1},
                     {objectWithId(schema::kUser, {0, 1, 60}, {std::move(path)})});
  }
  writeAlertGroupRows(rows, objects, kFolder,
                      withGroup(objectWithId(schema::kCheck, {0, 1, 20}), {0, 1, 52}), kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "Web team"), row(" ", "pager"), row(" ", "mail")}),
            rows.lines);
}

TEST(AlertGroupRows, MissingPathStopsTheRest) {
  Rows rows;
  Objects objects;
  objects.stored[{0, 1, 52}] = alertGroup({0, 1, 52}, "Web team", {{0, 1, 70}, {0, 1, 71}});
  tql::patch_t path = objectWithId(schema::kAlertPath, {0, 1, 71});
  withString(path, schema::kLongLabel, "mail");
  objects.selectOneReplies["0.1 Domain/0 > Domain/1 > User/0 > AlertPath/2[id=0.1.71]"] = path;
  writeAlertGroupRows(rows, objects, kFolder,
                      withGroup(objectWithId(schema::kCheck, {0, 1, 20}), {0, 1, 52}), kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "Web team")}), rows.lines);
}

TEST(AlertGroupRows, FromTheNodeAndOnToTheNearestDomain) {
  World world(tql::kId03);
  Rows rows;
  writeAlertGroupRows(rows, world.objects, kFolder, world.check, kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "as node -> as domain -> Ops-sub")}), rows.lines);
  EXPECT_EQ((Lines{"selectOne 0.1 Domain/1 > Node/2 > CheckGroup/1 > Check/0[id=0.1.20]",
                   "selectOne 0.1 ./1 > ./0[id=0.1.20]", "getObject 0.1.51 AlertGroup"}),
            world.objects.calls);
}

TEST(AlertGroupRows, NodeOwnGroupAndNullNodeGroup) {
  World own(tql::id_t{0, 1, 52});
  Rows rows;
  writeAlertGroupRows(rows, own.objects, kFolder, own.check, kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "as node -> Web team")}), rows.lines);

  World none(tql::kId03);
  tql::patch_t& path =
      none.objects.selectOneReplies.at("0.1 Domain/1 > Node/2 > CheckGroup/1 > Check/0[id=0.1.20]");
  withNull(path.children[0].children[0], schema::kAlertGroupProperty, 10);
  Rows noneRows;
  writeAlertGroupRows(noneRows, none.objects, kFolder, none.check, kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "as node -> none")}), noneRows.lines);
}

TEST(AlertGroupRows, AccumulationGoesThroughItsCheck) {
  World world(tql::id_t{0, 1, 52});
  tql::patch_t accumulation =
      withGroup(objectWithId(schema::kCheckAccumulation, {0, 1, 21}), tql::kId02);
  world.objects.selectOneReplies
      ["0.1 Domain/1 > Node/2 > CheckGroup/1 > Check/0 > CheckAccumulation/0[id=0.1.21]"] =
      world.objects.selectOneReplies.at(
          "0.1 Domain/1 > Node/2 > CheckGroup/1 > Check/0[id=0.1.20]");
  Rows rows;
  writeAlertGroupRows(rows, world.objects, kFolder, accumulation, kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "as check -> Web team")}), rows.lines);
}

TEST(AlertGroupRows, NodeInheritingFromDomainsWithANullBelowARealGroup) {
  World world(tql::kId03);
  const tql::patch_t node = withGroup(objectWithId(schema::kNode, {0, 1, 10}), tql::kId03);
  Rows inherited;
  writeAlertGroupRows(inherited, world.objects, kFolder, node, kReportRoot);
  EXPECT_EQ((Lines{row("Alert group", "as domain -> Ops-sub")}), inherited.lines);

  // A null at 0.1.3, below the real group of 0.1.2, clears it again.
  tql::patch_t& chain = world.objects.selectOneReplies.at("0.1 ./1 > ./0[id=0.1.10]");
  withNull(chain.children[0].children[0], schema::kAlertGroupProperty, 10);
  Rows cleared;
  world.objects.calls.clear();
  writeAlertGroupRows(cleared, world.objects, kFolder, node, kReportRoot);
  EXPECT_TRUE(cleared.lines.empty());
  EXPECT_EQ((Lines{"selectOne 0.1 ./1 > ./0[id=0.1.10]"}), world.objects.calls);
}

// A check with most settings, alertStrategy ScoreKeeper and no alert group.
tql::patch_t fullCheck() {
  tql::patch_t c = objectWithId(schema::kCheck, {0, 1, 20});
  withString(c, schema::kLabel, "HTTP");
  withString(c, schema::kInfoUrl, "http://wiki/http");
  withUint(c, schema::kFrequency, 60);
  withNull(c, schema::kAlertGroupProperty, 10);
  withEnum(c, schema::kAlertStrategy, 1);
  withBool(c, schema::kAcknowledgeAlerts, true);
  withEnum(c, schema::kPeriod, 7);
  withBool(c, schema::kRolling, false);
  withReal(c, schema::kAlertIfAbove, 3);
  withReal(c, schema::kWarnIfAbove, 1.5);
  withNull(c, schema::kWarnIfBelow, 13);
  withUint(c, schema::kGoodScore, 1);
  withUint(c, schema::kAlertScore, 10);
  withReal(c, schema::kPlotMax, 5);
  withString(c, schema::kHttpUrl, "http://web1/");
  withUint(c, schema::kPort, 80);
  withString(c, schema::kComment, "watch the front page");
  return c;
}

TEST(CheckConfiguration, RowsAndSubFoldersInOrder) {
  Rows rows;
  Objects objects;
  writeConfiguration(rows, objects, fullCheck(), kFolder, kReportRoot, timeZoneValue(0));
  EXPECT_EQ((Lines{row("Label", "HTTP"),
                   row("Info URL", "http://wiki/http"),
                   row("Check interval", "60"),
                   row("Alert group", "none"),
                   row("Acknowledge alerts", "true"),
                   row("Alert strategy", "ScoreKeeper"),
                   row("Accumulation period", "1 hour"),
                   row("Is rolling", "false"),
                   row("Forecast enabled", "false"),
                   row("Alert when above", "3.000000"),
                   row("Warn when above", "1.500000"),
                   folder("9.1", "ScoreKeeper parameters"),
                   row("Good score", "1", "9.1"),
                   row("Bad score", "10", "9.1"),
                   folder("9.2", "Graph plotting"),
                   row("Max value", "5.000000", "9.2"),
                   folder("9.3", "Check parameter"),
                   row("Port", "80", "9.3"),
                   row("URL to check", "http://web1/", "9.3"),
                   row("", "watch the front page")}),
            rows.lines);
  EXPECT_EQ((Lines{"selectOne 0.1.20 ./4 > Plan/2 > {ExpectedEvent/2, UnexpectedEvent/2, "
                   "WeekPlanner/2 > DayPlanner/2 > Event/2}",
                   "selectOne 0.1.20 Check/0 > {LogCheckRule/2, LogCheckRuleComment/2}"}),
            objects.calls);
}

// The rows of `check` with no objects to look up.
Lines configurationOf(const tql::patch_t& check) {
  Rows rows;
  Objects objects;
  writeConfiguration(rows, objects, check, kFolder, kReportRoot, timeZoneValue(0));
  return rows.lines;
}

TEST(CheckConfiguration, ForecastSettingsInTheirOwnFolder) {
  tql::patch_t c = objectWithId(schema::kCheck, {0, 1, 20});
  withNull(c, schema::kAlertGroupProperty, 10);
  withNull(c, schema::kAlertStrategy, 25);
  withBool(c, schema::kForecastEnabled, true);
  withBool(c, schema::kWarnOnForecast, true);
  withEnum(c, schema::kForecastAlertTime, 3);
  withEnum(c, schema::kForecastAlertEstError, 9);
  EXPECT_EQ((Lines{row("Alert group", "none"), row("Alert strategy", "unknown"),
                   folder("9.1", "Forecast settings"), row("Warn on forecast", "true", "9.1"),
                   row("Warn for how long in the future", "12 hours", "9.1"),
                   row("Warn only when estimated error is below", "<unknown>", "9.1")}),
            configurationOf(c));
}

TEST(CheckConfiguration, AlertStrategyIsRequired) {
  tql::patch_t c = objectWithId(schema::kCheck, {0, 1, 20});
  withNull(c, schema::kAlertGroupProperty, 10);
  EXPECT_THROW(configurationOf(c), errors::tql);
}

TEST(CheckConfiguration, StateActionsNeedALabel) {
  tql::patch_t c = objectWithId(schema::kCheck, {0, 1, 20});
  withNull(c, schema::kAlertGroupProperty, 10);
  withEnum(c, schema::kAlertStrategy, 0);
  withEnum(c, schema::kStateAction0, 0);
  withString(c, schema::kStateLabel0, "up");
  withEnum(c, schema::kStateAction0 + 1, 2);  // no label: no row
  withEnum(c, schema::kStateAction0 + 2, 7);
  withString(c, schema::kStateLabel0 + 2, "odd");
  withString(c, schema::kStateLabel0 + 3, "no action");
  withNull(c, schema::kStateLabel0 + 31, 7);
  withEnum(c, schema::kStateAction0 + 31, 1);
  EXPECT_EQ((Lines{row("Alert group", "none"), row("Alert strategy", "Immediate"),
                   row("Forecast enabled", "false"), folder("9.1", "State actions"),
                   row("up", "Ok", "9.1"), row("odd", "Unknown", "9.1")}),
            configurationOf(c));
}

tql::patch_t rule(uint32_t order, std::string regex, uint32_t status, uint32_t decision) {
  tql::patch_t r = object(schema::kLogCheckRule);
  withUint(r, schema::kOrder, order);
  withString(r, schema::kLogCheckRegex, std::move(regex));
  withEnum(r, schema::kLogCheckStatus, status, 65600);
  withEnum(r, schema::kLogCheckLogDecision, decision, 65601);
  return r;
}

TEST(LogCheckRules, InOrderWithCommentsAndForwardTargets) {
  tql::patch_t moved = rule(3, "^panic", 2, 2);
  withObject(moved, schema::kDestination, {0, 1, 80});
  tql::patch_t copied = rule(4, "disk", 1, 3);
  withObject(copied, schema::kDestination, {0, 1, 81});  // deleted
  tql::patch_t comment = object(schema::kLogCheckRuleComment);
  withUint(comment, schema::kOrder, 1);
  withString(comment, schema::kText, "kernel");
  tql::patch_t unordered = object(schema::kLogCheckRuleComment);
  withString(unordered, schema::kText, "first");
  tql::patch_t incomplete = object(schema::kLogCheckRule);
  withString(incomplete, schema::kLogCheckRegex, "x");
  Objects objects;
  tql::patch_t target = objectWithId(schema::kCheck, {0, 1, 80});
  withString(target, schema::kAgentId, "agent7");
  objects.stored[{0, 1, 80}] = target;
  objects.selectOneReplies["0.1.20 Check/0 > {LogCheckRule/2, LogCheckRuleComment/2}"] =
      objectWithId(schema::kCheck, {0, 1, 20},
                   {copied, rule(2, "oops", 1, 1), moved, comment, rule(5, "ok", 0, 0),
                    rule(6, "odd", 9, 7), unordered, incomplete});
  Rows rows;
  writeLogCheckRules(rows, objects, objectWithId(schema::kCheck, {0, 1, 20}), kFolder);
  EXPECT_EQ(
      (Lines{folder("9.1", "LogCheck rules"), row("", "# first", "9.1"), row("", "# kernel", "9.1"),
             row("", "oops: warn quiet;", "9.1"), row("", "^panic: moveto 'agent7';", "9.1"),
             row("", "disk: copyto <deleted forward LogCheck>;", "9.1"),
             row("", "ok: ok log;", "9.1"), row("", "odd: ;", "9.1")}),
      rows.lines);
  EXPECT_EQ("select 0.1.80 0.1.81 ./2", objects.calls.back());
}

TEST(LogCheckRules, NoCheckNoFolder) {
  Rows rows;
  Objects objects;
  writeLogCheckRules(rows, objects, objectWithId(schema::kCheck, {0, 1, 20}), kFolder);
  EXPECT_TRUE(rows.lines.empty());
}

TEST(NodeConfiguration, RowsScoreKeeperAndNodeClasses) {
  tql::patch_t node = objectWithId(schema::kNode, {0, 1, 10});
  withString(node, schema::kLabel, "web1");
  withUint(node, schema::kCheckinFrequency, 300);
  withNull(node, schema::kAlertGroupProperty, 10);
  withEnum(node, schema::kAlertStrategy, 1);
  withUint(node, schema::kCheckinScore, 2);
  withUint(node, schema::kAlertCeiling, 40);
  withObjectSet(node, schema::kNodeClasses, {{0, 1, 90}, {0, 1, 91}, {0, 1, 92}});
  Objects objects;
  for (uint32_t n : {91u, 92u}) {
    tql::patch_t c = objectWithId(schema::kNodeClass, {0, 1, n});
    withString(c, schema::kName, n == 91 ? "Linux" : "Web");
    objects.stored[{0, 1, n}] = c;
  }
  Rows rows;
  writeNodeConfiguration(rows, objects, kFolder, node, kReportRoot, timeZoneValue(0));
  EXPECT_EQ((Lines{row("Label", "web1"), row("Checkin interval", "300"), row("Alert group", "none"),
                   row("Alert strategy", "ScoreKeeper"), row("Checkin score", "2"),
                   row("Alert ceiling", "40"), folder("9.1", "NodeClasses"),
                   row(" ", "Linux", "9.1"), row(" ", "Web", "9.1")}),
            rows.lines);
}

TEST(NodeConfiguration, NeverCheckinAndUnknownStrategy) {
  tql::patch_t node = objectWithId(schema::kNode, {0, 1, 10});
  withString(node, schema::kLabel, "");
  withString(node, schema::kInfoUrl, "http://wiki/web1");
  withReal(node, schema::kCheckinFrequency, 300);  // not an unsigned integer
  withNull(node, schema::kAlertGroupProperty, 10);
  withEnum(node, schema::kAlertStrategy, 5);
  withUint(node, schema::kCheckinScore, 2);
  Rows rows;
  Objects objects;
  writeNodeConfiguration(rows, objects, kFolder, node, kReportRoot, timeZoneValue(0));
  EXPECT_EQ((Lines{row("Info URL", "http://wiki/web1"), row("Checkin interval", "never checkin"),
                   row("Alert group", "none"), row("Alert strategy", "unknown")}),
            rows.lines);
}

TEST(DomainConfiguration, NameInfoUrlAndScheduledDowntime) {
  tql::patch_t domain = objectWithId(schema::kDomain, {0, 1, 2});
  withString(domain, schema::kName, "Servers");
  withString(domain, schema::kInfoUrl, "http://wiki/servers");
  Objects objects;
  objects.selectOneReplies
      ["0.1.2 ./4 > Plan/2 > {ExpectedEvent/2, UnexpectedEvent/2, "
       "WeekPlanner/2 > DayPlanner/2 > Event/2}"] =
      object(schema::kRootClass, {plan({dayPlanner("nightly", {event(true, 3600, 1800)})})});
  Rows rows;
  writeDomainConfiguration(rows, objects, kFolder, domain, timeZoneValue(0));
  EXPECT_EQ((Lines{row("Name", "Servers"), row("Info URL", "http://wiki/servers"),
                   folder("9.1", "Daily scheduled downtime"),
                   row("nightly", "01:00:00 to 01:30:00", "9.1")}),
            rows.lines);
}

}  // namespace
