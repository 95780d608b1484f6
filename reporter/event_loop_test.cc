#include "reporter/event_loop.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "base/error.h"
#include "queues/events.h"

namespace {

constexpr uint32_t kReports = 1;
constexpr uint32_t kMailing = 2;

// Hands out the events it was given (null for a sibling's end of stream)
// and records each call as a short text.
class PortRecorder : public ReporterPort {
 public:
  std::unique_ptr<queues::event> next_event() override {
    if (events.empty()) {
      parent_ended = true;
      return nullptr;
    }
    std::unique_ptr<queues::event> e = std::move(events.front());
    events.pop_front();
    return e;
  }
  bool parent_at_end() override { return parent_ended; }
  bool answer_metering(const queues::event& e) override {
    if (e.type_index != queues::GET_METRIC) return false;
    calls.push_back("metric");
    return true;
  }
  void treat_report_tree(const tql::patch_t& root) override {
    calls.push_back("treat " + root.id.text());
  }
  void acknowledge(uint32_t request) override { calls.push_back("ack " + std::to_string(request)); }
  void treat_mail_reply(dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                        uint32_t sendto_select_id) override {
    calls.push_back("mail " + std::to_string(reply.res.size()) + " for " +
                    std::to_string(inresponse) + "/" + std::to_string(sendto_select_id));
  }
  void generate(const tql::id_t& report, tql::version_t version, int64_t time) override {
    calls.push_back("generate " + report.text() + " v" + std::to_string(version.first) + " " +
                    std::to_string(time));
  }
  void delete_surplus(const tql::id_t& report) override {
    calls.push_back("surplus " + report.text());
  }
  void forget(uint32_t request) override { calls.push_back("forget " + std::to_string(request)); }
  void shutdown() override { calls.push_back("shutdown"); }

  template <class E>
  void add(E e) {
    events.push_back(std::make_unique<E>(std::move(e)));
  }
  void add_end_of_sibling() { events.push_back(nullptr); }

  std::deque<std::unique_ptr<queues::event>> events;
  std::vector<std::string> calls;
  bool parent_ended = false;
};

queues::Return_Tql_Select_Event reply(uint32_t request, size_t results, int32_t status = 0) {
  dbms::Return_Tql_Select_Data data;
  data.status = status;
  for (size_t i = 0; i < results; ++i) {
    tql::patch_t root;
    root.id = tql::kRootId;
    data.res.push_back(root);
  }
  return queues::Return_Tql_Select_Event(queues::dbms, request, std::move(data));
}

queues::Get_Metric_Event metric() {
  return queues::Get_Metric_Event(queues::main, 9, {{"metering", "time"}});
}

std::vector<std::string> run(PortRecorder& r) {
  EventLoop loop(r, kReports, kMailing);
  loop.run();
  EXPECT_TRUE(loop.parent_gone());
  return r.calls;
}

TEST(EventLoop, ReportRepliesAreTreatedThenAcknowledgedMailRepliesGoToMailing) {
  PortRecorder r;
  r.add(reply(kMailing, 3));  // before the first report reply: served all the same
  r.add(reply(kReports, 1));
  r.add(reply(kReports, 0));  // nothing to treat, still acknowledged
  r.add(metric());
  EXPECT_EQ((std::vector<std::string>{"mail 3 for 2/2", "treat 0.1", "ack 1", "ack 1", "metric"}),
            run(r));
}

TEST(EventLoop, ScheduledGenerationThenSurplusDeletion) {
  PortRecorder r;
  r.add(queues::Scheduled_Report_Generation_Event(
      queues::rept, 0,
      reporter::Scheduled_Report_Generation_Data{tql::id_t{0, 1, 5}, {7, 1}, 1700000000}));
  EXPECT_EQ((std::vector<std::string>{"generate 0.1.5 v7 1700000000", "surplus 0.1.5"}), run(r));
}

TEST(EventLoop, SysExitForgetsBothSubscriptionsAndDropsAllButMetering) {
  PortRecorder r;
  r.add(queues::Sys_Exit_Event(queues::main, 0, {}));
  r.add(reply(kReports, 1));
  r.add(queues::Sys_Exit_Event(queues::main, 0, {}));
  r.add(queues::Scheduled_Report_Generation_Event(queues::rept, 0, {}));
  r.add(metric());
  EXPECT_EQ((std::vector<std::string>{"forget 1", "forget 2", "shutdown", "metric"}), run(r));
}

TEST(EventLoop, OnlyTheParentsEndOfStreamEndsTheLoop) {
  PortRecorder r;
  r.add_end_of_sibling();  // the database went away: the loop goes on
  r.add(reply(kReports, 0));
  EXPECT_EQ((std::vector<std::string>{"ack 1"}), run(r));
}

// The text of the error::EFatal that handling `e` raises.
std::string fatal_text(EventLoop& loop, queues::event& e) {
  try {
    loop.handle(e);
  } catch (const error::EFatal& fatal) {
    return fatal.text();
  }
  return "no exception";
}

TEST(EventLoop, AnErrorStatusOnTheReportSubscriptionIsFatal) {
  PortRecorder r;
  EventLoop loop(r, kReports, kMailing);
  auto failed = reply(kReports, 0, 5);
  failed.data.details.push_back({0, "no such class"});
  failed.data.details.push_back({0, "second"});
  EXPECT_EQ("Error in select (5, no such class)", fatal_text(loop, failed));
  auto bare = reply(kReports, 0, 7);
  EXPECT_EQ("Error in select (7)", fatal_text(loop, bare));
  // The mailing subscription's failures are the mailing's business.
  auto mail_failed = reply(kMailing, 0, 5);
  loop.handle(mail_failed);
  EXPECT_EQ((std::vector<std::string>{"mail 0 for 2/2"}), r.calls);
}

TEST(EventLoopDeathTest, ImpossibleRepliesAndUnknownEventsAreFatal) {
  PortRecorder r;
  EventLoop loop(r, kReports, kMailing);
  auto two = reply(kReports, 2);
  EXPECT_DEATH(loop.handle(two), "More than one result");
  queues::Init_Ok_Event stray(queues::main, 0, {});
  EXPECT_DEATH(loop.handle(stray), "Got unknown event from parent: 3");
}

}  // namespace
