#include "reporter/report_definition.h"

#include <gtest/gtest.h>

#include "tql/schema.h"

namespace {

tql::patch_t Object(int32_t class_, tql::id_t id, const char* name = nullptr) {
  tql::patch_t p;
  p.class_ = class_;
  p.id = id;
  if (name != nullptr) p.set_property(tql::make_string_property(schema::kName, name));
  return p;
}

tql::patch_t Text(uint32_t type, const char* comment) {
  tql::patch_t p = Object(schema::kReportText, tql::id_t{0, 1, 99});
  p.set_property(tql::make_property<tql::kind::kEnum>(
      schema::kType, tql::enum_value_t{schema::kReportTextTypeEnum, type}));
  p.set_property(tql::make_string_property(schema::kComment, comment));
  return p;
}

std::string Comment(const tql::patch_t* text) {
  return text == nullptr
             ? "(none)"
             : dynamic_cast<const tql::property_string_t&>(text->property(schema::kComment)).value;
}

TEST(WalkDefinition, PathOwnerAndTheNearestTexts) {
  tql::patch_t root = Object(schema::kDomain, tql::kRootId, "Root");
  root.children.push_back(Text(0, "root opening"));
  root.children.push_back(Text(1, "root closing"));
  tql::patch_t ops = Object(schema::kDomain, tql::id_t{0, 1, 2}, "Ops");
  tql::patch_t web = Object(schema::kDomain, tql::id_t{0, 1, 3}, "Web");
  web.children.push_back(Text(0, "web opening"));
  web.children.push_back(Text(7, "ignored"));
  web.children.push_back(Object(schema::kReport, tql::id_t{0, 1, 10}));
  ops.children.push_back(std::move(web));
  root.children.push_back(std::move(ops));

  ReportDefinition d;
  walkDefinition(std::make_unique<tql::patch_t>(std::move(root)), d);
  ASSERT_NE(nullptr, d.report);
  EXPECT_EQ((tql::id_t{0, 1, 10}), d.report->id);
  EXPECT_EQ((tql::id_t{0, 1, 3}), d.owner_domain);
  EXPECT_EQ("Ops.Web", d.pathText());
  EXPECT_EQ("web opening", Comment(d.opening_text));
  EXPECT_EQ("root closing", Comment(d.closing_text));
}

TEST(WalkDefinition, AReportInTheRootDomainHasThePathDot) {
  tql::patch_t root = Object(schema::kDomain, tql::kRootId, "Root");
  root.children.push_back(Object(schema::kReport, tql::id_t{0, 1, 10}));
  ReportDefinition d;
  walkDefinition(std::make_unique<tql::patch_t>(std::move(root)), d);
  EXPECT_EQ(".", d.pathText());
  EXPECT_EQ(tql::kRootId, d.owner_domain);
  EXPECT_EQ("(none)", Comment(d.opening_text));
}

TEST(WalkDefinitionDeathTest, ADomainMustLeadToExactlyOneChild) {
  tql::patch_t root = Object(schema::kDomain, tql::kRootId);
  root.children.push_back(Object(schema::kDomain, tql::id_t{0, 1, 2}));
  root.children.push_back(Object(schema::kReport, tql::id_t{0, 1, 10}));
  ReportDefinition twice;
  EXPECT_DEATH(walkDefinition(std::make_unique<tql::patch_t>(root), twice),
               "Child found twice while searching for report template");
  root.children.clear();
  ReportDefinition none;
  EXPECT_DEATH(walkDefinition(std::make_unique<tql::patch_t>(root), none),
               "Did not find child when searching for report template");
}

}  // namespace
