#include "host/parent_messenger.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>

#include "host/child_process.h"
#include "host/frames.h"
#include "host/temp_dir.h"
#include "io/errors.h"
#include "io/selector.h"
#include "io/sibling_config.h"
#include "io/sibling_signal.h"
#include "io/timer.h"

namespace host {
namespace {

using namespace std::chrono_literals;

constexpr int kDbms = 2;
constexpr int kChild = 12;
constexpr int kLate = 5;

// A host with the parent (0) and a database sibling (2) in this process, and
// the test child (12) as a real process. Frames that arrive are kept per
// receiver and sender.
class MessengerTest : public testing::Test {
 protected:
  MessengerTest() {
    parent_ = ParentMessenger::create(dir_ + "/tavrelsmem", 64 * 1024, 4096);
    dbms_ = std::make_unique<io::SiblingMessenger>(kDbms, parent_->configuration());
    EXPECT_TRUE(serve_until([&] { return parent_->running(kDbms) && dbms_->write_ready(); }));
  }

  ~MessengerTest() override {
    child_.reset();
    dbms_.reset();
    parent_.reset();
  }

  void start_child() {
    child_ =
        std::make_unique<ChildProcess>(std::vector<std::string>{MESSENGER_CHILD},
                                       parent_->child_environment(), parent_->pool_descriptor());
    ASSERT_TRUE(serve_until([&] { return parent_->running(kChild); }));
  }

  // Serves signals and collects frames until `done` holds; false after 10 s.
  bool serve_until(const std::function<bool()>& done) {
    auto limit = std::chrono::steady_clock::now() + 10s;
    while (!done()) {
      if (std::chrono::steady_clock::now() > limit) return false;
      serve_once();
    }
    return true;
  }

  void serve_once() {
    io::Selector<int> selector;
    io::Timer tick(io::Timer::due_in(std::chrono::milliseconds(5)));
    selector.add(parent_->some_sibling(), 0);
    selector.add(dbms_->some_sibling(), kDbms);
    selector.add(tick, -1);
    if (child_ && !child_->exited()) selector.add(*child_, kChild);
    if (late_) selector.add(late_->some_sibling(), kLate);
    auto [what, who] = selector.poll();
    if (who == kLate) take_frame(*late_, kLate);
    if (who == 0) take_frame(*parent_, 0);
    if (who == kDbms) take_frame(*dbms_, kDbms);
    if (who == kChild) parent_->child_died(kChild);
  }

  void take_frame(io::SiblingMessenger& m, int receiver) {
    int from = m.next_ready_sibling();
    try {
      frames_[{receiver, from}].push_back(read_frame(m.sibling(from).input()));
    } catch (const io::EEndOfStream&) {
      m.take_end_of_stream(from);
      ends_[{receiver, from}]++;
    }
  }

  // Waits for the next frame that `receiver` gets from `sender`.
  std::string next_frame(int receiver, int sender) {
    auto& queue = frames_[{receiver, sender}];
    if (!serve_until([&] { return !queue.empty(); })) return "<no frame>";
    std::string text = queue.front();
    queue.pop_front();
    return text;
  }

  TempDir temp_{"tavrel-messenger"};  // Under $TMPDIR, removed with the fixture.
  const std::string dir_ = temp_.path();
  std::unique_ptr<ParentMessenger> parent_;
  std::unique_ptr<io::SiblingMessenger> dbms_;
  std::unique_ptr<ChildProcess> child_;
  std::unique_ptr<io::SiblingMessenger> late_;  // Started on RequestPeer.
  std::map<std::pair<int, int>, std::deque<std::string>> frames_;
  std::map<std::pair<int, int>, int> ends_;
};

TEST_F(MessengerTest, EchoesThroughParentAndSibling) {
  start_child();
  write_frame(parent_->sibling(kChild).output(), "echo:hello parent");
  EXPECT_EQ("hello parent", next_frame(0, kChild));
  write_frame(dbms_->sibling(kChild).output(), "echo:hello dbms");
  EXPECT_EQ("hello dbms", next_frame(kDbms, kChild));
  // The child reaches the database on its own initiative too.
  write_frame(parent_->sibling(kChild).output(), "to:2:from the child");
  EXPECT_EQ("from the child", next_frame(kDbms, kChild));
}

TEST_F(MessengerTest, MessagesLargerThanTheWholeAreaGoThroughInOrder) {
  start_child();
  // 4096-byte areas: each message needs many blocks, and the writers wait
  // for acknowledgements to free them.
  std::string big(100000, 'x');
  for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>('a' + i % 26);
  // (One at a time: two writers that both wait for the other's
  // acknowledgements before reading would wait for ever.)
  for (int round = 0; round < 3; ++round) {
    write_frame(dbms_->sibling(kChild).output(), "echo:" + std::to_string(round) + big);
    EXPECT_EQ(std::to_string(round) + big, next_frame(kDbms, kChild));
  }
  EXPECT_TRUE(serve_until([&] { return dbms_->outstanding() == 0; }));
}

TEST_F(MessengerTest, MessageToASiblingNotYetUpIsDeliveredAfterItComes) {
  parent_->set_peer_starter([&](int id) {
    if (id != kLate) return false;
    late_ = std::make_unique<io::SiblingMessenger>(kLate, parent_->configuration());
    return true;
  });
  start_child();
  write_frame(parent_->sibling(kChild).output(), "to:5:first");
  write_frame(parent_->sibling(kChild).output(), "to:5:second");
  EXPECT_EQ("first", next_frame(kLate, kChild));
  EXPECT_EQ("second", next_frame(kLate, kChild));
}

// Serves only `m`'s own signals until `done` holds; false after 10 s.
bool serve_only(io::SiblingMessenger& m, const std::function<bool()>& done) {
  auto limit = std::chrono::steady_clock::now() + 10s;
  while (!done()) {
    if (std::chrono::steady_clock::now() > limit) return false;
    io::Selector<int> selector;
    io::Timer tick(io::Timer::due_in(std::chrono::milliseconds(5)));
    selector.add(m.some_sibling(), 0);
    selector.add(tick, -1);
    selector.poll();
  }
  return true;
}

// Takes every signal waiting in `fifo` without handling it.
std::vector<io::Signal> steal_signals(const std::string& fifo) {
  int fd = ::open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
  std::vector<io::Signal> out;
  io::Signal s;
  while (::read(fd, &s, sizeof(s)) == static_cast<ssize_t>(sizeof(s))) out.push_back(s);
  ::close(fd);
  return out;
}

void put_signals(const std::string& fifo, const std::vector<io::Signal>& signals) {
  int fd = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
  for (const io::Signal& s : signals) ASSERT_EQ(sizeof(s), ::write(fd, &s, sizeof(s)));
  ::close(fd);
}

// A newcomer (kLate) hears of the database and writes "early" to it before
// the parent's word of the newcomer reaches the database: returns the signals
// of that word and of the message, both taken out of the database's FIFO.
struct Overtaken {
  std::vector<io::Signal> introduction;
  std::vector<io::Signal> message;
};

class OvertakingTest : public MessengerTest {
 protected:
  Overtaken overtake() {
    Overtaken out;
    late_ = std::make_unique<io::SiblingMessenger>(kLate, parent_->configuration());
    EXPECT_TRUE(serve_only(*parent_, [&] { return parent_->running(kLate); }));
    EXPECT_TRUE(serve_only(*late_, [&] { return late_->sibling(kDbms).has_fifo(); }));
    out.introduction = steal_signals(fifo_);
    write_frame(late_->sibling(kDbms).output(), "early");
    out.message = steal_signals(fifo_);
    EXPECT_FALSE(out.introduction.empty());
    EXPECT_EQ(io::SignalKind::SiblingAt, out.introduction.back().kind());
    EXPECT_EQ(1u, out.message.size());
    return out;
  }

  // The database answers, and every block of the newcomer is acknowledged.
  void expect_dialog_goes_on() {
    EXPECT_TRUE(serve_until([&] { return late_->outstanding() == 0; }));
    write_frame(dbms_->sibling(kLate).output(), "reply");
    EXPECT_EQ("reply", next_frame(kLate, kDbms));
  }

  const std::string fifo_ = io::fifo_path(parent_->configuration().fifoprefix, kDbms);
};

TEST_F(OvertakingTest, MessageReadBeforeTheIntroductionIsAcknowledgedAfterIt) {
  Overtaken o = overtake();
  put_signals(fifo_, o.message);
  EXPECT_EQ("early", next_frame(kDbms, kLate));
  EXPECT_EQ(1u, late_->outstanding());
  put_signals(fifo_, o.introduction);
  expect_dialog_goes_on();
}

TEST_F(OvertakingTest, MessageStillUnreadWhenTheIntroductionComesIsKept) {
  Overtaken o = overtake();
  std::vector<io::Signal> both = o.message;
  both.insert(both.end(), o.introduction.begin(), o.introduction.end());
  put_signals(fifo_, both);
  EXPECT_EQ("early", next_frame(kDbms, kLate));
  expect_dialog_goes_on();
}

TEST_F(MessengerTest, RequestForUnknownPeerIsAnsweredWithItsDeath) {
  start_child();
  write_frame(parent_->sibling(kChild).output(), "to:7:nobody");
  write_frame(parent_->sibling(kChild).output(), "echo:still here");
  EXPECT_EQ("still here", next_frame(0, kChild));
}

TEST_F(MessengerTest, KilledChildIsEndOfStreamForItsPeers) {
  start_child();
  write_frame(dbms_->sibling(kChild).output(), "echo:alive");
  EXPECT_EQ("alive", next_frame(kDbms, kChild));
  child_->send_signal(SIGKILL);
  EXPECT_TRUE(serve_until([&] { return ends_[{kDbms, kChild}] == 1; }));
  EXPECT_EQ(128 + SIGKILL, child_->exit_code());
  EXPECT_FALSE(std::filesystem::exists(dir_ + "/tavrelsmem.12"));
  // The database's blocks sent to the dead child were taken back.
  EXPECT_EQ(0u, dbms_->outstanding());
}

TEST_F(MessengerTest, OrderlyShutdownEndsWithTheParentsEndOfStream) {
  start_child();
  write_frame(parent_->sibling(kChild).output(), "shutdown");
  EXPECT_TRUE(serve_until([&] { return parent_->finished(kChild); }));
  EXPECT_EQ(0, child_->wait());
}

TEST_F(MessengerTest, HostEndRemovesFifos) {
  start_child();
  child_->send_signal(SIGKILL);
  EXPECT_TRUE(serve_until([&] { return child_->exited(); }));
  dbms_.reset();
  parent_.reset();
  EXPECT_TRUE(std::filesystem::is_empty(dir_));
}

}  // namespace
}  // namespace host
