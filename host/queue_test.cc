// The event queue and its dialogs between a real child process (queue_child)
// and a host made of the parent and the database in this process.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <chrono>
#include <deque>
#include <functional>

#include "host/child_process.h"
#include "host/parent_messenger.h"
#include "host/temp_dir.h"
#include "io/errors.h"
#include "io/selector.h"
#include "io/timer.h"
#include "protocol/ioprim.h"
#include "queues/event_io.h"
#include "queues/events.h"

namespace host {
namespace {

using namespace std::chrono_literals;
using queues::event;

class QueueTest : public testing::Test {
 protected:
  QueueTest() {
    parent_ = ParentMessenger::create(dir_ + "/tavrelsmem", 256 * 1024, 16 * 1024);
    dbms_ = std::make_unique<io::SiblingMessenger>(queues::dbms, parent_->configuration());
    EXPECT_TRUE(serve_until([&] { return dbms_->write_ready(); }));
    child_ =
        std::make_unique<ChildProcess>(std::vector<std::string>{QUEUE_CHILD},
                                       parent_->child_environment(), parent_->pool_descriptor());
    EXPECT_TRUE(serve_until([&] { return parent_->running(12); }));
    to_parent_ = std::make_unique<protocol::ioprim>(parent_->sibling(12).input(),
                                                    parent_->sibling(12).output());
    to_dbms_ =
        std::make_unique<protocol::ioprim>(dbms_->sibling(12).input(), dbms_->sibling(12).output());
  }

  ~QueueTest() override {
    to_parent_.reset();
    to_dbms_.reset();
    child_.reset();
    dbms_.reset();
    parent_.reset();
  }

  bool serve_until(const std::function<bool()>& done) {
    auto limit = std::chrono::steady_clock::now() + 10s;
    while (!done()) {
      if (std::chrono::steady_clock::now() > limit) return false;
      io::Selector<int> selector;
      io::Timer tick(io::Timer::due_in(std::chrono::milliseconds(5)));
      selector.add(parent_->some_sibling(), 0);
      if (dbms_) selector.add(dbms_->some_sibling(), 2);
      selector.add(tick, -1);
      if (child_ && !child_->exited()) selector.add(*child_, 12);
      int who = selector.poll().second;
      if (who == 0) take(*parent_, to_parent_.get(), from_child_to_parent_);
      if (who == 2) take(*dbms_, to_dbms_.get(), from_child_to_dbms_);
      if (who == 12) parent_->child_died(12);
    }
    return true;
  }

  void take(io::SiblingMessenger& m, protocol::ioprim* prim,
            std::deque<std::unique_ptr<event>>& into) {
    int from = m.next_ready_sibling();
    if (from != 12 || !prim) {
      m.take_end_of_stream(from);
      return;
    }
    try {
      into.push_back(queues::read_event(*prim));
    } catch (const io::EEndOfStream&) {
      m.take_end_of_stream(from);
    }
  }

  std::unique_ptr<event> next(std::deque<std::unique_ptr<event>>& from) {
    if (!serve_until([&] { return !from.empty(); })) return nullptr;
    std::unique_ptr<event> e = std::move(from.front());
    from.pop_front();
    return e;
  }

  // The text of the next log message the parent gets.
  std::string next_log() {
    std::unique_ptr<event> e = next(from_child_to_parent_);
    auto* request = dynamic_cast<queues::Log_Request_Event*>(e.get());
    if (!e) return "<nothing>";
    return request ? request->data.msg : "<event " + std::to_string(e->type_index) + ">";
  }

  // Answers the configuration request; returns the first delete request.
  std::unique_ptr<event> configure_and_take_delete() {
    std::unique_ptr<event> request = next(from_child_to_parent_);
    if (!request) return nullptr;
    send(*to_parent_, queues::Server_Configuration_Event(queues::rept, request->inresponse, {}));
    EXPECT_EQ("config: ", next_log());
    return next(from_child_to_dbms_);
  }

  void send(protocol::ioprim& prim, const event& e) {
    prim << e;
    prim.flush();
  }

  TempDir temp_{"tavrel-queue"};  // Under $TMPDIR, removed with the fixture.
  const std::string dir_ = temp_.path();
  std::unique_ptr<ParentMessenger> parent_;
  std::unique_ptr<io::SiblingMessenger> dbms_;
  std::unique_ptr<ChildProcess> child_;
  std::unique_ptr<protocol::ioprim> to_parent_, to_dbms_;
  std::deque<std::unique_ptr<event>> from_child_to_parent_, from_child_to_dbms_;
};

TEST_F(QueueTest, DialogsPendingRepliesLoggingAndShutdown) {
  // The configuration dialog with the parent.
  std::unique_ptr<event> request = next(from_child_to_parent_);
  ASSERT_TRUE(request);
  EXPECT_EQ(queues::REQUEST_SERVER_CONFIGURATION, request->type_index);
  control::Server_Configuration_Fields config;
  config.mail_server = "mail.example";
  send(*to_parent_, queues::Server_Configuration_Event(queues::rept, request->inresponse, config));
  EXPECT_EQ("config: mail.example", next_log());

  // The first delete: before it is answered, an unrelated event and the
  // reply to the second delete arrive; both wait on the pending list.
  std::unique_ptr<event> del = next(from_child_to_dbms_);
  ASSERT_TRUE(del);
  ASSERT_EQ(queues::TQL_DELETE, del->type_index);
  uint32_t first = del->inresponse;
  EXPECT_NE(0u, first);
  send(*to_parent_, queues::Scheduled_Report_Generation_Event(queues::rept, 0, {}));
  dbms::Status_Reply_Data done;
  done.status = 16;
  send(*to_dbms_, queues::Return_Tql_Delete_Event(queues::rept, first + 1, done));
  done.status = 0;
  send(*to_dbms_, queues::Return_Tql_Delete_Event(queues::rept, first, done));
  EXPECT_EQ("delete status 0, 16", next_log());
  EXPECT_EQ("noblockings: 1", next_log());
  // The second request went out all the same, with the next number.
  std::unique_ptr<event> second = next(from_child_to_dbms_);
  ASSERT_TRUE(second);
  EXPECT_EQ(first + 1, second->inresponse);

  // The event that waited comes out of the main loop afterwards.
  EXPECT_EQ("event SCHEDULED_REPORT_GENERATION from main", next_log());

  // SYS_EXIT: the child shuts down and ends with 0.
  send(*to_parent_, queues::Sys_Exit_Event(queues::rept, 0, {}));
  EXPECT_EQ("event SYS_EXIT from main", next_log());
  EXPECT_TRUE(serve_until([&] { return parent_->finished(12); }));
  EXPECT_EQ(0, child_->wait());
}

TEST_F(QueueTest, ExceptionReplyEndsTheDialogWithTheText) {
  std::unique_ptr<event> del = configure_and_take_delete();
  ASSERT_TRUE(del);
  send(*to_dbms_, queues::exevent(queues::rept, del->inresponse, "no such object"));
  EXPECT_TRUE(serve_until([&] { return child_->exited(); }));
  EXPECT_EQ(1, child_->exit_code());
}

TEST_F(QueueTest, DatabaseGoneDuringDialogEndsTheChild) {
  std::unique_ptr<event> del = configure_and_take_delete();
  ASSERT_TRUE(del);
  // The database goes away while the child waits: the dialog raises.
  to_dbms_.reset();
  dbms_.reset();
  parent_->child_died(queues::dbms);
  EXPECT_TRUE(serve_until([&] { return child_->exited(); }));
  EXPECT_EQ(1, child_->exit_code());
}

}  // namespace
}  // namespace host
