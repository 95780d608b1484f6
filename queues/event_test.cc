#include "queues/event.h"

#include <gtest/gtest.h>

#include "queues/event_names.h"
#include "queues/events.h"

namespace queues {
namespace {

TEST(EventNamesTest, NamesByNumber) {
  EXPECT_EQ("DAEMONIZE_SYSTEM", event_name(1));
  EXPECT_EQ("TQL_SELECT", event_name(TQL_SELECT));
  EXPECT_EQ("CLEAR_FIRE_FLAG", event_name(68));
  EXPECT_EQ("AUDIT_EVENT", event_name(72));
  EXPECT_EQ("SCHEDULED_REPORT_GENERATION", event_name(177));
  EXPECT_EQ("MESSAGE_EXCEPTION", event_name(195));
  EXPECT_EQ("INVALID_HEAD", event_name(0));
  EXPECT_EQ("INVALID_TAIL", event_name(196));
  EXPECT_EQ("(event_t)197", event_name(197));
  EXPECT_EQ("(event_t)70", event_name(70));
  EXPECT_EQ("(event_t)-3", event_name(-3));
  int named = 0;
  for (int32_t t = kFirstEventType; t <= kLastEventType; ++t) {
    if (event_name(t)[0] != '(') ++named;
  }
  EXPECT_EQ(192, named);
}

TEST(QueueNamesTest, FourLetterNames) {
  EXPECT_EQ("none", queue_name(none));
  EXPECT_EQ("main", queue_name(main));
  EXPECT_EQ("rept", queue_name(rept));
  EXPECT_EQ("tsdb", queue_name(tsdb));
  EXPECT_EQ("extra", queue_name(extra));
  EXPECT_EQ("xx23", queue_name(static_cast<queue_t>(23)));
  EXPECT_EQ("x999", queue_name(static_cast<queue_t>(999)));
  EXPECT_EQ("12345", queue_name(static_cast<queue_t>(12345)));
  EXPECT_EQ("xx-2", queue_name(static_cast<queue_t>(-2)));
}

TEST(EventTest, PrintedForm) {
  Tql_Delete_Event del(dbms, 7, dbms::Tql_Delete_Data{tql::id_t{0, 7}, {1, 2}, {}, false});
  EXPECT_EQ(
      "TQL_DELETE {\n"
      "  dest: dbms\n"
      "  inresponse: 7\n"
      "  id: small_vector<3> {\n"
      "    0\n"
      "    7\n"
      "  }\n"
      "  version: 1.1.2\n"
      "  user_id: small_vector<3> {\n"
      "  }\n"
      "  clear_master_id: false\n"
      "}\n",
      printed(del));
  EXPECT_EQ(
      "REQUEST_SERVER_CONFIGURATION {\n  dest: main\n  inresponse: 1\n  value: 0\n}\n",
      printed(Request_Server_Configuration_Event(main, 1, 0)));
  EXPECT_EQ("MESSAGE_EXCEPTION {\n  dest: dbms\n  inresponse: 4\n  Exception: no such id\n}\n",
            printed(exevent(dbms, 4, "no such id")));
}

TEST(EventTest, NestedEventPrintsInsideItsField) {
  Schedule_Event_Absolute_Event e;
  e.dest = schd;
  e.data.ev = event_ptr(std::make_unique<Scheduled_Report_Generation_Event>(
      rept, 0, reporter::Scheduled_Report_Generation_Data{tql::id_t{5}, {1, 1}, 60}));
  std::string text = printed(e);
  EXPECT_NE(std::string::npos, text.find("  ev: SCHEDULED_REPORT_GENERATION {\n"
                                         "    dest: rept\n"
                                         "    inresponse: 0\n"));
  EXPECT_NE(std::string::npos, text.find("    time: 60\n  }\n}\n"));
}

TEST(EventTest, CloneIsDeepAndEqual) {
  Return_Tql_Select_Event e(dbms, 9, {});
  e.data.res.emplace_back();
  e.data.res[0].set_property(tql::make_string_property(54, "x"));
  std::unique_ptr<event> copy = e.clone();
  EXPECT_TRUE(e.equals(*copy));
  static_cast<Return_Tql_Select_Event&>(*copy).data.res[0].properties.clear();
  EXPECT_FALSE(e.equals(*copy));
  EXPECT_EQ(1u, e.data.res[0].properties.size());
  EXPECT_FALSE(e.equals(exevent(dbms, 9, "")));
  auto other = e.clone();
  other->inresponse = 10;
  EXPECT_FALSE(e.equals(*other));
}

}  // namespace
}  // namespace queues
