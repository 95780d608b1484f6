#include "io/socket.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>

#include "base/error.h"
#include "io/connector.h"
#include "io/descriptor.h"
#include "io/errors.h"
#include "io/listener.h"
#include "io/selector.h"
#include "io/socket_address.h"
#include "io/test_streams.h"
#include "io/timer.h"

namespace io {
namespace {

using std::chrono::seconds;

std::unique_ptr<Socket> accept_one(Listener& listener) {
  for (;;) {
    waitReady(listener, seconds(10));
    if (auto socket = listener.accept()) return socket;
  }
}

TEST(SocketTest, LoopbackConnectionCarriesBothWays) {
  Listener listener(loopback_address(), 0);
  SocketConnector connector(loopback_address(), listener.port());
  std::string port = std::to_string(listener.port());
  EXPECT_EQ("SocketConnector(127.0.0.1:" + port + ")", name_of(connector));
  waitReady(connector, seconds(10));
  Socket client(connector);
  EXPECT_EQ("127.0.0.1:" + port, client.name());
  EXPECT_EQ(listener.port(), client.peer_port());
  std::unique_ptr<Socket> server = accept_one(listener);

  testing::write_all(client.output(), "HELO there\r\n");
  EXPECT_EQ("HELO there\r\n", testing::read_some(server->input(), 100));
  testing::write_all(server->output(), "250 ok\r\n");
  server->output().close();
  EXPECT_EQ("250 ok\r\n", testing::read_to_end(client.input()));
  const char* bytes = nullptr;
  try {
    client.input().readBegin(bytes);
    FAIL() << "no EEndOfStream";
  } catch (const EEndOfStream& e) {
    EXPECT_EQ("EOS from 127.0.0.1:" + port, e.text());
  }
}

// The threads of this process, from /proc/self/status.
int thread_count() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind("Threads:", 0) == 0) return std::stoi(line.substr(8));
  return -1;
}

// Waits up to 5 s for the process to have `n` threads; returns the count.
// A connector's thread signals before it returns, so it may linger a moment.
int settle_threads(int n) {
  TimePoint give_up = Timer::due_in(seconds(5));
  while (thread_count() != n && MonotonicClock::now() < give_up) {
    Timer pause(Timer::due_in(std::chrono::milliseconds(1)));
    waitReady(pause);
  }
  return thread_count();
}

TEST(SocketTest, OnlyTheConnectorStartsAThreadAndItEnds) {
  // Earlier connectors' threads are gone too: the process is single-threaded.
  ASSERT_EQ(1, settle_threads(1));
  Listener listener(loopback_address(), 0);
  SocketConnector connector(loopback_address(), listener.port());
  waitReady(connector, seconds(10));
  Socket client(connector);
  std::unique_ptr<Socket> server = accept_one(listener);
  testing::write_all(client.output(), "ping");
  EXPECT_EQ("ping", testing::read_some(server->input(), 10));
  EXPECT_EQ(1, settle_threads(1));
}

TEST(SocketDeathTest, SecondSocketFromOneConnectorIsFatal) {
  Listener listener(loopback_address(), 0);
  SocketConnector connector(loopback_address(), listener.port());
  waitReady(connector, seconds(10));
  Socket first(connector);
  EXPECT_DEATH(Socket second(connector),
               "Assertion failed: Socket already taken from SocketConnector");
}

TEST(SocketTest, RefusedConnectionShowsOnlyAtTheSocket) {
  uint16_t port;
  {
    Listener gone(loopback_address(), 0);
    port = gone.port();
  }
  SocketConnector connector(loopback_address(), port);  // Raises nothing.
  waitReady(connector, seconds(10));
  try {
    Socket socket(connector);
    FAIL() << "no EConnection";
  } catch (const EConnection& e) {
    EXPECT_EQ("Error connecting to 127.0.0.1:" + std::to_string(port) + ": Connection refused",
              e.text());
  }
}

TEST(SocketTest, DroppedConnectorClosesItsSocket) {
  Listener listener(loopback_address(), 0);
  { SocketConnector connector(loopback_address(), listener.port()); }
  // The thread finished the connection after the connector was gone, and
  // closed it: the server side reads the end.
  std::unique_ptr<Socket> server = accept_one(listener);
  EXPECT_EQ("", testing::read_to_end(server->input()));
}

TEST(SocketTest, ResolveGivesIpv4OrRaises) {
  EXPECT_EQ(loopback_address(), resolve("127.0.0.1"));
  EXPECT_EQ("127.0.0.1", address_text(resolve("localhost")));
  try {
    resolve("no-such-host.invalid");
    FAIL() << "no EResolv";
  } catch (const EResolv& e) {
    EXPECT_EQ(0u, e.text().rfind("Error resolving no-such-host.invalid: ", 0)) << e.text();
  }
}

TEST(SocketTest, WriteToClosedPeerIsAFaultNotASignal) {
  DescriptorPair pair = create_socket_pair();
  Socket mine("mine", pair.first);
  { Socket theirs("theirs", pair.second); }
  testing::write_all(mine.output(), "into the void");
  char* space = nullptr;
  try {
    mine.output().writeBegin(space);
    FAIL() << "no fault";
  } catch (const error::ESystemError& e) {
    EXPECT_EQ("Socket_Ostream(mine): Broken pipe", e.text());
  }
  EXPECT_THROW(mine.pass(1), error::EFatal);
}

TEST(SocketTest, ClosedOutputStillReadsThePeer) {
  DescriptorPair pair = create_socket_pair();
  Socket a("a", pair.first), b("b", pair.second);
  testing::write_all(a.output(), "request");
  a.output().close();
  EXPECT_EQ("request", testing::read_to_end(b.input()));
  testing::write_all(b.output(), "reply");
  EXPECT_EQ("reply", testing::read_some(a.input(), 100));
}

}  // namespace
}  // namespace io
