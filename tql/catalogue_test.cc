#include "tql/catalogue.h"

#include <gtest/gtest.h>

#include "tql/schema.h"

namespace tql {
namespace {

TEST(CatalogueTest, ClassNames) {
  EXPECT_EQ("NodeInfoGroup", class_name(0));
  EXPECT_EQ(".", class_name(schema::kRootClass));
  EXPECT_EQ("ReportSendTo", class_name(62));
  EXPECT_EQ("GraphicalViewNode", class_name(94));
  EXPECT_EQ("<unknown class: 78>", class_name(78));
  EXPECT_EQ("<unknown class: 999>", class_name(999));
  EXPECT_EQ("<unknown class: -1>", class_name(-1));
  EXPECT_EQ(94u, class_names().size());
}

TEST(CatalogueTest, PropertyNames) {
  EXPECT_EQ("id", property_name(0));
  EXPECT_EQ("workerNode", property_name(3309));
  EXPECT_EQ("capGridConf", property_name(913));
  EXPECT_EQ("capGridConf", property_name(915));
  EXPECT_EQ("yCoordinate", property_name(4402));
  EXPECT_EQ("<unknown property: 4>", property_name(4));
  EXPECT_EQ(488u, property_names().size());
}

}  // namespace
}  // namespace tql
