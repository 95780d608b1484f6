#include "analysis/report_selection.h"

#include <gtest/gtest.h>

#include "tql/errors.h"
#include "tql/schema.h"

namespace {

tql::patch_t Child(int32_t class_) {
  tql::patch_t p;
  p.class_ = class_;
  return p;
}

TEST(SelectionsOf, OneRecordPerSelectionWithItsPathsInOrder) {
  tql::patch_t report;
  tql::patch_t first = Child(schema::kReportSelection);
  tql::object_set_t ids{{tql::id_t{0, 1, 7}, {}}};
  first.set_property(tql::make_property<tql::kind::kObjectSet>(schema::kContains, ids));
  tql::patch_t path = Child(schema::kReportCheckSelection);
  path.set_property(tql::make_property<tql::kind::kStringList>(schema::kContains,
                                                               std::list<std::string>{"G", "C"}));
  first.children.push_back(path);
  first.children.push_back(Child(schema::kReportCheckSelection));  // no path: empty
  report.children.push_back(Child(schema::kPlan));
  report.children.push_back(first);
  tql::patch_t second = Child(schema::kReportSelection);
  second.set_property(tql::make_property<tql::kind::kObjectSet>(schema::kNodeClasses, ids));
  second.set_property(
      tql::make_property<tql::kind::kObjectSet>(schema::kContains, tql::object_set_t{}));
  second.properties[schema::kContains]->is_null = true;
  report.children.push_back(second);

  std::vector<ReportSelectionRecord> records(5);
  selectionsOf(report, records);
  ASSERT_EQ(2u, records.size());
  EXPECT_EQ(ids, records[0].contains);
  EXPECT_TRUE(records[0].nodeClasses.empty());
  ASSERT_EQ(2u, records[0].checkPaths.size());
  EXPECT_EQ((std::list<std::string>{"G", "C"}), records[0].checkPaths[0]);
  EXPECT_TRUE(records[0].checkPaths[1].empty());
  EXPECT_TRUE(records[1].contains.empty());
  EXPECT_EQ(ids, records[1].nodeClasses);
}

TEST(SelectionsOf, DamagedValuesRaise) {
  tql::patch_t report;
  tql::patch_t selection = Child(schema::kReportSelection);
  tql::patch_t path = Child(schema::kReportCheckSelection);
  path.set_property(tql::make_string_property(schema::kContains, "G/C"));
  selection.children.push_back(path);
  report.children.push_back(selection);
  std::vector<ReportSelectionRecord> records;
  EXPECT_THROW(selectionsOf(report, records), errors::tql);
  report.children[0].children.clear();
  report.children[0].set_property(tql::make_string_property(schema::kContains, "0.1.7"));
  EXPECT_THROW(selectionsOf(report, records), errors::tql);
}

}  // namespace
