#include "reporter/generation_values.h"

#include <gtest/gtest.h>

#include "tql/errors.h"
#include "tql/schema.h"

namespace {

using Addresses = std::vector<std::string>;

TEST(SplitAddresses, AtEachSeparatorWithoutEmptyEntries) {
  EXPECT_EQ((Addresses{"a@x", "b@y", "c@z", "d@w"}), splitAddresses("a@x;b@y, c@z:d@w"));
  EXPECT_EQ((Addresses{"a@x", "b@y"}), splitAddresses(" ;,:a@x;;  ,b@y: "));
  EXPECT_EQ(Addresses{}, splitAddresses(""));
  EXPECT_EQ(Addresses{}, splitAddresses(" ; "));
}

TEST(DestinationAddresses, StringStringListNullAndAbsent) {
  tql::patch_t report;
  EXPECT_EQ(Addresses{}, destinationAddresses(report));
  report.set_property(tql::make_string_property(schema::kDestination, "a@x, b@y"));
  EXPECT_EQ((Addresses{"a@x", "b@y"}), destinationAddresses(report));
  report.properties[schema::kDestination]->is_null = true;
  EXPECT_EQ(Addresses{}, destinationAddresses(report));
  report.set_property(tql::make_property<tql::kind::kStringList>(
      schema::kDestination, std::list<std::string>{"a@x;b@y", "c@z"}));
  EXPECT_EQ((Addresses{"a@x", "b@y", "c@z"}), destinationAddresses(report));
}

TEST(ReadReportFlags, PresentFlagsSetAbsentOnesStayNullRaises) {
  ReportFlags flags;
  flags.goodScore = true;
  flags.graphAutoScale = true;
  tql::patch_t report;
  report.set_property(tql::make_boolean_property(schema::kAlertScore, false));
  report.set_property(tql::make_boolean_property(schema::kGraphTabularEnum, true));
  readReportFlags(report, flags);
  EXPECT_TRUE(flags.goodScore);       // absent: kept from before
  EXPECT_TRUE(flags.graphAutoScale);  // absent: kept from before
  EXPECT_FALSE(flags.alertScore);
  EXPECT_TRUE(flags.graphTabularEnum);
  report.properties[schema::kAlertScore]->is_null = true;
  EXPECT_THROW(readReportFlags(report, flags), errors::tql);
}

TEST(NextOrder, TheStoredOrderPlusOne) {
  tql::patch_t report;
  report.set_property(tql::make_property<tql::kind::kUint>(schema::kOrder, 41u));
  EXPECT_EQ(42u, nextOrder(report));
}

TEST(NextOrderDeathTest, AnOrderOfAnotherKindIsAnAssertion) {
  tql::patch_t report;
  report.set_property(tql::make_property<tql::kind::kInt>(schema::kOrder, 41));
  EXPECT_DEATH(nextOrder(report), "Couldn't get order property from template");
}

}  // namespace
