// The SMTP client: the server setting, and whole sends over loopback to
// scripted peers and to a real SMTP server (aiosmtpd) delivering into a
// Maildir, whose mail Python's email package parses back.
#include "email/smtp_client.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "base/error.h"
#include "email/encoding.h"
#include "email/mime_multipart.h"
#include "email/smtp_server.h"
#include "email/test_process.h"
#include "email/test_support.h"

namespace email {
namespace {

using namespace std::chrono_literals;

using SmtpServerTest = SmtpTest;

TEST_F(SmtpServerTest, HostAndPort) {
  auto parse = [this](const std::string& server) {
    const auto parsed = parse_smtp_server(server, log);
    return parsed.host + " " + std::to_string(parsed.port);
  };
  EXPECT_EQ("mail.example 25", parse("mail.example"));
  EXPECT_EQ("mail.example 2525", parse("mail.example:2525"));
  EXPECT_EQ("10.0.0.1 65535", parse("10.0.0.1:65535"));
  EXPECT_TRUE(lines.empty());
  // An empty host or port 0: reported, then the whole text on port 25.
  EXPECT_EQ(":2525 25", parse(":2525"));
  EXPECT_EQ("mail:0 25", parse("mail:0"));
  EXPECT_EQ(" 25", parse(""));
  const std::vector<LogLine> expected = {{"SMTP server parse problem: \":2525\"", true},
                                         {"SMTP server parse problem: \"mail:0\"", true},
                                         {"SMTP server parse problem: \"\"", true}};
  EXPECT_EQ(expected, lines);
  for (const char* bad : {"mail:", "mail:smtp", "mail:25x", "mail:65536", "mail:-1", "a:1:2"}) {
    EXPECT_THROW(parse_smtp_server(bad, log), error::EParseError) << bad;
  }
}

// Runs a send against a scripted peer (see testdata/smtp_peer.py).
class ScriptedPeerTest : public SmtpTest {
 protected:
  // Sends `message` to a peer that follows `script`, with a 1 s time-out;
  // keeps what the peer received in `received`.
  bool sendTo(const std::string& script, Message& message) {
    BackgroundPython peer(kTestData + "/smtp_peer.py", {{"script", script}});
    const int port = peer.port();
    EXPECT_NE(0, port) << peer.read("output");
    server = "127.0.0.1:" + std::to_string(port);
    SmtpClient client(server, "tavrel.test", log);
    client.setTimeout(1s);
    client.setHeloName("tavrel.test");
    const bool sent = client.send(message);
    received = peer.read("received");
    return sent;
  }

  std::string server;
  std::string received;
};

const std::string kGreeting = "send 220 peer ready\\r\\n\nrecv\nsend 250 hello\\r\\n\nrecv\n";

TEST_F(ScriptedPeerTest, RefusedRecipientAmongTwo) {
  auto m = makeMessage({"A@Example.org", "b@example.org"});
  EXPECT_TRUE(sendTo(kGreeting + "send 250 sender ok\\r\\n\nrecv\nsend 250 ok\\r\\n\nrecv\n"
                                 "send 550 no such user\\r\\n\nrecv\nsend 354 go\\r\\n\ndata\n"
                                 "send 250 queued\\r\\n\nrecv\nsend 221 bye\\r\\n\nclose\n",
                     *m));
  EXPECT_EQ(
      "EHLO tavrel.test\r\nMAIL FROM:<sender@example.org>\r\nRCPT TO:<a@example.org>\r\n"
      "RCPT TO:<b@example.org>\r\nDATA\r\n" +
          dataOf(*m) + "QUIT\r\n",
      received);
  const std::vector<LogLine> expected = {
      {"Delivery not accepted for destination <b@example.org>, \"" + server +
           "\" said: 550 no such user",
       true},
      {"Mail transaction completed successfully.", false}};
  EXPECT_EQ(expected, lines);
}

TEST_F(ScriptedPeerTest, AllRecipientsRefused) {
  auto m = makeMessage({"a@x", "b@x"});
  EXPECT_FALSE(sendTo(kGreeting + "send 250 ok\\r\\n\nrecv\nsend 550 no\\r\\n\nrecv\n"
                                  "send 551 no\\r\\n\nrecv\n",
                      *m));
  ASSERT_EQ(3u, lines.size());
  EXPECT_EQ(
      (LogLine{"Mail server \"" + server + "\" accepted none of the destinations, aborting", true}),
      lines[2]);
  // A refusal ends the session with a QUIT.
  EXPECT_TRUE(received.ends_with("RCPT TO:<b@x>\r\nQUIT\r\n")) << received;
}

TEST_F(ScriptedPeerTest, NoGreeting) {
  auto m = makeMessage({"a@x"});
  EXPECT_FALSE(sendTo("close\n", *m));
  const std::vector<LogLine> expected = {{"Bad response: \"\"", true},
                                         {"\"" + server + "\" greeted us with: ", true}};
  EXPECT_EQ(expected, lines);
  EXPECT_EQ("", received);
}

TEST_F(ScriptedPeerTest, ServerThatNeverAnswersTimesOut) {
  auto m = makeMessage({"a@x"});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(sendTo("hang\n", *m));
  // The 1 s time-out, not the 120 s default, ended the wait.
  EXPECT_LT(std::chrono::steady_clock::now() - start, 60s);
  ASSERT_EQ(2u, lines.size());
  EXPECT_EQ("\"" + server + "\" greeted us with: ", lines[1].text);
}

// The peer closes while a large message is still being sent: the write
// fails and the failure is reported, not raised.
TEST_F(ScriptedPeerTest, ServerClosesWhileDataIsSent) {
  const std::string big(8 << 20, 'x');
  auto m = makeMessage({"a@x"}, big);
  EXPECT_FALSE(sendTo(kGreeting + "send 250 ok\\r\\n\nrecv\nsend 250 ok\\r\\n\nrecv\n"
                                  "send 354 go\\r\\n\nrecv\nclose\n",
                      *m));
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(lines.back().text.starts_with("SMTP connection to " + server + " lost: \""))
      << lines.back();
  EXPECT_TRUE(lines.back().isError);
}

// A body that fails while it is written (a report whose data can't be
// read, or a stream of its own that failed) makes the send fail with a
// report.
template <typename Failure>
class FailingBody : public UnstructuredMimeBody {
 public:
  FailingBody() : UnstructuredMimeBody("text/plain", quoted_printable_encoding()) {}

 protected:
  void writeContent(std::ostream&) override { throw Failure("damaged report"); }
};

TEST_F(ScriptedPeerTest, BodyFailuresAreReported) {
  const std::string script = kGreeting +
                             "send 250 ok\\r\\n\nrecv\nsend 250 ok\\r\\n\nrecv\n"
                             "send 354 go\\r\\n\nrecv\n";
  auto m = makeMessage({"a@x"});
  m->setBody(std::make_unique<FailingBody<error::EParseError>>());
  EXPECT_FALSE(sendTo(script, *m));
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ((LogLine{"SMTP connection to " + server + " lost: \"damaged report\"", true}),
            lines.back());
  m->setBody(std::make_unique<FailingBody<std::ios_base::failure>>());
  EXPECT_FALSE(sendTo(script, *m));
  EXPECT_TRUE(
      lines.back().text.starts_with("SMTP connection to " + server + " lost: \"damaged report"))
      << lines.back();
}

TEST_F(SmtpTest, ConnectionFailuresAreReported) {
  auto m = makeMessage({"a@x"});
  SmtpClient badPort("mail:smtp", "h", log);
  EXPECT_FALSE(badPort.send(*m));
  // Nothing listens on port 1 of the loopback.
  SmtpClient refused("127.0.0.1:1", "h", log);
  refused.setTimeout(5s);
  EXPECT_FALSE(refused.send(*m));
  ASSERT_EQ(2u, lines.size());
  EXPECT_EQ(
      (LogLine{"SMTP connection to mail:smtp lost: \"Bad port number in SMTP server \"smtp\"\"",
               true}),
      lines[0]);
  EXPECT_TRUE(lines[1].text.starts_with("SMTP connection to 127.0.0.1:1 lost: \"Error connecting"))
      << lines[1];
}

}  // namespace
}  // namespace email
