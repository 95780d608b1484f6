#include "queues/event_io.h"

#include <gtest/gtest.h>

#include <cstring>

#include "base/error.h"
#include "io/errors.h"
#include "protocol/memory_stream.h"
#include "protocol/testing.h"
#include "queues/event_names.h"
#include "queues/events.h"

namespace queues {
namespace {

using protocol::ioprim;
using protocol::MemoryPipe;

// Writes the events over 8-byte areas and reads them back over 5-byte ones.
std::vector<std::unique_ptr<event>> round_trip(const std::vector<const event*>& events) {
  MemoryPipe pipe(8, 5);
  ioprim prim(pipe.in(), pipe.out());
  for (const event* e : events) prim << *e;
  prim.flush();
  std::vector<std::unique_ptr<event>> out;
  for (size_t i = 0; i < events.size(); ++i) out.push_back(read_event(prim));
  EXPECT_THROW(read_event(prim), io::EEndOfStream);
  return out;
}

TEST(EventIoTest, HeaderIsSixteenBytesThenThePayload) {
  MemoryPipe pipe(64);
  ioprim io(pipe.in(), pipe.out());
  io << Tql_Acknowledge_Event(dbms, 0, {0x1234});
  io.flush();
  EXPECT_EQ(
      "6d000000"
      "02000000"
      "00000000"
      "00000000"
      "34120000",
      protocol::testing::hex(pipe.all()));
}

TEST(EventIoTest, EveryEventWithAReaderRoundTrips) {
  Tql_Select_Event select(dbms, 1, {});
  select.data.root_ids = {tql::kRootId};
  select.data.pattern = *tql::make_pattern(13, 4);
  Return_Tsdb_Get_Data_Event data(dbms, 2, {});
  data.data.data_type = 4;
  data.data.data.push_back(tsdb::interval_ptr(
      std::make_unique<tsdb::data_interval_incident_t>(tsdb::incident_fields{1, "line", 5})));
  Schedule_Event_Absolute_Event schedule(schd, 0, {});
  schedule.data.time = TimeValue(1700000000, 5);
  schedule.data.ev = event_ptr(std::make_unique<Scheduled_Report_Generation_Event>(
      rept, 0, reporter::Scheduled_Report_Generation_Data{tql::id_t{0, 7}, {3, 1}, 1700000000}));
  Schedule_Event_Relative_Event relative(schd, 0, {});
  relative.data.time = TimeValue(60);
  relative.data.ev = event_ptr(std::make_unique<Sys_Exit_Event>(rept, 0, control::Sys_Exit_Data{}));
  Server_Configuration_Event config(rept, 3, {});
  config.data.mail_server = "mail.example.org";
  Sys_Exit_Event sys_exit(rept, 0, {1, main, "bye"});
  Init_Ok_Event init_ok(main, 0, {{schd, dbms, tsdb}});
  Log_Request_Event log(main, 0, {"text", 0});
  Request_Server_Configuration_Event request(main, 3, 0);
  Tql_Create_Event create(dbms, 4, {});
  create.data.properties.emplace_back(tql::make_boolean_property(329, true));
  Return_Tql_Create_Event created(rept, 4, {});
  Tql_Update_Event update(dbms, 5, {});
  Return_Tql_Update_Event updated(rept, 5, {});
  Tql_Delete_Event del(dbms, 6, {});
  Return_Tql_Delete_Event deleted(rept, 6, {16, {{0, "x"}}});
  Return_Tql_Select_Event selected(rept, 1, {});
  Return_Tql_Select_Patch_Event patch(rept, 1, {});
  Return_Tql_Select_Delete_Patch_Event delete_patch(rept, 1, {});
  Tql_Acknowledge_Event ack(dbms, 0, {1});
  Tql_Forget_Event forget(dbms, 7, {1});
  Return_Tql_Forget_Event forgotten(rept, 7, {1, 0, {}});
  Tsdb_Get_Data_Event get(dbms, 8, {tql::id_t{0, 9}, 2600, 2, true, 0, 100, 438, 0});
  Tsdb_Put_Data_Event put(dbms, 9, {tql::id_t{0, 9}, 2600, 5, {}});
  Return_Tsdb_Put_Data_Event put_done(rept, 9, {});
  Return_Tsdb_Merge_Data_Event merged(rept, 10, {});
  Tsdb_Append_Data_Record_Event append(dbms, 11, {});
  append.data.data = data.data.data[0];
  Return_Tsdb_Append_Data_Record_Event appended(rept, 11, {});
  Return_Tsdb_Append_Data_Event appended_all(rept, 12, {});
  Return_Tsdb_Truncate_Old_Data_Event truncated(rept, 13, {});
  exevent failure(rept, 14, "Backend error");
  Get_Metric_Event get_metric(rept, 15, {{"queues", "blockings"}});
  Return_Metric_Error_Event metric_error(main, 15, "Unknown metric");
  Return_Metric_Uint64_Event metric_count(main, 16, 0x123456789aULL);
  Return_Metric_Timing_Event metric_timing(main, 17, {1, 2, 3, 4, 5});
  List_Metrics_Event list_metrics(rept, 18, 0);
  Return_List_Metrics_Event listed(main, 18, {});
  listed.data.groups.push_back({"queues", {}, {}, {{"noblockings", "", "count", 2}}});
  Get_Metric_Type_Event get_type(rept, 19, {{"metering", "time"}});
  Return_Get_Metric_Type_Event type(main, 19, {"time", "us", "Time spent", 3});

  std::vector<const event*> all = {
      &select,     &data,         &schedule,     &relative,      &config,       &sys_exit,
      &init_ok,    &log,          &request,      &create,        &created,      &update,
      &updated,    &del,          &deleted,      &selected,      &patch,        &delete_patch,
      &ack,        &forget,       &forgotten,    &get,           &put,          &put_done,
      &merged,     &append,       &appended,     &appended_all,  &truncated,    &failure,
      &get_metric, &metric_error, &metric_count, &metric_timing, &list_metrics, &listed,
      &get_type,   &type};
  auto back = round_trip(all);
  ASSERT_EQ(all.size(), back.size());
  for (size_t i = 0; i < all.size(); ++i) {
    EXPECT_TRUE(all[i]->equals(*back[i])) << event_name(all[i]->type_index);
  }
  int32_t readers = 0;
  for (int32_t t = 0; t <= 200; ++t) readers += has_reader(t) ? 1 : 0;
  EXPECT_EQ(39, readers);  // The 38 events above and their types, and 195.
}

TEST(EventIoTest, NestedEventKeepsItsOwnDestAndRequestNumber) {
  Schedule_Event_Absolute_Event schedule(schd, 0, {});
  schedule.data.ev = event_ptr(std::make_unique<Scheduled_Report_Generation_Event>(
      rept, 0, reporter::Scheduled_Report_Generation_Data{}));
  auto back = round_trip({&schedule});
  const auto& nested = *static_cast<Schedule_Event_Absolute_Event&>(*back[0]).data.ev;
  EXPECT_EQ(SCHEDULED_REPORT_GENERATION, nested.type_index);
  EXPECT_EQ(rept, nested.dest);
  EXPECT_EQ(0u, nested.inresponse);
}

TEST(EventIoTest, ExceptionWordMakesAnExeventUnderAnyType) {
  // A RETURN_TQL_UPDATE header with the exception word set, then a string.
  std::string bytes(
      "\x56\0\0\0"
      "\x0c\0\0\0"
      "\x05\0\0\0"
      "\x01\0\0\0",
      16);
  bytes += std::string("\x04\0\0\0\0\0\0\0", 8) + "oops";
  MemoryPipe pipe(64, 64, bytes);
  ioprim io(pipe.in(), pipe.out());
  std::unique_ptr<event> e = read_event(io);
  ASSERT_NE(nullptr, dynamic_cast<exevent*>(e.get()));
  EXPECT_EQ(MESSAGE_EXCEPTION, e->type_index);
  EXPECT_EQ(rept, e->dest);
  EXPECT_EQ(5u, e->inresponse);
  EXPECT_EQ("oops", static_cast<exevent&>(*e).text);
}

std::string header(int32_t type, uint32_t exception_word) {
  std::string out(16, '\0');
  std::memcpy(out.data(), &type, 4);
  std::memcpy(out.data() + 12, &exception_word, 4);
  return out;
}

TEST(EventIoDeathTest, UnknownTypeIndexIsFatal) {
  EXPECT_DEATH(
      {
        MemoryPipe bad(64, 64, header(196, 0));
        ioprim bad_io(bad.in(), bad.out());
        read_event(bad_io);
      },
      "Assertion failed: fdio >> event: unknown type index: 196 old was INVALID_HEAD dest none");
  EXPECT_DEATH(
      {
        std::string bytes = header(2, 0);
        bytes += std::string(16, '\0');  // reason, requested_by, empty error_msg
        bytes += header(71, 0);
        MemoryPipe bad(64, 64, bytes);
        ioprim bad_io(bad.in(), bad.out());
        read_event(bad_io);
        read_event(bad_io);
      },
      "unknown type index: 71 old was SYS_EXIT dest main");
  EXPECT_DEATH(
      {
        MemoryPipe bad(64, 64, header(195, 0));
        ioprim bad_io(bad.in(), bad.out());
        read_event(bad_io);
      },
      "Found exevent with .exception == 0");
  EXPECT_DEATH(
      {
        MemoryPipe out(64);
        ioprim out_io(out.in(), out.out());
        Sys_Exit_Event broken;
        broken.type_index = 0;
        out_io << broken;
      },
      "fdio << event: unknown type index: 0");
}

TEST(EventIoTest, UnknownTypeIndexRaisesUnderTheToolPolicy) {
  set_unknown_event_policy(UnknownEventPolicy::kRaise);
  MemoryPipe bad(64, 64, header(12, 0));
  ioprim prim(bad.in(), bad.out());
  try {
    read_event(prim);
    ADD_FAILURE() << "no exception";
  } catch (const error::EParseError& e) {
    EXPECT_EQ("fdio >> event: unknown type index: 12 old was INVALID_HEAD dest none", e.text());
  }
  MemoryPipe bad2(64, 64, header(195, 0));
  ioprim io2(bad2.in(), bad2.out());
  EXPECT_THROW(read_event(io2), error::EParseError);
  set_unknown_event_policy(UnknownEventPolicy::kFatal);
}

// A select reply with one result: a chain of `patches` patches, each the
// only child of the one above. It nests the event, its record, the patches
// and the deepest patch's origin: patches + 3 levels of records.
Return_Tql_Select_Event chainReply(int patches) {
  tql::patch_t chain;
  chain.class_ = 1;
  for (int i = 1; i < patches; ++i) {
    tql::patch_t above;
    above.class_ = 1;
    above.children.push_back(std::move(chain));
    chain = std::move(above);
  }
  Return_Tql_Select_Event reply(dbms, 7, {});
  reply.data.res.push_back(std::move(chain));
  return reply;
}

TEST(EventIoTest, NestingAtTheBoundReadsDeeperBreaksTheStream) {
  const int at_bound = ioprim::kMaxNesting - 3;
  MemoryPipe pipe(64, 64);
  ioprim prim(pipe.in(), pipe.out());
  prim << chainReply(at_bound) << chainReply(at_bound + 1)
       << Tql_Acknowledge_Event(dbms, 0, {0x1234});
  prim.flush();

  std::unique_ptr<event> ok = read_event(prim);
  EXPECT_TRUE(ok->equals(chainReply(at_bound)));

  const std::string deeper =
      "fdio: records nested deeper than " + std::to_string(ioprim::kMaxNesting);
  try {
    read_event(prim);
    ADD_FAILURE() << "no exception for the deeper reply";
  } catch (const error::EParseError& e) {
    EXPECT_EQ(deeper, e.text());
  }
  // The rest of the deeper reply is still on the stream: the next read
  // raises the same error instead of taking its bytes for an event.
  try {
    read_event(prim);
    ADD_FAILURE() << "a read after the broken message went on";
  } catch (const error::EParseError& e) {
    EXPECT_EQ(deeper, e.text());
  }
}

TEST(EventIoTest, ABadPayloadBreaksTheStream) {
  // A RETURN_TQL_SELECT: status 0, no details, one patch of class 0 with
  // flags 0 and no tags, and then an id of 4 components.
  std::string bytes = header(RETURN_TQL_SELECT, 0);
  bytes += std::string(8, '\0') + std::string("\x01\0\0\0", 4) + std::string(12, '\0');
  bytes += std::string("\x04\0\0\0", 4) + std::string(64, '\0');
  MemoryPipe bad(64, 64, bytes);
  ioprim prim(bad.in(), bad.out());
  const std::string first = "object id with 4 components in the stream; at most 3 are allowed";
  try {
    read_event(prim);
    ADD_FAILURE() << "no exception for the bad id";
  } catch (const error::EParseError& e) {
    EXPECT_EQ(first, e.text());
  }
  EXPECT_TRUE(prim.broken());
  try {
    read_event(prim);
    ADD_FAILURE() << "a read after the broken message went on";
  } catch (const error::EParseError& e) {
    EXPECT_EQ(first, e.text());
  }
}

}  // namespace
}  // namespace queues
