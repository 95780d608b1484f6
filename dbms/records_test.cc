#include <gtest/gtest.h>

#include "dbms/control_records.h"
#include "dbms/reporter_records.h"
#include "dbms/status.h"
#include "dbms/tsdb_records.h"
#include "protocol/testing.h"
#include "tql/errors.h"

namespace dbms {
namespace {

using protocol::testing::hex_of;
using protocol::testing::printed;
using protocol::testing::round_trip;

tql::details_t two_details() { return {{1, "first"}, {2, "second"}}; }

std::vector<tql::property_ptr> some_properties() {
  std::vector<tql::property_ptr> out;
  out.emplace_back(tql::make_string_property(54, "Weekly"));
  out.emplace_back();
  out.emplace_back(tql::make_property<tql::kind::kDate>(325, 1700000000));
  return out;
}

tsdb::interval_ptr incident() {
  return tsdb::interval_ptr(std::make_unique<tsdb::data_interval_incident_t>(
      tsdb::incident_fields{1, "Generation of report number 3 initiated.", 1700000000}));
}

tql::patch_t report_patch() {
  tql::patch_t p;
  p.class_ = 5;
  p.id = tql::id_t{0, 7};
  p.version = {4, 1};
  p.set_property(tql::make_string_property(54, "Weekly"));
  p.children.push_back(p);
  return p;
}

template <class R>
void expect_round_trip(const R& r) {
  EXPECT_EQ(r, round_trip(r));
  EXPECT_EQ(r, round_trip(r, 64, 1));
}

TEST(RecordsTest, DatabaseRecordsRoundTrip) {
  Tql_Select_Data select;
  select.root_ids = {tql::kRootId, tql::id_t{0, 9}};
  select.pattern = *tql::add_next(tql::make_pattern(13, 4), tql::make_pattern(5, 6));
  select.flags = 5;
  expect_round_trip(select);
  expect_round_trip(Return_Tql_Select_Data{16, two_details(), {report_patch(), {}}});
  expect_round_trip(Return_Tql_Select_Patch_Data{tql::id_t{1}, report_patch(), {2, 3}});
  expect_round_trip(Return_Tql_Select_Delete_Patch_Data{tql::id_t{1}, {2, 3}});
  expect_round_trip(
      Tql_Create_Data{tql::id_t{0, 7}, {}, 38, some_properties(), 1, tql::id_t{0, 3}});
  expect_round_trip(Return_Tql_Create_Data{tql::id_t{0, 7, 2}, {9, 9}, 0, two_details()});
  expect_round_trip(Tql_Update_Data{tql::id_t{0, 7}, {1, 2}, some_properties(), 0, {}});
  expect_round_trip(Return_Tql_Update_Data{3, {1, 3}, two_details()});
  expect_round_trip(Tql_Delete_Data{tql::id_t{0, 7}, {1, 2}, {}, true});
  expect_round_trip(Return_Tql_Delete_Data{14, two_details()});
  expect_round_trip(Tql_Acknowledge_Data{77});
  expect_round_trip(Tql_Forget_Data{78});
  expect_round_trip(Return_Tql_Forget_Data{78, 0, {}});
}

TEST(RecordsTest, TimeSeriesRecordsRoundTrip) {
  expect_round_trip(TSDB_Get_Data_Data{tql::id_t{0, 4}, 2600, 2, true, 100, 200, 438, 0});
  std::vector<tsdb::interval_ptr> data;
  data.push_back(incident());
  data.emplace_back();
  data.push_back(tsdb::interval_ptr(
      std::make_unique<tsdb::data_interval_enum_t>(tsdb::enum_fields{3, 1, 1, 10, 20})));
  expect_round_trip(Return_TSDB_Get_Data_Data{3, data, 0, two_details()});
  expect_round_trip(TSDB_Put_Data_Data{tql::id_t{0, 4}, 2601, 4, data});
  expect_round_trip(TSDB_Append_Data_Record_Data{tql::id_t{0, 4}, 2601, 4, incident(), 0});
  expect_round_trip(Return_TSDB_Put_Data_Data{0, {}});
}

TEST(RecordsTest, ControlAndReporterRecordsRoundTrip) {
  expect_round_trip(control::Sys_Exit_Data{3, queues::main, "shutdown"});
  expect_round_trip(control::Init_Ok_Data{{queues::schd, queues::dbms, queues::tsdb}});
  expect_round_trip(control::Log_Request_Data{"Log line", 0x1000});
  expect_round_trip(
      reporter::Scheduled_Report_Generation_Data{tql::id_t{0, 7}, {5, 2}, 1700000000});
}

TEST(RecordsTest, DeleteRequestBytesWithItsBooleanAsAWord) {
  EXPECT_EQ(
      "01000000"
      "07000000"  // id 7
      "0100000000000000"
      "0200000000000000"  // version 1.1.2
      "00000000"          // user_id: no components
      "01000000",         // clear_master_id
      hex_of(Tql_Delete_Data{tql::id_t{7}, {1, 2}, {}, true}));
}

TEST(RecordsTest, ServerConfigurationReadsEveryFieldInStreamOrder) {
  control::Server_Configuration_Fields c;
  c.layout_conf_path = "L";
  c.resource_directory = "/res";
  c.log_mask = 0x1000;
  c.mail_server = "mx";
  c.mail_from = "from@x";
  c.reply_mail_to = "reply@x";
  c.modem_options = {"a", "b"};
  c.snmp_timeout_initial = TimeValue(2, 500000);
  c.stop_on_log_match = "STOP";
  c.tsdb_upgrade_discard_bufferlevels = true;
  c.tsdb_buffer_flush_batch = 9;
  expect_round_trip(c);
  std::string hex = hex_of(c);
  // Starts with layout_conf_path; ends with the boolean and four 32-bit fields.
  EXPECT_EQ(
      "0100000000000000"
      "4c",
      hex.substr(0, 18));
  EXPECT_EQ(
      "01000000"
      "00000000"
      "00000000"
      "00000000"
      "09000000",
      hex.substr(hex.size() - 40));
  // 87 fields: 31 strings (8 bytes each when empty), 1 set, 2 spans,
  // 7 booleans, 46 32-bit numbers: 31*8 + 4 + 2*8 + 7*4 + 46*4 = 480 bytes.
  control::Server_Configuration_Fields empty;
  EXPECT_EQ(2u * 480, hex_of(empty).size());
}

TEST(RecordsTest, PrintForm) {
  EXPECT_EQ(
      "{\n"
      "  status: 2\n"
      "  details: list {\n"
      "    {\n"
      "      msg_type: 1\n"
      "      msg: first\n"
      "    }\n"
      "  }\n"
      "}",
      printed(Return_Tql_Delete_Data{2, {{1, "first"}}}));
  EXPECT_EQ("{\n  depend_on: set {\n    schd\n    dbms\n  }\n}",
            printed(control::Init_Ok_Data{{queues::dbms, queues::schd}}));
}

TEST(StatusTest, ZeroAndSixteenAreSuccess) {
  EXPECT_NO_THROW(throw_on_status(0, {}));
  EXPECT_NO_THROW(throw_on_status(16, two_details()));
  try {
    throw_on_status(3, two_details());
    FAIL();
  } catch (const errors::tql& e) {
    EXPECT_EQ(3, e.code());
    EXPECT_EQ("first; second", e.text());
  }
  try {
    throw_on_status(1, {});
    FAIL();
  } catch (const errors::tql& e) {
    EXPECT_EQ("Specified ID not found in database", e.text());
  }
}

}  // namespace
}  // namespace dbms
