#include "report/text_renderer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/error.h"
#include "report/fake_report.h"
#include "tql/schema.h"

namespace report {
namespace {

using fake::commented;
using fake::folder;
using fake::Item;
using fake::row;

std::string Text(std::vector<Item> items, int32_t zone = 0) {
  fake::Instance instance(std::move(items));
  std::ostringstream out;
  render_report_text(instance, out, timeZoneValue(zone));
  return out.str();
}

TEST(TextReport, FolderPrefixesAndIndents) {
  EXPECT_EQ(
      "Domain: Main\r\n"
      "  all domains\r\n"
      "  Avail: 99%\r\n"
      "  \r\n"
      "  Node: web1\r\n"
      "    \r\n"
      "    ping\r\n"
      "      \r\n"
      "<none>: About\r\n"
      "  \r\n",
      Text({commented(folder(schema::kFolderDomain, "Main", {row("Avail", "99%")},
                             {folder(schema::kFolderNode, "web1", {},
                                     {folder(schema::kFolderCheck, "ping")})}),
                      "all domains"),
            folder(schema::kFolderExplanation, "About")}));
}

TEST(TextReport, SubSectionKeepsItsItemsAtItsOwnLevel) {
  EXPECT_EQ(
      "Node: web1\r\n"
      "  \r\n"
      "  Totals\r\n"
      "  \r\n"
      "  all good\r\n"
      "  \r\n"
      "  Graph: load\r\n"
      "  per hour\r\n",
      Text({folder(schema::kFolderNode, "web1",
                   {folder(schema::kFolderSubSection, "Totals",
                           {row("", "all good"), commented(fake::graph("load"), "per hour")})})}));
}

TEST(TextReport, LogMarkersLineUpAndUnknownSeverityHasNone) {
  EXPECT_EQ(
      "ping\r\n"
      "  \r\n"
      "  Log: events\r\n"
      "     OK: 01/01/1970 02:00:00: up\r\n"
      "   Warn: 02/01/1970 02:01:00: slow\r\n"
      "  Alert: 01/01/2000 01:59:59: down\r\n"
      "01/01/1970 03:00:00: odd\r\n"
      "  last week\r\n",
      Text({folder(schema::kFolderCheck, "ping",
                   {commented(fake::log("events", {{kSeverityOk, "up", 0},
                                                   {kSeverityWarning, "slow", 86460},
                                                   {kSeverityAlert, "down", 946684799},
                                                   {3, "odd", 3600}}),
                              "last week")})},
           7200));
}

TEST(TextReport, LogWithoutEntriesGivesTwoLines) {
  EXPECT_EQ("ping\r\n  \r\n  Log: events\r\n  \r\n",
            Text({folder(schema::kFolderCheck, "ping", {fake::log("events", {})})}));
}

TEST(TextReport, TextsStandAsTheMarkupGivesThemAndEndTheirLine) {
  EXPECT_EQ("Hello ALL\nbye\r\n", Text({fake::text("Hello <b>all</b>\r\nbye")}));
  EXPECT_EQ("Parse error: Unterminated b-tag in \"<b>x\"\r\nUnknown ReportInstanceContent",
            Text({fake::text("<b>x"), fake::stranger()}));
  // The opening text doesn't run into the first heading.
  EXPECT_EQ("Over one month.\r\nDomain: Demo\r\n  \r\n",
            Text({fake::text("Over one month."), folder(schema::kFolderDomain, "Demo", {})}));
  EXPECT_EQ("Ends its line\nDomain: Demo\r\n  \r\n",
            Text({fake::text("Ends its line\r\n"), folder(schema::kFolderDomain, "Demo", {})}));
}

TEST(TextReport, HeadingsAndValuesAreNotEscaped) {
  EXPECT_EQ("a<b\r\n  \r\n  x&y: <i>1</i>\r\n  \r\n",
            Text({folder(schema::kFolderCheck, "a<b", {row("x&y", "<i>1</i>")})}));
}

TEST(TextReport, ItemOfUnknownKindInAFolderIsLeftOut) {
  EXPECT_EQ("ping\r\n  \r\n  A: 1\r\n  \r\n",
            Text({folder(schema::kFolderCheck, "ping", {fake::stranger(), row("A", "1")})}));
}

TEST(TextReport, ReadFailurePassesThroughAndFreesWhatWasRead) {
  Item broken = folder(schema::kFolderCheck, "ping");
  broken.fail_contents = true;
  EXPECT_THROW(Text({folder(schema::kFolderNode, "web", {}, {broken})}), error::ESystemError);
  EXPECT_EQ(0, fake::alive());
}

}  // namespace
}  // namespace report
