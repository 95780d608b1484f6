#include "io/pipe_stream.h"

#include <gtest/gtest.h>

#include <memory>

#include "base/error.h"
#include "io/descriptor.h"
#include "io/errors.h"
#include "io/selector.h"
#include "io/test_streams.h"
#include "io/timer.h"

namespace io {
namespace {

class PipeStreamTest : public ::testing::Test {
 protected:
  PipeStreamTest() {
    DescriptorPair fds = create_pipe();
    in = std::make_unique<PipeIStream>("pin", fds.first);
    out = std::make_unique<PipeOStream>("pout", fds.second);
  }
  std::unique_ptr<PipeIStream> in;
  std::unique_ptr<PipeOStream> out;
};

TEST_F(PipeStreamTest, ReadBeginWithNothingYetLendsNothing) {
  const char* bytes = nullptr;
  EXPECT_EQ(0u, in->readBegin(bytes));
  EXPECT_FALSE(in->is_ready());
  EXPECT_TRUE(out->is_ready());  // Nothing to send.
}

TEST_F(PipeStreamTest, EndOfStreamOnlyAfterEveryEarlierByte) {
  testing::write_all(*out, "abc");
  out->close();
  out->close();  // A second close does nothing.
  EXPECT_EQ("a", testing::read_some(*in, 1));
  // The peer is gone, but "bc" is still there and must come first.
  const char* bytes = nullptr;
  ASSERT_EQ(2u, in->readBegin(bytes));
  EXPECT_EQ("bc", std::string(bytes, 2));
  in->readCommit(2);
  waitReady(*in, std::chrono::seconds(5));
  try {
    in->readBegin(bytes);
    FAIL() << "no EEndOfStream";
  } catch (const EEndOfStream& e) {
    EXPECT_EQ("EOS from pin", e.text());
  }
  // The end stays: every later use raises it again.
  EXPECT_TRUE(in->is_ready());
  EXPECT_THROW(in->readBegin(bytes), EEndOfStream);
}

TEST_F(PipeStreamTest, ManyBuffersArriveWholeAndInOrder) {
  std::string data;
  for (int i = 0; data.size() < 300000; ++i) data += std::to_string(i) + ",";
  // Writer and reader share one selector, so that neither blocks the other.
  Selector<int> selector;
  selector.add(*in, 0);
  selector.add(*out, 1);
  size_t written = 0;
  std::string received;
  bool closed = false;
  while (true) {
    auto [s, which] = selector.poll();
    if (which == 1 && !closed) {
      char* space = nullptr;
      size_t n = std::min(out->writeBegin(space), data.size() - written);
      std::copy_n(data.data() + written, n, space);
      out->writeCommit(n);
      written += n;
      if (written == data.size() && out->flushStep()) {
        selector.remove(*out);
        out->close();
        closed = true;
      }
    } else if (which == 0) {
      const char* bytes = nullptr;
      try {
        size_t n = in->readBegin(bytes);
        EXPECT_LE(n, kStreamBufferSize);
        received.append(bytes, n);
        in->readCommit(n);
      } catch (const EEndOfStream&) {
        break;
      }
    }
  }
  EXPECT_EQ(data.size(), received.size());
  EXPECT_TRUE(data == received);
}

TEST_F(PipeStreamTest, FullBufferLendsNoSpace) {
  char* space = nullptr;
  ASSERT_EQ(kStreamBufferSize, out->writeBegin(space));
  out->writeCommit(kStreamBufferSize);
  EXPECT_EQ(0u, out->writeBegin(space));
  out->writeCommit(0);
  EXPECT_FALSE(out->is_ready());
  waitReady(*out, std::chrono::seconds(5));  // The pipe takes 4096 bytes.
  EXPECT_EQ(kStreamBufferSize, out->writeBegin(space));
  out->writeCommit(0);
}

TEST_F(PipeStreamTest, BrokenPipeIsStoredAndRaisedAtEachUse) {
  in.reset();
  char* space = nullptr;
  out->writeBegin(space);
  space[0] = 'x';
  out->writeCommit(1);
  // The fault wakes the waiter instead of killing the process.
  waitReady(*out, std::chrono::seconds(5));
  EXPECT_TRUE(out->is_ready());
  try {
    out->flushStep();
    FAIL() << "no fault raised";
  } catch (const error::ESystemError& e) {
    EXPECT_EQ("pout write: Broken pipe", e.text());
  }
  EXPECT_THROW(out->writeBegin(space), error::ESystemError);
  EXPECT_THROW(out->close(), error::ESystemError);
}

TEST_F(PipeStreamTest, NewHandleClearsTheFault) {
  in.reset();
  // The flush finds the fault; it is raised at the next use.
  testing::write_all(*out, "first");
  char* space = nullptr;
  EXPECT_THROW(out->writeBegin(space), error::ESystemError);
  DescriptorPair fds = create_pipe();
  PipeIStream fresh("fresh", fds.first);
  out->set_handle(fds.second);
  // What the old reader never got goes to the new one, then the rest.
  testing::write_all(*out, "second");
  out->close();
  EXPECT_EQ("firstsecond", testing::read_to_end(fresh));
}

TEST(PipeOStreamTest, DescriptorGivenWhileOnASelectorIsServed) {
  PipeOStream late("late", -1);
  char* space = nullptr;
  ASSERT_EQ(kStreamBufferSize, late.writeBegin(space));
  space[0] = 'k';
  late.writeCommit(1);
  Timer timer(Timer::due_in(std::chrono::milliseconds(20)));
  Selector<int> selector;
  selector.add(late, 1);
  selector.add(timer, 2);
  EXPECT_EQ(2, selector.poll().second);  // Nowhere to write to yet.
  selector.remove(timer);
  DescriptorPair fds = create_pipe();
  PipeIStream in("in", fds.first);
  late.set_handle(fds.second);
  EXPECT_EQ(1, selector.poll().second);
  EXPECT_EQ("k", testing::read_some(in, 10));
}

using PipeStreamDeathTest = PipeStreamTest;

TEST_F(PipeStreamDeathTest, ImpossibleStatesAreFatal) {
  EXPECT_DEATH(in->readCommit(2),
               "Assertion failed: Overcommit in PipeIStream 2 is 2 bytes past "
               "end of buffer");
  EXPECT_DEATH(out->writeCommit(kStreamBufferSize + 3),
               "Overcommit in PipeOStream 4099 is 3 bytes past end of buffer");
  EXPECT_DEATH(
      {
        in->close();
        in->close();
      },
      "Assertion failed: Double close on PipeIStream");
}

}  // namespace
}  // namespace io
