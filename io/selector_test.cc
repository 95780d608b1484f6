#include "io/selector.h"

#include <gtest/gtest.h>

#include <memory>

#include "io/descriptor.h"
#include "io/errors.h"
#include "io/pipe_stream.h"
#include "io/stacked.h"
#include "io/test_streams.h"
#include "io/timer.h"

namespace io {
namespace {

using std::chrono::milliseconds;

// A selectable without descriptor whose readiness the test sets.
class Flag : public Selectable {
 public:
  void name(std::string& out) const override { out = "Flag"; }
  bool is_ready() const override { return ready; }
  bool ready = false;
};

// Both ends of a pipe as streams.
struct Pipe {
  Pipe(const std::string& name) {
    DescriptorPair fds = create_pipe();
    in = std::make_unique<PipeIStream>(name, fds.first);
    out = std::make_unique<PipeOStream>(name + ".w", fds.second);
  }
  std::unique_ptr<PipeIStream> in;
  std::unique_ptr<PipeOStream> out;
};

TEST(TimerTest, DueTimerComesBackAtOnce) {
  Timer timer(MonotonicClock::now() - milliseconds(5));
  Selector<int> selector;
  selector.add(timer, 7);
  TimePoint before = MonotonicClock::now();
  auto [got, value] = selector.poll();
  EXPECT_EQ(&timer, got);
  EXPECT_EQ(7, value);
  EXPECT_LT(MonotonicClock::now() - before, milliseconds(100));
  // A due timer also comes back from a non-blocking poll.
  EXPECT_EQ(&timer, selector.poll_nonblocking().first);
}

TEST(TimerTest, FutureTimerNeverComesBackEarly) {
  Timer timer(Timer::due_in(milliseconds(30)));
  Selector<int> selector;
  selector.add(timer, 1);
  EXPECT_THROW(selector.poll_nonblocking(), ENotReady);
  EXPECT_EQ(&timer, selector.poll().first);
  EXPECT_GE(MonotonicClock::now(), timer.when());
}

TEST(TimerTest, DeadlinesSaturate) {
  EXPECT_EQ(kNoDeadline, Timer::due_in(kInfinite));
  EXPECT_EQ(kNoDeadline, Timer::due_in(kInfinite - std::chrono::microseconds(1)));
  TimePoint now = MonotonicClock::now();
  EXPECT_EQ(now + milliseconds(5), add_saturated(now, milliseconds(5)));
}

TEST(SelectorTest, NonBlockingPollThrowsAndSelectorStaysUsable) {
  Pipe pipe("idle");
  Selector<int> selector;
  selector.add(*pipe.in, 1);
  try {
    selector.poll_nonblocking();
    FAIL() << "no ENotReady";
  } catch (const ENotReady& e) {
    EXPECT_EQ("Selectable idle not ready", e.text());
  }
  testing::write_all(*pipe.out, "x");
  EXPECT_EQ(pipe.in.get(), selector.poll().first);
  EXPECT_EQ("x", testing::read_some(*pipe.in, 10));
}

TEST(SelectorTest, ReadySelectableComesOutWithoutBlocking) {
  Flag flag;
  flag.ready = true;
  Pipe idle("idle");
  Selector<int> selector;
  selector.add(*idle.in, 1);
  selector.add(flag, 2);
  EXPECT_EQ(2, selector.poll_nonblocking().second);
  flag.ready = false;
  EXPECT_THROW(selector.poll_nonblocking(), ENotReady);
}

TEST(SelectorTest, RemovingMiddleDescriptorKeepsOthersReachable) {
  Pipe a("a"), b("b"), c("c");
  Selector<int> selector;
  selector.add(*a.in, 1);
  selector.add(*b.in, 2);
  selector.add(*c.in, 3);
  selector.remove(*b.in);
  testing::write_all(*c.out, "c");
  EXPECT_EQ(3, selector.poll().second);
  testing::read_some(*c.in, 1);
  testing::write_all(*a.out, "a");
  EXPECT_EQ(1, selector.poll().second);
  // b is off the selector: its bytes don't wake it.
  testing::read_some(*a.in, 1);
  testing::write_all(*b.out, "b");
  EXPECT_THROW(selector.poll_nonblocking(), ENotReady);
}

TEST(SelectorTest, DestroyedSelectableLeavesItsSelectors) {
  Selector<int> first, second;
  auto flag = std::make_unique<Flag>();
  first.add(*flag, 1);
  second.add(*flag, 2);
  flag.reset();
  Timer due(MonotonicClock::now());
  first.add(due, 3);
  EXPECT_EQ(3, first.poll().second);
}

TEST(WaitReadyTest, TimeOutsAndReadiness) {
  Pipe pipe("slow");
  try {
    waitReady(*pipe.in, milliseconds(20));
    FAIL() << "no ETimeout";
  } catch (const ETimeout& e) {
    EXPECT_EQ("Timeout waiting for slow", e.text());
  }
  EXPECT_THROW(waitReady(*pipe.in, Duration::zero()), ETimeout);
  testing::write_all(*pipe.out, "y");
  waitReady(*pipe.in, Duration::zero());
  waitReady(*pipe.in, kInfinite);
  EXPECT_TRUE(pipe.in->is_ready());
}

// A layer over one pipe: its front is ready once the back has seen a byte.
class Layer : public StackedSelectableBack {
 public:
  class Front : public StackedSelectableFront {
   public:
    explicit Front(Layer& layer) : StackedSelectableFront(layer), layer_(layer) {}
    void name(std::string& out) const override { out = "LayerFront"; }
    bool is_ready() const override { return !layer_.seen.empty(); }

   private:
    Layer& layer_;
  };

  explicit Layer(IStream& below) : below_(below) { set_underlying(&below_, true); }
  ~Layer() override { set_underlying(&below_, false); }

  void underlyingIsReady(Selectable& s) override {
    EXPECT_EQ(&below_, &s);
    ++calls;
    seen += testing::read_some(below_, 100);
    if (drop_after_read) set_underlying(&below_, false);
  }

  IStream& below_;
  std::string seen;
  int calls = 0;
  bool drop_after_read = false;
};

TEST(StackedTest, UnderlyingReadinessReachesTheFront) {
  Pipe pipe("below");
  Layer layer(*pipe.in);
  Layer::Front front(layer);
  Selector<int> selector;
  selector.add(front, 5);
  EXPECT_THROW(selector.poll_nonblocking(), ENotReady);
  testing::write_all(*pipe.out, "hello");
  auto [got, value] = selector.poll();
  EXPECT_EQ(&front, got);
  EXPECT_EQ(5, value);
  EXPECT_EQ("hello", layer.seen);
  EXPECT_EQ(1, layer.calls);
  selector.remove(front);
  // Off the selector, the underlying pipe is no longer watched.
  testing::write_all(*pipe.out, "!");
  layer.seen.clear();
  Flag other;
  selector.add(other, 1);
  EXPECT_THROW(selector.poll_nonblocking(), ENotReady);
  EXPECT_EQ(1, layer.calls);
}

TEST(StackedTest, FrontReadyAtAddComesOutWithoutWaiting) {
  Pipe pipe("below");
  Layer layer(*pipe.in);
  layer.seen = "earlier";
  Layer::Front front(layer);
  Selector<int> selector;
  selector.add(front, 4);
  EXPECT_EQ(4, selector.poll_nonblocking().second);
  EXPECT_EQ(0, layer.calls);  // The pipe had nothing to say.
}

TEST(StackedTest, BackMayDropUnderlyingWhileCalled) {
  Pipe pipe("below");
  Layer layer(*pipe.in);
  layer.drop_after_read = true;
  Layer::Front front(layer);
  Selector<int> selector;
  selector.add(front, 5);
  testing::write_all(*pipe.out, "z");
  EXPECT_EQ(&front, selector.poll().first);
  EXPECT_EQ("z", layer.seen);
  layer.set_underlying(&*pipe.in, true);  // Back on, for the destructors.
}

TEST(StackedTest, TwoFrontsShareTheUnderlyingOnce) {
  Pipe pipe("below");
  Layer layer(*pipe.in);
  Layer::Front one(layer), two(layer);
  Selector<int> selector;
  selector.add(one, 1);
  selector.add(two, 2);
  selector.remove(one);
  // The underlying pipe is still watched for the second front.
  testing::write_all(*pipe.out, "q");
  EXPECT_EQ(2, selector.poll().second);
}

using SelectorDeathTest = ::testing::Test;

TEST(SelectorDeathTest, MisuseIsFatal) {
  Flag flag;
  EXPECT_DEATH(
      {
        Selector<int> selector;
        selector.add(flag, 1);
        selector.add(flag, 2);
      },
      "Assertion failed: Added selectable Flag twice");
  EXPECT_DEATH(
      {
        BareSelector selector;
        selector.remove(flag);
      },
      "Assertion failed: Unknown Flag removed twice from Selector");
  EXPECT_DEATH(
      {
        Selector<int> selector;
        selector.add(flag, 1);
        selector.poll();
      },
      "Assertion failed: Wait without descriptor or deadline would never end");
}

}  // namespace
}  // namespace io
