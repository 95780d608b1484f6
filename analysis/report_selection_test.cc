#include "analysis/report_selection.h"

#include <gtest/gtest.h>

#include "analysis/walk_schema.h"
#include "tql/errors.h"

namespace {

tql::patch_t Child(int32_t class_) {
  tql::patch_t p;
  p.class_ = class_;
  return p;
}

TEST(SelectionsOf, OneRecordPerSelectionWithItsPathsInOrder) {
  tql::patch_t report;
  tql::patch_t first = Child(walk::kReportSelection);
  tql::object_set_t ids{{tql::id_t{0, 1, 7}, {}}};
  first.set_property(tql::make_property<9>(walk::kContains, ids));
  tql::patch_t path = Child(walk::kReportCheckSelection);
  path.set_property(tql::make_property<8>(walk::kContains, std::list<std::string>{"G", "C"}));
  first.children.push_back(path);
  first.children.push_back(Child(walk::kReportCheckSelection));  // no path: empty
  report.children.push_back(Child(walk::kPlan));
  report.children.push_back(first);
  tql::patch_t second = Child(walk::kReportSelection);
  second.set_property(tql::make_property<9>(walk::kNodeClasses, ids));
  second.set_property(tql::make_property<9>(walk::kContains, tql::object_set_t{}));
  second.properties[walk::kContains]->is_null = true;
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
  tql::patch_t selection = Child(walk::kReportSelection);
  tql::patch_t path = Child(walk::kReportCheckSelection);
  path.set_property(tql::make_string_property(walk::kContains, "G/C"));
  selection.children.push_back(path);
  report.children.push_back(selection);
  std::vector<ReportSelectionRecord> records;
  EXPECT_THROW(selectionsOf(report, records), errors::tql);
  report.children[0].children.clear();
  report.children[0].set_property(tql::make_string_property(walk::kContains, "0.1.7"));
  EXPECT_THROW(selectionsOf(report, records), errors::tql);
}

}  // namespace
