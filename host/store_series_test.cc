#include "host/store_series.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/store_errors.h"
#include "host/store_series_read.h"

namespace host {
namespace {

tsdb::interval_ptr cont(int64_t start, int64_t end, float min, float avg, float max, uint32_t good,
                        uint32_t bad = 0) {
  return std::make_unique<tsdb::data_interval_continuous_t>(
      tsdb::continuous_fields{start, end, min, avg, max, good, bad});
}
tsdb::interval_ptr en(uint32_t mask, uint32_t good, uint32_t bad, int64_t start, int64_t end) {
  return std::make_unique<tsdb::data_interval_enum_t>(
      tsdb::enum_fields{mask, good, bad, start, end});
}
tsdb::interval_ptr inc(uint32_t sev, const std::string& msg, int64_t itime) {
  return std::make_unique<tsdb::data_interval_incident_t>(tsdb::incident_fields{sev, msg, itime});
}

// "start-end:min/avg/max:good/bad" per continuous record, "start-end:mask:good/bad"
// per enum record, "itime:msg" per incident, joined by " ".
std::string show(const std::vector<tsdb::interval_ptr>& records) {
  std::ostringstream os;
  for (const tsdb::interval_ptr& r : records) {
    if (os.tellp() > 0) os << " ";
    if (r->type() == 2) {
      const auto& c = static_cast<const tsdb::data_interval_continuous_t&>(*r);
      os << c.start << "-" << c.end << ":" << c.min << "/" << c.avg << "/" << c.max << ":"
         << c.ngood << "/" << c.nbad;
    } else if (r->type() == 3) {
      const auto& e = static_cast<const tsdb::data_interval_enum_t&>(*r);
      os << e.start << "-" << e.end << ":" << e.mask << ":" << e.ngood << "/" << e.nbad;
    } else {
      const auto& i = static_cast<const tsdb::data_interval_incident_t&>(*r);
      os << i.itime << ":" << i.msg;
    }
  }
  return os.str();
}

template <class... R>
std::vector<tsdb::interval_ptr> list(R... r) {
  std::vector<tsdb::interval_ptr> v;
  (v.push_back(std::move(r)), ...);
  return v;
}

const tql::id_t kOwner{0, 1, 5};

TEST(SeriesStoreTest, PutSortsByTimeAndReplaces) {
  SeriesStore s;
  s.put(kOwner, 2600, tsdb::kContinuous, list(cont(20, 30, 1, 1, 1, 1), cont(0, 10, 2, 2, 2, 1)));
  EXPECT_EQ("0-10:2/2/2:1/0 20-30:1/1/1:1/0", show(s.find(kOwner, 2600)->records));
  s.put(kOwner, 2600, tsdb::kContinuous, {});
  EXPECT_TRUE(s.find(kOwner, 2600)->records.empty());
  EXPECT_EQ(nullptr, s.find(kOwner, 2601));
}

TEST(SeriesStoreTest, AppendKeepsTimeOrderAndArrivalOrderOfEqualTimes) {
  SeriesStore s;
  s.append(kOwner, 2601, tsdb::kIncidentLog, inc(1, "b", 20));
  s.append(kOwner, 2601, tsdb::kIncidentLog, inc(1, "a", 10));
  s.append(kOwner, 2601, tsdb::kIncidentLog, inc(1, "c", 20));
  EXPECT_EQ("10:a 20:b 20:c", show(s.find(kOwner, 2601)->records));
  EXPECT_THROW(s.append(kOwner, 2601, tsdb::kEnum, en(1, 1, 0, 0, 1)), EBadRequest);
}

TEST(SeriesStoreTest, RecordsMustFitTheDataType) {
  SeriesStore s;
  EXPECT_THROW(s.put(kOwner, 2600, tsdb::kEnum, list(cont(0, 1, 0, 0, 0, 0))), EBadRequest);
  EXPECT_THROW(s.put(kOwner, 2600, 9, {}), EBadRequest);
  EXPECT_THROW(s.append(kOwner, 2600, tsdb::kUptime, nullptr), EBadRequest);
  try {
    s.put(kOwner, 2600, tsdb::kIncidentLog, list(inc(1, "x", 0), cont(0, 1, 0, 0, 0, 0)));
    FAIL();
  } catch (const EBadRequest& e) {
    EXPECT_EQ("Record 1 is of record class 2, data type 4 needs class 1", e.text());
  }
  EXPECT_EQ(nullptr, s.find(kOwner, 2600)) << "a refused put changes nothing";
}

TEST(SeriesStoreTest, RemoveOwnerDropsAllItsSeriesOnly) {
  SeriesStore s;
  const tql::id_t other{0, 1, 6};
  s.put(kOwner, 2600, tsdb::kContinuous, list(cont(0, 1, 0, 0, 0, 0)));
  s.put(kOwner, 2601, tsdb::kIncidentLog, list(inc(1, "x", 0)));
  s.put(other, 2600, tsdb::kContinuous, list(cont(0, 1, 0, 0, 0, 0)));
  s.remove_owner(kOwner);
  EXPECT_EQ(1u, s.all().size());
  EXPECT_EQ(1u, s.record_count());
  EXPECT_NE(nullptr, s.find(other, 2600));
}

class SeriesReadTest : public ::testing::Test {
 protected:
  Series continuous() {
    Series s;
    s.data_type = tsdb::kContinuous;
    s.records = list(cont(0, 10, 1, 2, 3, 1), cont(10, 20, 0, 4, 5, 3, 1),
                     cont(20, 30, 2, 6, 9, 0, 2), cont(30, 40, 5, 5, 5, 2));
    return s;
  }
};

TEST_F(SeriesReadTest, OverlapIsInclusiveAtBothEnds) {
  EXPECT_EQ("10-20:0/4/5:3/1 20-30:2/6/9:0/2", show(read_series(continuous(), {15, 20})));
  EXPECT_EQ("0-10:1/2/3:1/0 10-20:0/4/5:3/1", show(read_series(continuous(), {10, 10})));
  EXPECT_EQ("", show(read_series(continuous(), {41, 50})));
}

TEST_F(SeriesReadTest, CountZeroIsUnboundedAndRawCountCuts) {
  EXPECT_EQ(4u, read_series(continuous(), {0, 100, 0}).size());
  EXPECT_EQ("0-10:1/2/3:1/0 10-20:0/4/5:3/1",
            show(read_series(continuous(), {0, 100, 2, 0, true})));
  EXPECT_EQ("10-20:0/4/5:3/1", show(read_series(continuous(), {0, 100, 1, 1, true})));
}

TEST_F(SeriesReadTest, AggregatedReadMergesAdjacentRecords) {
  // Groups of two: weighted averages (2*1+4*3)/4 = 3.5 and (6*0+5*2)/2 = 5.
  EXPECT_EQ("0-20:0/3.5/5:4/1 20-40:2/5/9:2/2", show(read_series(continuous(), {0, 100, 2})));
  EXPECT_EQ("0-40:0/4/9:6/3", show(read_series(continuous(), {0, 100, 1})));
  EXPECT_EQ("0-10:1/2/3:1/0 10-20:0/4/5:3/1 20-40:2/5/9:2/2",
            show(read_series(continuous(), {0, 100, 3})));
}

TEST_F(SeriesReadTest, MergeWithoutGoodSamplesAveragesPlainly) {
  Series s;
  s.data_type = tsdb::kUptime;
  s.records = list(cont(0, 1, 1, 1, 1, 0, 1), cont(1, 2, 3, 3, 3, 0, 1));
  EXPECT_EQ("0-2:1/2/3:0/2", show(read_series(s, {0, 5, 1})));
}

TEST_F(SeriesReadTest, EnumRecordsMergeTheirMasks) {
  Series s;
  s.data_type = tsdb::kEnum;
  s.records = list(en(1, 2, 0, 0, 10), en(4, 1, 1, 10, 20), en(2, 5, 0, 20, 30));
  EXPECT_EQ("0-30:7:8/1", show(read_series(s, {0, 30, 1})));
}

TEST_F(SeriesReadTest, IncidentsAreNeverMergedAndMatchByTheirTime) {
  Series s;
  s.data_type = tsdb::kIncidentLog;
  s.records = list(inc(1, "a", 5), inc(4, "b", 15), inc(1, "c", 25));
  EXPECT_EQ("15:b 25:c", show(read_series(s, {10, 30})));
  EXPECT_EQ("5:a", show(read_series(s, {0, 30, 1})));
}

TEST_F(SeriesReadTest, NegativeCountOrOffsetIsABadRequest) {
  EXPECT_THROW(read_series(continuous(), {0, 1, -1}), EBadRequest);
  EXPECT_THROW(read_series(continuous(), {0, 1, 0, -1}), EBadRequest);
}

}  // namespace
}  // namespace host
