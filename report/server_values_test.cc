// The stored side of the read model without a database: reading values of
// result objects, the two sort orders over them, and the log's cursor.
#include "report/server_values.h"

#include <gtest/gtest.h>

#include "host/direct_database.h"
#include "host/report_test_world.h"
#include "report/server_items.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace report::stored {
namespace {

// The items made here never reach it: an empty store.
host::Database store;
host::DirectDatabase db{store};

tql::patch_t object(int32_t class_, uint32_t id) {
  tql::patch_t p;
  p.class_ = class_;
  p.id = tql::id_t{0, 1, id};
  return p;
}

template <int32_t K>
tql::patch_t with(tql::patch_t p, int32_t number, typename tql::kind_traits<K>::value_type v,
                  bool null = false) {
  std::unique_ptr<tql::property_t> prop = tql::make_property<K>(number, std::move(v));
  prop->is_null = null;
  p.set_property(std::move(prop));
  return p;
}

tql::patch_t folder(uint32_t id, uint32_t type, const std::string& name) {
  return with<tql::kind::kString>(
      with<tql::kind::kEnum>(object(schema::kReportResultFolder, id), schema::kFolderType,
                             {schema::kFolderTypeEnum, type}),
      schema::kName, name);
}

tql::patch_t ordered(uint32_t id, std::optional<uint32_t> order) {
  tql::patch_t p = object(schema::kReportResultRow, id);
  return order ? with<tql::kind::kUint>(std::move(p), schema::kOrder, *order) : p;
}

std::string ids(const std::vector<tql::patch_t>& objects) {
  std::string out;
  for (const tql::patch_t& p : objects) out += (out.empty() ? "" : " ") + std::to_string(p.id[2]);
  return out;
}

int32_t tql_code(const std::function<void()>& f) {
  try {
    f();
  } catch (const errors::tql& e) {
    return e.code();
  }
  return 0;
}

TEST(StoredValuesTest, TextsAreEmptyWhenMissingOrNullAndRefuseOtherKinds) {
  tql::patch_t row =
      with<tql::kind::kString>(object(schema::kReportResultRow, 1), schema::kName, "Availability");
  EXPECT_EQ("Availability", text_of(row, schema::kName));
  EXPECT_EQ("", text_of(row, schema::kComment));
  EXPECT_EQ("",
            text_of(with<tql::kind::kString>(row, schema::kComment, "x", true), schema::kComment));
  EXPECT_EQ(
      9, tql_code([&] { text_of(with<tql::kind::kUint>(row, schema::kText, 5), schema::kText); }));
}

TEST(StoredValuesTest, OriginIsTheReferencedIdOrEmpty) {
  tql::patch_t row = object(schema::kReportResultRow, 1);
  EXPECT_EQ("", origin_of(row));
  EXPECT_EQ("", origin_of(with<tql::kind::kObject>(row, schema::kOriginNode,
                                                   {tql::id_t{0, 1, 7}, {}}, true)));
  EXPECT_EQ("0.1.7", origin_of(with<tql::kind::kObject>(row, schema::kOriginNode,
                                                        {tql::id_t{0, 1, 7}, {}})));
  EXPECT_EQ(
      9, tql_code([&] { origin_of(with<tql::kind::kString>(row, schema::kOriginNode, "0.1.7")); }));
}

TEST(StoredValuesTest, FlagsAreBooleansOrNonZeroNumbers) {
  tql::patch_t g = object(schema::kReportResultGraph, 1);
  EXPECT_FALSE(flag_of(g, 3002));
  EXPECT_TRUE(flag_of(with<tql::kind::kBoolean>(g, 3002, true), 3002));
  EXPECT_FALSE(flag_of(with<tql::kind::kBoolean>(g, 3002, true, true), 3002));
  EXPECT_TRUE(flag_of(with<tql::kind::kUint>(g, 3002, 2), 3002));
  EXPECT_FALSE(flag_of(with<tql::kind::kUint>(g, 3002, 0), 3002));
  EXPECT_TRUE(flag_of(with<tql::kind::kReal>(g, 3002, 0.5), 3002));
  EXPECT_TRUE(flag_of(with<tql::kind::kInt>(g, 3002, -1), 3002));
  EXPECT_FALSE(flag_of(with<tql::kind::kString>(g, 3002, "yes"), 3002));
}

TEST(StoredValuesTest, TimesAreDatesOrNumbersAndNullReadsAsZero) {
  tql::patch_t i = object(schema::kReportInstance, 1);
  EXPECT_EQ(1700000000, seconds_of(with<tql::kind::kDate>(i, schema::kStartTime, 1700000000),
                                   schema::kStartTime));
  EXPECT_EQ(86400,
            seconds_of(with<tql::kind::kUint>(i, schema::kDuration, 86400), schema::kDuration));
  EXPECT_EQ(0,
            seconds_of(with<tql::kind::kDate>(i, schema::kGenerated, 5, true), schema::kGenerated));
  EXPECT_EQ(errors::tql::kRequiredMissing, tql_code([&] { seconds_of(i, schema::kStartTime); }));
  EXPECT_EQ(9, tql_code([&] {
              seconds_of(with<tql::kind::kString>(i, schema::kStartTime, "now"),
                         schema::kStartTime);
            }));
}

TEST(StoredValuesTest, FolderTypeIsAnEnumOfItsOwnType) {
  EXPECT_EQ(2u, folder_type_of(folder(1, 2, "d")));
  // Only the low 17 bits of the enumeration number count.
  EXPECT_EQ(4u, folder_type_of(with<tql::kind::kEnum>(object(schema::kReportResultFolder, 1),
                                                      schema::kFolderType,
                                                      {schema::kFolderTypeEnum | 0x20000, 4})));
  EXPECT_EQ(std::nullopt, folder_type_of(object(schema::kReportResultFolder, 1)));
  EXPECT_EQ(std::nullopt,
            folder_type_of(with<tql::kind::kEnum>(object(schema::kReportResultFolder, 1),
                                                  schema::kFolderType, {0x10016, 1})));
  EXPECT_EQ(std::nullopt, folder_type_of(with<tql::kind::kUint>(
                              object(schema::kReportResultFolder, 1), schema::kFolderType, 1)));
  EXPECT_EQ(std::nullopt, folder_type_of(with<tql::kind::kEnum>(
                              object(schema::kReportResultFolder, 1), schema::kFolderType,
                              {schema::kFolderTypeEnum, 1}, true)));
}

TEST(StoredSortTest, DisplayOrderPutsItemsWithoutCounterFirstAndKeepsTies) {
  std::vector<tql::patch_t> items{ordered(1, 30),           ordered(2, 10),
                                  ordered(3, std::nullopt), ordered(4, 20),
                                  ordered(5, std::nullopt), ordered(6, 10)};
  // A counter of another kind counts as none.
  items.push_back(with<tql::kind::kInt>(object(schema::kReportResultRow, 7), schema::kOrder, 5));
  sort_by_order(items);
  EXPECT_EQ("3 5 7 2 6 4 1", ids(items));
}

TEST(StoredSortTest, FoldersByTypeThenNaturalNameThenExactName) {
  std::vector<tql::patch_t> folders{folder(1, 2, "node10"),     folder(2, 1, "zeta"),
                                    folder(3, 2, "Node2"),      folder(4, 2, "node2"),
                                    folder(5, 3, "8"),          folder(6, 3, "007"),
                                    folder(7, 0, "Explanation")};
  sort_folders(folders);
  // Type 0, then 1; among the domains "Node2" and "node2" differ only in
  // case and sort by the bytes; "node10" comes after both; "8" before "007".
  EXPECT_EQ("7 2 3 4 1 5 6", ids(folders));
}

tsdb::interval_ptr incident(uint32_t sev, const std::string& msg, int64_t time) {
  return tsdb::interval_ptr(
      std::make_unique<tsdb::data_interval_incident_t>(tsdb::incident_fields{sev, msg, time}));
}

TEST(IncidentCursorTest, EmptyLogEndsAtOnce) {
  IncidentCursor cursor({});
  EXPECT_FALSE(cursor.next());
  EXPECT_EQ(nullptr, cursor.current());
  EXPECT_FALSE(cursor.next());
}

TEST(IncidentCursorTest, StepsThroughEveryEntryAndStaysAtTheEnd) {
  IncidentCursor cursor({incident(1, "up", 100), incident(4, "down", 200)});
  EXPECT_EQ(nullptr, cursor.current());
  ASSERT_TRUE(cursor.next());
  EXPECT_EQ("up", cursor.current()->msg);
  ASSERT_TRUE(cursor.next());
  EXPECT_EQ(4u, cursor.current()->sev);
  EXPECT_EQ(200, cursor.current()->itime);
  EXPECT_FALSE(cursor.next());
  EXPECT_EQ(nullptr, cursor.current());
  EXPECT_FALSE(cursor.next());
}

TEST(IncidentCursorTest, ARecordThatIsNoIncidentEndsTheLog) {
  IncidentCursor cursor({incident(2, "slow", 100),
                         tsdb::interval_ptr(std::make_unique<tsdb::data_interval_continuous_t>()),
                         incident(1, "never shown", 300)});
  EXPECT_TRUE(cursor.next());
  EXPECT_FALSE(cursor.next());
  EXPECT_FALSE(cursor.next());
}

TEST(ServerItemsTest, ItemsAreMadeByClassAndUnknownClassesRefused) {
  EXPECT_NE(nullptr, dynamic_cast<ServerReportRow*>(
                         make_item(db, object(schema::kReportResultRow, 1)).get()));
  EXPECT_NE(nullptr, dynamic_cast<ServerReportGraph*>(
                         make_item(db, object(schema::kReportResultGraph, 1)).get()));
  EXPECT_NE(nullptr, dynamic_cast<ServerReportLog*>(
                         make_item(db, object(schema::kReportResultLog, 1)).get()));
  EXPECT_NE(nullptr, dynamic_cast<ServerReportFolder*>(
                         make_item(db, object(schema::kReportResultFolder, 1)).get()));
  EXPECT_NE(nullptr,
            dynamic_cast<ServerReportText*>(make_item(db, object(schema::kReportText, 1)).get()));
  EXPECT_THROW(make_item(db, object(3, 1)), error::EParseError);
}

TEST(ServerItemsTest, AGraphCloneIsIndependentOfItsOriginal) {
  auto original = std::make_unique<ServerReportGraph>(
      db, with<tql::kind::kBoolean>(
              with<tql::kind::kString>(object(schema::kReportResultGraph, 9), schema::kName, "CPU"),
              3006, true));
  std::unique_ptr<ReportGraph> copy = original->clone();
  original.reset();
  std::string name, anchor;
  copy->name(name);
  copy->anchor(anchor);
  EXPECT_EQ("CPU", name);
  EXPECT_EQ("0.1.9", anchor);
  EXPECT_TRUE(copy->tabular());
  EXPECT_FALSE(copy->showMinMax());
}

// The analysis stores up to 438 records a chart (a month); the chart reads
// them all, so that it covers the whole period.
TEST(ServerItemsTest, AChartReadsEveryStoredRecordOfItsSeries) {
  host::testing::WorldDatabase world(host::testing::report_world());
  const tql::id_t owner = host::testing::id_of("0.1.5");
  std::vector<tsdb::interval_ptr> records;
  for (int64_t i = 0; i < 438; ++i) {
    auto r = std::make_unique<tsdb::data_interval_continuous_t>();
    r->start = host::testing::kDataStart + i * 6000;
    r->end = r->start + 3000;
    records.push_back(std::move(r));
  }
  world.store().series().put(owner, schema::kTsdbIndex, tsdb::kUptime, std::move(records));
  tql::patch_t graph = object(schema::kReportResultGraph, 5);
  graph.id = owner;
  ServerReportGraph chart(world.db(), graph);
  const dbms::Return_TSDB_Get_Data_Data series = chart.read_samples();
  ASSERT_EQ(438u, series.data.size());
  const auto* last =
      dynamic_cast<const tsdb::data_interval_continuous_t*>(series.data.back().get());
  ASSERT_NE(nullptr, last);
  EXPECT_EQ(host::testing::kDataStart + 437 * 6000, last->start);
}

TEST(ServerItemsTest, AFolderWithoutTypeShowsAsUnknown) {
  ServerReportFolder f(db, object(schema::kReportResultFolder, 1));
  EXPECT_EQ(ServerReportFolder::kUnknownFolderType, f.folderType());
  std::string comment = "x";
  f.comment(comment);
  EXPECT_EQ("", comment);
}

}  // namespace
TEST(StoredValuesTest, ZoneOfAReportIsAnIntTimeZoneElseTheEnvironments) {
  tql::patch_t report;
  EXPECT_EQ(kEnvironmentZone, zone_of(report).value());
  report.set_property(tql::make_property<tql::kind::kInt>(schema::kTimeZone, 3600));
  EXPECT_EQ(3600, zone_of(report).value());
  report.properties[schema::kTimeZone]->is_null = true;
  EXPECT_EQ(kEnvironmentZone, zone_of(report).value());
  report.set_property(tql::make_property<tql::kind::kUint>(schema::kTimeZone, 3600u));
  EXPECT_EQ(kEnvironmentZone, zone_of(report).value());
}

}  // namespace report::stored
