#include "base/meter.h"

#include <gtest/gtest.h>

namespace {

using namespace meter;

// Static meters, built before main while the registry is closed.
Group static_group(nullptr, "static");
IntegerCounter static_first(&static_group, "first", "", "The first counter");
MicroSecondTiming static_second(&static_group, "second", "us", "");
IntegerCounter static_top(nullptr, "top", "", "");

std::vector<std::string> names(const Group& g) {
  std::vector<std::string> out;
  for (const Group* c : g.groups()) out.push_back("group " + c->name());
  for (const Metric* c : g.metrics()) out.push_back(c->name());
  return out;
}

Object* lookup(const Path& path) {
  Path instance;
  return root().find(instance, path.begin(), path.end());
}

// Records what a metric replies.
struct Recorder : MetricReply {
  std::string got;
  void uint64Value(uint64_t v) override { got = "uint64 " + std::to_string(v); }
  void timingValue(uint64_t n, uint64_t min, uint64_t max, uint64_t sum,
                   uint64_t sum_squares) override {
    got = "timing " + std::to_string(n) + " " + std::to_string(min) + " " + std::to_string(max) +
          " " + std::to_string(sum) + " " + std::to_string(sum_squares);
  }
};

// Runs first: the registry can be opened only once in a process.
TEST(MeterRegistry, PendingUntilOpenedThenLive) {
  ASSERT_FALSE(registry_open()) << "run this test in a process of its own";
  EXPECT_TRUE(root().groups().empty());
  EXPECT_EQ(nullptr, lookup({"static", "first"}));
  {
    Group gone(nullptr, "gone");
    IntegerCounter orphan(&gone, "orphan", "", "");
  }                          // Both leave the pending lists again.
  static_first.increment();  // Counting goes on while closed.

  open_registry();
  EXPECT_TRUE(registry_open());
  EXPECT_EQ(std::vector<std::string>({"group static", "group metering", "top"}), names(root()));
  EXPECT_EQ(std::vector<std::string>({"first", "second"}), names(static_group));
  EXPECT_EQ(&static_first, lookup({"static", "first"}));
  EXPECT_EQ(&metering_time(), lookup({"metering", "time"}));
  EXPECT_EQ("us", metering_time().unit());

  {
    IntegerCounter live(&static_group, "live", "", "");
    EXPECT_EQ(&live, lookup({"static", "live"}));
  }
  EXPECT_EQ(nullptr, lookup({"static", "live"}));
  EXPECT_EQ(std::vector<std::string>({"first", "second"}), names(static_group));
  open_registry();  // A second call changes nothing.
  EXPECT_EQ(3u, names(root()).size());
}

TEST(MeterRegistry, PathLookup) {
  open_registry();
  EXPECT_EQ(&static_top, lookup({"top"}));
  EXPECT_EQ(nullptr, lookup({}));                        // empty path
  EXPECT_EQ(nullptr, lookup({"static"}));                // names a group
  EXPECT_EQ(nullptr, lookup({"static", "first", "x"}));  // goes on past a metric
  EXPECT_EQ(nullptr, lookup({"static", "nothing"}));
  EXPECT_EQ(nullptr, lookup({"nothing", "first"}));
}

TEST(MeterRegistry, GroupsLetGoOfTheirChildren) {
  open_registry();
  auto group = std::make_unique<Group>(nullptr, "temporary");
  IntegerCounter child(group.get(), "child", "", "");
  EXPECT_EQ(&child, lookup({"temporary", "child"}));
  group.reset();
  EXPECT_EQ(nullptr, child.parent());
  EXPECT_EQ(nullptr, lookup({"temporary", "child"}));
}  // The child's destructor must not touch the group that is gone.

// Death tests run before all others; this one opens the registry in the
// child process only.
TEST(MeterRegistryDeathTest, DuplicateNameIsFatal) {
  EXPECT_DEATH(
      {
        open_registry();
        IntegerCounter twin(&static_group, "first", "", "");
      },
      "Attempt to add duplicate metric name: first");
}

TEST(Meter, CounterAndTimingValues) {
  IntegerCounter counter(nullptr, "counter", "", "d");
  Recorder r;
  counter.reply(r, {});
  EXPECT_EQ("uint64 0", r.got);
  counter.increment();
  counter.increment();
  counter.reply(r, {});
  EXPECT_EQ("uint64 2", r.got);
  EXPECT_EQ(2u, counter.type());

  Timing timing(nullptr, "timing", "s", "");
  timing.reply(r, {});
  EXPECT_EQ("timing 0 18446744073709551615 0 0 0", r.got);
  timing.add(3);
  timing.add(5);
  timing.add(4);
  timing.reply(r, {});
  EXPECT_EQ("timing 3 3 5 12 50", r.got);
  EXPECT_EQ(3u, timing.type());
}

TEST(Meter, MicroSecondTimingCountsSpans) {
  MicroSecondTiming timing(nullptr, "us_timing", "us", "");
  timing.addSince(TimeValue::now());
  timing.addSince(TimeValue::now() + TimeValue(100));  // from the future: 0
  EXPECT_EQ(2u, timing.n());
  EXPECT_EQ(0u, timing.min());
  EXPECT_LT(timing.max(), 1000000u);
}

}  // namespace
