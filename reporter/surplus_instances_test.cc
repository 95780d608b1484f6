#include "reporter/surplus_instances.h"

#include <gtest/gtest.h>

#include "reporter/subscriptions.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

// A report with `maxInstances` (null when absent) and instances dated by
// `dates`, numbered 0.1.10 on in that order.
tql::patch_t report(std::optional<uint32_t> max, const std::vector<int64_t>& dates) {
  tql::patch_t r;
  r.class_ = schema::kReport;
  auto p = tql::make_property<tql::kind::kUint>(schema::kMaxInstances, max.value_or(0));
  p->is_null = !max.has_value();
  r.set_property(std::move(p));
  for (size_t i = 0; i < dates.size(); ++i) {
    tql::patch_t instance;
    instance.class_ = schema::kReportInstance;
    instance.id = tql::id_t{0, 1, static_cast<uint32_t>(10 + i)};
    instance.set_property(tql::make_property<tql::kind::kDate>(schema::kDate, dates[i]));
    r.children.push_back(std::move(instance));
  }
  return r;
}

std::vector<std::string> surplus(const tql::patch_t& r) {
  std::vector<std::string> ids;
  for (const tql::patch_t* p : surplus_instances(r)) ids.push_back(p->id.text());
  return ids;
}

TEST(SurplusInstances, OldestBeyondTheLimitGoFirst) {
  tql::patch_t r = report(2, {300, 100, 400, 200});
  EXPECT_EQ((std::vector<std::string>{"0.1.11", "0.1.13"}), surplus(r));
  // The same date keeps the order of the tree.
  EXPECT_EQ((std::vector<std::string>{"0.1.10", "0.1.11"}), surplus(report(1, {5, 5, 5})));
}

TEST(SurplusInstances, NullKeepsAllAndExactlyTheLimitKeepsAll) {
  EXPECT_TRUE(surplus(report(std::nullopt, {1, 2, 3})).empty());
  EXPECT_TRUE(surplus(report(3, {1, 2, 3})).empty());
  EXPECT_TRUE(surplus(report(4, {1, 2, 3})).empty());
  EXPECT_EQ((std::vector<std::string>{"0.1.10", "0.1.11"}), surplus(report(0, {1, 2})));
}

TEST(SurplusInstances, MissingValuesRaise) {
  tql::patch_t no_max = report(1, {1, 2});
  no_max.properties.erase(schema::kMaxInstances);
  EXPECT_THROW(surplus_instances(no_max), errors::tql);
  tql::patch_t no_date = report(1, {1, 2});
  no_date.children[1].properties.erase(schema::kDate);
  EXPECT_THROW(surplus_instances(no_date), errors::tql);
}

}  // namespace
