#include "io/iostream.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "io/descriptor.h"
#include "io/errors.h"
#include "io/socket.h"
#include "io/test_streams.h"

namespace io {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class IostreamTest : public ::testing::Test {
 protected:
  IostreamTest() {
    DescriptorPair pair = create_socket_pair();
    near = std::make_unique<Socket>("near", pair.first);
    far = std::make_unique<Socket>("far", pair.second);
  }
  std::unique_ptr<Socket> near, far;
};

TEST_F(IostreamTest, LinesBothWays) {
  iostream stream(near->input(), near->output(), seconds(5));
  stream << "EHLO host\r\n" << std::flush;
  EXPECT_EQ("EHLO host\r\n", testing::read_some(far->input(), 100));
  testing::write_all(far->output(), "250-first\r\n250 last\r\n");
  std::string line;
  ASSERT_TRUE(std::getline(stream, line));
  EXPECT_EQ("250-first\r", line);
  ASSERT_TRUE(std::getline(stream, line));
  EXPECT_EQ("250 last\r", line);
}

TEST_F(IostreamTest, ReadTimeOutIsEndOfFileAndStreamStaysUsable) {
  iostream stream(near->input(), near->output(), milliseconds(30));
  testing::write_all(far->output(), "partial");
  std::string line;
  // The time-out ends the line as end of file would; what came is kept.
  std::getline(stream, line);
  EXPECT_TRUE(stream.eof());
  EXPECT_EQ("partial", line);
  EXPECT_FALSE(std::getline(stream, line));  // Nothing more: fails.
  stream.clear();
  testing::write_all(far->output(), " line\nnext\n");
  ASSERT_TRUE(std::getline(stream, line));
  EXPECT_EQ(" line", line);
  ASSERT_TRUE(std::getline(stream, line));
  EXPECT_EQ("next", line);
}

TEST_F(IostreamTest, PeerEndIsEndOfFile) {
  iostream stream(near->input(), near->output(), seconds(5));
  testing::write_all(far->output(), "last words");
  far->output().close();
  std::string all((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  EXPECT_EQ("last words", all);
}

TEST_F(IostreamTest, WriteTimeOutRaises) {
  iostream stream(near->input(), near->output(), milliseconds(30));
  // Nobody reads on the far side: the socket buffers fill up, and the wait
  // for room runs out.
  std::string block(64 * 1024, 'x');
  EXPECT_THROW(for (int i = 0; i < 1000; ++i) stream << block << std::flush, ETimeout);
}

TEST_F(IostreamTest, CloseOutputSendsTheRestAndTheEnd) {
  {
    iostream stream(near->input(), near->output(), seconds(5));
    stream << "QUIT\r\n";
    stream.close_output();
  }
  EXPECT_EQ("QUIT\r\n", testing::read_to_end(far->input()));
}

TEST_F(IostreamTest, DestructionSendsWhatIsHeld) {
  { iostream(near->input(), near->output(), seconds(5)) << "held"; }
  EXPECT_EQ("held", testing::read_some(far->input(), 100));
}

}  // namespace
}  // namespace io
