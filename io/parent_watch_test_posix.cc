// The parent watch and the parent-death guard, in a grandchild whose parent
// (a child of the test) exits when the test says so.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <string>

#include "base/error.h"
#include "io/errors.h"
#include "io/parent_watch.h"
#include "io/pipe_stream.h"
#include "io/selector.h"

namespace io {
namespace {

using Clock = std::chrono::steady_clock;

// A grandchild running `body(report_fd)` under a parent that lives until
// release(). The test reads what the grandchild writes to report_fd; the
// end of that stream is the grandchild's end.
class Orphan {
 public:
  explicit Orphan(const std::function<void(int)>& body) {
    int report[2], go[2];
    EXPECT_EQ(0, pipe2(report, O_CLOEXEC));
    EXPECT_EQ(0, pipe2(go, O_CLOEXEC));
    parent_ = fork();
    if (parent_ == 0) {
      close(report[0]);
      close(go[1]);
      if (fork() == 0) {
        close(go[0]);
        body(report[1]);
        _exit(0);
      }
      close(report[1]);
      char c;
      (void)!read(go[0], &c, 1);  // Until the test releases it.
      _exit(0);
    }
    close(report[1]);
    close(go[0]);
    report_ = report[0];
    go_ = go[1];
  }
  ~Orphan() {
    if (go_ >= 0) release();
    close(report_);
  }

  // Waits until the grandchild has said `text` (it watches its parent now:
  // a parent that ended before would leave it watching the reaper).
  bool said(const std::string& text, int seconds) {
    auto deadline = Clock::now() + std::chrono::seconds(seconds);
    while (heard_.size() < text.size() && Clock::now() < deadline) {
      char c;
      ssize_t n = read(report_, &c, 1);
      if (n <= 0) break;
      heard_ += c;
    }
    return heard_ == text;
  }

  // The grandchild's parent exits.
  void release() {
    close(go_);
    go_ = -1;
    int status;
    waitpid(parent_, &status, 0);
  }

  // Everything the grandchild wrote until its end, or "(deadline)" after
  // `seconds`.
  std::string report(int seconds) {
    std::string text;
    auto deadline = Clock::now() + std::chrono::seconds(seconds);
    fcntl(report_, F_SETFL, O_NONBLOCK);
    for (;;) {
      char buffer[256];
      ssize_t n = read(report_, buffer, sizeof(buffer));
      if (n == 0) return heard_ + text;
      if (n > 0) text.append(buffer, n);
      if (Clock::now() > deadline) return heard_ + text + "(deadline)";
      if (n < 0) usleep(10000);
    }
  }

 private:
  pid_t parent_ = -1;
  int report_ = -1;
  std::string heard_;  // What said() read.
  int go_ = -1;
};

void say(int fd, const std::string& text) { (void)!write(fd, text.data(), text.size()); }

TEST(ParentWatchTest, BecomesReadyWhenTheParentEnds) {
  Orphan orphan([](int out) {
    ParentWatch watch;
    say(out, watch.is_ready() ? "ready at start;" : "watching;");
    try {
      waitReady(watch, std::chrono::seconds(120));
      say(out, watch.is_ready() ? "parent ended" : "woken, not ready");
    } catch (const error::Exception& e) {
      say(out, e.text());
    }
  });
  ASSERT_TRUE(orphan.said("watching;", 60));
  orphan.release();
  EXPECT_EQ("watching;parent ended", orphan.report(150));
}

TEST(ParentWatchTest, TheWaitGuardEndsAnyWaitReady) {
  Orphan orphan([](int out) {
    ParentWatch watch;
    set_wait_guard(&watch);
    int never[2];
    if (pipe(never) != 0) return;
    PipeIStream silent("Silent", never[0]);
    say(out, "waiting;");
    try {
      waitReady(silent, std::chrono::seconds(120));
      say(out, "ready");
    } catch (const ETimeout& e) {
      say(out, e.text());
    } catch (const EEndOfStream& e) {
      say(out, e.text());
    }
    set_wait_guard(nullptr);
  });
  ASSERT_TRUE(orphan.said("waiting;", 60));
  orphan.release();
  EXPECT_EQ("waiting;EOS from ParentWatch (Parent process has ended)", orphan.report(150));
}

TEST(ParentWatchTest, TheGuardEndsAProcessThatOutlivesItsParent) {
  Orphan orphan([](int out) {
    guard_parent_death(1);
    say(out, "guarded;");
    for (;;) pause();  // Only a signal ends it.
  });
  // It runs on while its parent lives.
  ASSERT_TRUE(orphan.said("guarded;", 60));
  EXPECT_EQ("guarded;(deadline)", orphan.report(2));
  auto start = Clock::now();
  orphan.release();
  EXPECT_EQ("guarded;", orphan.report(60)) << "the grandchild still runs";
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(900)) << "no grace";
}

}  // namespace
}  // namespace io
