#include "tsdb/interval.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <list>
#include <vector>

#include "protocol/testing.h"

namespace tsdb {
namespace {

using protocol::testing::hex_of;
using protocol::testing::printed;
using protocol::testing::round_trip;

class IntervalTest : public ::testing::Test {
 protected:
  // The texts show times in the zone of TZ at start; make that GMT.
  static void SetUpTestSuite() { setenv("TZ", "GMT", 1); }
};

interval_ptr continuous(float min) {
  return interval_ptr(std::make_unique<data_interval_continuous_t>(
      continuous_fields{86400, 90000, min, 2.25f, 3, 10, 1}));
}

TEST_F(IntervalTest, ContinuousKeepsSinglePrecisionValuesExactly) {
  EXPECT_EQ(
      "02000000"
      "8051010000000000"
      "905f010000000000"
      "0000c03f"
      "00001040"
      "00004040"
      "0a000000"
      "01000000",
      hex_of(continuous(1.5f)));
  interval_ptr back = round_trip(continuous(1.5f));
  ASSERT_TRUE(back);
  const auto& c = dynamic_cast<const data_interval_continuous_t&>(*back);
  EXPECT_EQ(1.5, static_cast<double>(c.min));
  EXPECT_TRUE(back == continuous(1.5f));
  EXPECT_FALSE(back == continuous(1.25f));
}

TEST_F(IntervalTest, EnumHasCountsAheadOfTimesOnTheStream) {
  interval_ptr e(std::make_unique<data_interval_enum_t>(enum_fields{5, 2, 1, 60, 120}));
  EXPECT_EQ(
      "03000000"
      "05000000"
      "02000000"
      "01000000"
      "3c00000000000000"
      "7800000000000000",
      hex_of(e));
  std::string text;
  e->text(text);
  EXPECT_EQ(
      "(t: enum)(start: 1970-01-01 00:01:00)(end: \"1970-01-01 00:02:00)(mask: 5)(ngood: 2)"
      "(nbad: 1)",
      text);
  EXPECT_TRUE(e == round_trip(e));
}

TEST_F(IntervalTest, Texts) {
  std::string text;
  continuous(1.5f)->text(text);
  EXPECT_EQ(
      "(t: continuous)(start: 1970-01-02 00:00:00)(end: \"1970-01-02 01:00:00)(min: 1.500000)"
      "(avg: 2.250000)(max: 3.000000)(ngood: 10)(nbad: 1)",
      text);
  data_interval_incident_t inc(incident_fields{4, "Generation failed", 0});
  inc.text(text);
  EXPECT_EQ("(t: incident)(sev: 4)(msg: \"Generation failed\")(itime: 1970-01-01 00:00:00)", text);
  inc.itime = -5;
  inc.text(text);
  EXPECT_EQ("(t: incident)(sev: 4)(msg: \"Generation failed\")(itime: -5)", text);
}

TEST_F(IntervalTest, NullsAndUnknownClassesInAList) {
  std::vector<interval_ptr> list;
  list.push_back(continuous(1));
  list.emplace_back();
  list.push_back(interval_ptr(
      std::make_unique<data_interval_incident_t>(incident_fields{1, "m", 1700000000})));
  std::vector<interval_ptr> back = round_trip(list);
  ASSERT_EQ(3u, back.size());
  EXPECT_TRUE(back == list);
  EXPECT_FALSE(back[1]);

  protocol::MemoryPipe pipe(8, 8,
                            std::string("\x07\0\0\0"
                                        "tail",
                                        8));
  protocol::ioprim io(pipe.in(), pipe.out());
  interval_ptr p = continuous(1);
  io >> p;
  EXPECT_FALSE(p);
  char tail[4];
  io.read_bytes(tail, 4);
  EXPECT_EQ("tail", std::string(tail, 4));
}

TEST_F(IntervalTest, PrintForm) {
  interval_ptr e(std::make_unique<data_interval_enum_t>(enum_fields{1, 2, 3, 4, 5}));
  EXPECT_EQ("{\n  type: 3\n  mask: 1\n  ngood: 2\n  nbad: 3\n  start: 4\n  end: 5\n}", printed(e));
}

}  // namespace
}  // namespace tsdb
