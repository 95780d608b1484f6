#include "queues/metering.h"

#include <gtest/gtest.h>

#include "base/meter.h"
#include "queues/events.h"

namespace queues {
namespace {

// A metric that knows no instance at all.
class NoInstances : public meter::Metric {
 public:
  using Metric::Metric;
  uint32_t type() const override { return 2; }
  void reply(meter::MetricReply&, const meter::Path&) const override {
    throw meter::ENoSuchInstance();
  }
};

class MeteringTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { meter::open_registry(); }

  template <class Reply>
  const Reply& answer(const event& request) {
    reply_ = metering_reply(request);
    const auto* typed = dynamic_cast<const Reply*>(reply_.get());
    if (typed == nullptr) {
      ADD_FAILURE() << "wrong answer: " << (reply_ ? printed(*reply_) : "none");
      static const Reply empty;
      return empty;
    }
    EXPECT_EQ(request.dest, typed->dest);
    EXPECT_EQ(request.inresponse, typed->inresponse);
    EXPECT_FALSE(typed->exception);
    return *typed;
  }
  std::string error_for(meter::Path path) {
    return answer<Return_Metric_Error_Event>(Get_Metric_Event(main, 9, {std::move(path)})).data;
  }

  meter::Group group_{nullptr, "testgroup"};
  meter::IntegerCounter counter_{&group_, "count", "", "things counted"};
  meter::MicroSecondTiming timing_{&group_, "took", "us", "time taken"};
  NoInstances refusing_{&group_, "refusing", "", ""};
  std::unique_ptr<event> reply_;
};

TEST_F(MeteringTest, CountersAndTimingsAnswerWithTheirValues) {
  counter_.increment();
  counter_.increment();
  EXPECT_EQ(
      2u,
      answer<Return_Metric_Uint64_Event>(Get_Metric_Event(main, 7, {{"testgroup", "count"}})).data);
  const auto& fresh =
      answer<Return_Metric_Timing_Event>(Get_Metric_Event(main, 8, {{"testgroup", "took"}})).data;
  EXPECT_EQ(0u, fresh.n);
  EXPECT_EQ(UINT64_MAX, fresh.min);
  timing_.add(3);
  timing_.add(5);
  EXPECT_EQ(
      (control::Return_Metric_Timing_Data{2, 3, 5, 8, 34}),
      answer<Return_Metric_Timing_Event>(Get_Metric_Event(tsdb, 8, {{"testgroup", "took"}})).data);
}

TEST_F(MeteringTest, PathsThatNameNoMetricAreUnknown) {
  EXPECT_EQ("Unknown metric", error_for({"testgroup"}));
  EXPECT_EQ("Unknown metric", error_for({"testgroup", "count", "more"}));
  EXPECT_EQ("Unknown metric", error_for({}));
  EXPECT_EQ("Unknown metric", error_for({"testgroup", "nothing"}));
  EXPECT_EQ("No such instance", error_for({"testgroup", "refusing"}));
}

TEST_F(MeteringTest, TheQueueAndMeteringMetersAreLive) {
  // Built before main, they joined the tree when the registry opened.
  EXPECT_NE(nullptr, metering_reply(Get_Metric_Event(main, 1, {{"queues", "blockings"}})));
  answer<Return_Metric_Uint64_Event>(Get_Metric_Event(main, 1, {{"queues", "noblockings"}}));
  answer<Return_Metric_Timing_Event>(Get_Metric_Event(main, 1, {{"metering", "time"}}));
}

TEST_F(MeteringTest, ListAndTypeDescribeTheTree) {
  const control::Metric_Group& root =
      answer<Return_List_Metrics_Event>(List_Metrics_Event(main, 4, 0)).data;
  EXPECT_EQ("", root.name);
  const control::Metric_Group* mine = nullptr;
  for (const auto& g : root.groups) {
    if (g.name == "testgroup") mine = &g;
  }
  ASSERT_NE(nullptr, mine);
  EXPECT_TRUE(mine->groups.empty());
  EXPECT_TRUE(mine->tables.empty());
  ASSERT_EQ(3u, mine->metrics.size());
  EXPECT_EQ((control::Metric{"count", "", "things counted", 2}), mine->metrics[0]);
  EXPECT_EQ((control::Metric{"took", "us", "time taken", 3}), mine->metrics[1]);
  EXPECT_EQ("refusing", mine->metrics[2].name);

  EXPECT_EQ(
      (control::Metric{"took", "us", "time taken", 3}),
      answer<Return_Get_Metric_Type_Event>(Get_Metric_Type_Event(main, 5, {{"testgroup", "took"}}))
          .data);
  EXPECT_EQ(
      "Unknown metric",
      answer<Return_Metric_Error_Event>(Get_Metric_Type_Event(main, 6, {{"testgroup"}})).data);
}

TEST_F(MeteringTest, OtherEventsAreNotTaken) {
  EXPECT_EQ(nullptr, metering_reply(Sys_Exit_Event(main, 0, {})));
  EXPECT_EQ(nullptr, metering_reply(exevent(main, 3, "failed")));
  EXPECT_EQ(nullptr, metering_reply(Return_Metric_Uint64_Event(main, 3, 1)));
}

}  // namespace
}  // namespace queues
