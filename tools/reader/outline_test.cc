// The outline over the in-memory read model: what each kind of item prints,
// nesting, and that only the path to the current item is alive.
#include "tools/reader/outline.h"

#include <gtest/gtest.h>

#include <sstream>

#include "report/fake_report.h"
#include "tql/schema.h"

namespace tools {
namespace {

namespace fake = report::fake;

std::string outline(std::vector<fake::Item> items, const GraphDetails& details = nullptr) {
  fake::Instance instance(std::move(items));
  instance.start_ = 100;
  instance.duration_ = 50;
  instance.generated_ = 200;
  std::ostringstream out;
  print_outline(instance, out, details);
  return out.str();
}

TEST(OutlineTest, EveryKindOfItemOnItsOwnLine) {
  fake::Item check =
      fake::folder(schema::kFolderCheck, "HTTP",
                   {fake::row("Availability", "99 %", "id.web1"),
                    fake::commented(fake::graph("HTTP"), "in seconds"),
                    fake::log("Incidents", {{report::kSeverityAlert, "down", 7}, {3, "odd", 8}})});
  fake::Item node = fake::folder(schema::kFolderNode, "web1", {fake::row("", "single")}, {check});
  EXPECT_EQ(
      "instance \"Weekly\" start 100 duration 50 generated 200 by \"Tavrel 5.2\"\n"
      "  text \"Hello\"\n"
      "  folder node \"web1\" anchor id.web1\n"
      "    row \"\" \"single\"\n"
      "    folder check \"HTTP\" anchor id.HTTP\n"
      "      row \"Availability\" \"99 %\" origin id.web1\n"
      "      graph \"HTTP\" anchor id.HTTP 2 samples\n"
      "        comment \"in seconds\"\n"
      "      log \"Incidents\"\n"
      "        alert 7 \"down\"\n"
      "        severity 3 8 \"odd\"\n",
      outline({fake::text("Hello"), node},
              [](report::ReportGraph&) { return std::string("2 samples"); }));
}

TEST(OutlineTest, SubSectionsNestAndUnknownTypesShowTheirNumber) {
  fake::Item section =
      fake::folder(schema::kFolderSubSection, "Downtime", {fake::row("", "Mon 8-18")});
  fake::Item odd = fake::folder(9, "odd");
  EXPECT_EQ(
      "instance \"Weekly\" start 100 duration 50 generated 200 by \"Tavrel 5.2\"\n"
      "  folder explanation \"Why\" anchor id.Why\n"
      "    comment \"a\\nb\"\n"
      "    folder section \"Downtime\" anchor id.Downtime\n"
      "      row \"\" \"Mon 8-18\"\n"
      "  folder type 9 \"odd\" anchor id.odd\n"
      "  unknown item\n",
      outline({fake::commented(fake::folder(schema::kFolderExplanation, "Why", {section}), "a\nb"),
               odd, fake::stranger()}));
}

TEST(OutlineTest, ItemsAreDroppedAsSoonAsTheyArePrinted) {
  std::vector<fake::Item> rows(20, fake::row("l", "v"));
  fake::Item deep = fake::folder(schema::kFolderCheck, "c", rows);
  fake::reset_peak();
  outline({fake::folder(schema::kFolderDomain, "d", rows, {deep}), fake::text("t")});
  EXPECT_EQ(0, fake::alive());
  // At the deepest: the instance's two items, the domain's one subfolder and
  // the check's 20 rows; the domain's rows are gone by then.
  EXPECT_GE(2 + 1 + 20, fake::peak_alive());
}

TEST(OutlineTest, QuotingKeepsEachItemOnOneLine) {
  EXPECT_EQ("\"a\\\"b\\\\c\\r\\t\\x01\\x7f\xe9\"", quote_line("a\"b\\c\r\t\x01\x7f\xe9"));
}

}  // namespace
}  // namespace tools
