// A report mailed by send_report_mail: to a real SMTP server (aiosmtpd,
// delivering into a Maildir) whose mail Python's email package parses
// back, and to scripted peers that refuse, fall silent or hang up. Each
// case checks the lines for the report's incident series.
#include "mailing/report_mail.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <sstream>

#include "email/mime_multipart.h"
#include "email/test_process.h"
#include "grapher/check_image.h"
#include "grapher/graph.h"
#include "io/socket_address.h"
#include "mailing/mime_image_generator.h"
#include "mailing/report_bodies.h"
#include "mailing/report_mail_test_support.h"
#include "report/html_renderer.h"
#include "report/text_renderer.h"
#include "tql/schema.h"

namespace {

using namespace std::chrono_literals;
namespace fake = report::fake;
using email::kTestData;

const std::string kSendFailed = "Unable to send report e-mail - please check mail server setup";

struct Incident {
  uint32_t severity;
  std::string text;
  bool operator==(const Incident&) const = default;
};
std::ostream& operator<<(std::ostream& os, const Incident& i) {
  return os << i.severity << " " << i.text;
}

// The lines of a mail of instance number 3 to `to` that didn't go out.
std::vector<Incident> notSent(const std::string& to) {
  return {{1, "Sending report number 3 to " + to + "..."},
          {4, "Report number 3 has not been send to " + to + "!"}};
}

std::string withoutCr(std::string text) {
  std::erase(text, '\r');
  return text;
}

// Width and height from the IHDR chunk of a PNG.
std::string pngSize(const std::vector<uint8_t>& png) {
  auto word = [&png](size_t at) {
    return (uint32_t{png.at(at)} << 24) | (uint32_t{png.at(at + 1)} << 16) |
           (uint32_t{png.at(at + 2)} << 8) | png.at(at + 3);
  };
  return std::to_string(word(16)) + " x " + std::to_string(word(20));
}

class ReportMailTest : public ::testing::Test {
 protected:
  // Mails `instance` to `server` and records the incident lines.
  bool send(const std::string& server, std::vector<std::string> addresses, uint32_t order = 3,
            io::Duration timeout = 30s) {
    const ReportMailSettings settings{.mail_server = server,
                                      .mail_from = "tavrel.test",
                                      .reply_mail_to = "Reports@Example.org",
                                      .timeout = timeout};
    const ReportMail mail{std::move(addresses), &instance, zone, order};
    return send_report_mail(mail, settings, resources.store(),
                            [this](uint32_t severity, const std::string& text) {
                              incidents.push_back({severity, text});
                            });
  }

  // Mails to a scripted peer (testdata/smtp_peer.py) and keeps what it
  // received.
  bool sendToPeer(const std::string& script, std::vector<std::string> addresses,
                  uint32_t order = 3) {
    email::BackgroundPython peer(kTestData + "/smtp_peer.py", {{"script", script}});
    const int port = peer.port();
    EXPECT_NE(0, port) << peer.read("output");
    const bool sent = send("127.0.0.1:" + std::to_string(port), std::move(addresses), order, 1s);
    received = peer.read("received");
    return sent;
  }

  fake::Instance instance = sampleReport();
  const zone_t zone = timeZoneValue(7200);
  ResourceFolder resources;
  LogCapture log;
  std::vector<Incident> incidents;
  std::string received;
};

TEST_F(ReportMailTest, RealServerGetsTheWholeReport) {
  email::BackgroundPython server(kTestData + "/maildir_server.py");
  const int port = server.port();
  ASSERT_NE(0, port) << server.read("output");
  ASSERT_TRUE(send("127.0.0.1:" + std::to_string(port), {"Alice@Example.org", "bob@example.org"}))
      << ::testing::PrintToString(log.lines);
  const std::vector<Incident> told = {
      {1, "Sending report number 3 to Alice@Example.org, bob@example.org..."},
      {1, "Report number 3 sent to Alice@Example.org, bob@example.org"}};
  EXPECT_EQ(told, incidents);
  EXPECT_TRUE(log.lines.empty()) << ::testing::PrintToString(log.lines);
  EXPECT_EQ("Added email for reporting: Alice@Example.org", log.traces.at(0));

  const auto out = server.folder() / "out";
  std::filesystem::create_directories(out);
  const std::string command = "/usr/bin/python3 '" + kTestData + "/read_report_mail.py' '" +
                              (server.folder() / "maildir").string() + "' '" + out.string() +
                              "' >'" + (server.folder() / "parsed").string() + "' 2>&1";
  ASSERT_EQ(0, std::system(command.c_str())) << server.read("parsed");

  // The pictures are those of the resource folder; both charts are empty.
  auto picture = [](const std::string& text) { return pngSize(grapher::errorPicture(text)); };
  const std::string chart =
      pngSize(grapher::chartPng(grapher::Graph(grapher::kPlot, kStart, kStart + kDay), zone));
  EXPECT_EQ(
      "mails 1\n"
      "From: <reports@example.org>\n"
      "To: <alice@example.org>, <bob@example.org>\n"
      "Subject: Tavrel report - Weekly\n"
      "X-RcptTo: alice@example.org, bob@example.org\n"
      "defects 0\n"
      "multipart/related\n"
      "  multipart/alternative\n"
      "    text/plain\n"
      "    text/html\n"
      "  image/png <report_logo>\n"
      "  image/png <ok_lamp>\n"
      "  image/png <warn_lamp>\n"
      "  image/png <alert_lamp>\n"
      "  image/png <chart0>\n"
      "  image/gif <spacer>\n"
      "  image/png <chart1>\n"
      "png <report_logo> ok " +
          picture("Tavrel") + "\npng <ok_lamp> ok " + picture("ok") + "\npng <warn_lamp> ok " +
          picture("warning") + "\npng <alert_lamp> ok " + picture("alert") + "\npng <chart0> ok " +
          chart +
          "\n"
          "gif <spacer> ok\n"
          "png <chart1> ok " +
          chart +
          "\n"
          "html refers to report_logo ok_lamp warn_lamp alert_lamp chart0 spacer chart1\n",
      server.read("parsed"));

  // The text part is the text rendering in the report's zone; the HTML is
  // the HTML rendering, styled, with the server's zone.
  std::ostringstream text;
  report::render_report_text(instance, text, zone);
  EXPECT_EQ(withoutCr(text.str()), withoutCr(server.read("out/text")));
  std::ostringstream html;
  email::MimeMultipart scratch(email::MimeMultipart::kRelated);
  MimeImageGenerator images(instance, scratch, zone, resources.store());
  report::render_report_html(html, instance, ReportHtmlMimeBody::styleBlock(resources.store()),
                             images, timeZoneValue(kEnvironmentZone));
  EXPECT_EQ(withoutCr(html.str()), withoutCr(server.read("out/html")));
}

// The greeting and HELO of a peer that accepts.
const std::string kGreeting = "send 220 peer ready\\r\\n\nrecv\nsend 250 hello\\r\\n\nrecv\n";
// MAIL FROM and the data, after the RCPT TO replies.
const std::string kData =
    "send 354 go\\r\\n\ndata\nsend 250 queued\\r\\n\nrecv\n"
    "send 221 bye\\r\\n\nclose\n";
const std::string kOk = "send 250 ok\\r\\n\nrecv\n";
const std::string kNo = "send 550 no such user\\r\\n\nrecv\n";

TEST_F(ReportMailTest, OneRefusedRecipientAmongTwoStillSends) {
  EXPECT_TRUE(sendToPeer(kGreeting + kOk + kOk + kNo + kData, {"a@x", "b@x"}));
  const std::vector<Incident> told = {{1, "Sending report number 3 to a@x, b@x..."},
                                      {1, "Report number 3 sent to a@x, b@x"}};
  EXPECT_EQ(told, incidents);
  ASSERT_EQ(1u, log.lines.size());
  EXPECT_TRUE(log.lines[0].starts_with("Delivery not accepted for destination <b@x>"))
      << log.lines[0];
  EXPECT_NE(std::string::npos, received.find("Subject: Tavrel report - Weekly\r\n"));
}

TEST_F(ReportMailTest, AllRecipientsRefused) {
  EXPECT_FALSE(sendToPeer(kGreeting + kOk + kNo + kNo, {"a@x", "b@x"}));
  EXPECT_EQ(notSent("a@x, b@x"), incidents);
  ASSERT_EQ(4u, log.lines.size());
  EXPECT_TRUE(log.lines[2].ends_with("accepted none of the destinations, aborting"))
      << log.lines[2];
  EXPECT_EQ(kSendFailed, log.lines[3]);
}

TEST_F(ReportMailTest, ServerThatNeverGreets) {
  EXPECT_FALSE(sendToPeer("close\n", {"a@x"}));
  EXPECT_EQ(notSent("a@x"), incidents);
  ASSERT_EQ(3u, log.lines.size());
  EXPECT_TRUE(log.lines[1].ends_with("greeted us with: ")) << log.lines[1];
  EXPECT_EQ(kSendFailed, log.lines[2]);
}

TEST_F(ReportMailTest, ServerThatClosesMidDialogue) {
  EXPECT_FALSE(sendToPeer(kGreeting + "close\n", {"a@x"}, 0));
  const std::vector<Incident> told = {{1, "Sending report to a@x..."},
                                      {4, "Report has not been send to a@x!"}};
  EXPECT_EQ(told, incidents);
  EXPECT_EQ("EHLO " + io::fully_qualified_host_name() + "\r\nMAIL FROM:<reports@example.org>\r\n",
            received);
  ASSERT_FALSE(log.lines.empty());
  EXPECT_TRUE(log.lines.front().starts_with("Bad response") ||
              log.lines.front().starts_with("SMTP error"))
      << log.lines.front();
  EXPECT_EQ(kSendFailed, log.lines.back());
}

TEST_F(ReportMailTest, ServerThatNeverAnswersTimesOut) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(sendToPeer("hang\n", {"a@x"}));
  // The test's 1 s time-out ended the wait, not the 120 s of the product.
  EXPECT_LT(std::chrono::steady_clock::now() - start, 60s);
  EXPECT_EQ(notSent("a@x"), incidents);
  EXPECT_EQ(kSendFailed, log.lines.back());
}

TEST_F(ReportMailTest, UnreachableServer) {
  // Nothing listens on port 1 of the loopback.
  EXPECT_FALSE(send("127.0.0.1:1", {"a@x"}, 3, 5s));
  EXPECT_EQ(notSent("a@x"), incidents);
  EXPECT_TRUE(log.lines.front().starts_with("SMTP connection to 127.0.0.1:1 lost: "))
      << log.lines.front();
}

TEST_F(ReportMailTest, ReportThatCannotBeReadIsNotSent) {
  fake::Item broken = fake::folder(schema::kFolderNode, "web01");
  broken.fail_contents = true;
  instance = fake::Instance({broken});
  EXPECT_FALSE(sendToPeer(kGreeting + kOk + kOk + "send 354 go\\r\\n\ndata\n", {"a@x"}));
  EXPECT_EQ(notSent("a@x"), incidents);
  ASSERT_EQ(2u, log.lines.size());
  EXPECT_NE(std::string::npos, log.lines[0].find(fake::kReadFailure)) << log.lines[0];
  EXPECT_EQ(kSendFailed, log.lines[1]);
}

TEST_F(ReportMailTest, ReportWithoutFoldersCarriesOnlyTheLogo) {
  instance = fake::Instance({});
  EXPECT_TRUE(sendToPeer(kGreeting + kOk + kOk + kData, {"a@x"}, 0));
  const std::vector<Incident> told = {{1, "Sending report to a@x..."}, {1, "Report sent to a@x"}};
  EXPECT_EQ(told, incidents);
  EXPECT_NE(std::string::npos, received.find("Content-Type: multipart/alternative;"));
  size_t ids = 0;
  for (size_t at = received.find("Content-ID: "); at != std::string::npos;
       at = received.find("Content-ID: ", at + 1)) {
    ++ids;
  }
  EXPECT_EQ(1u, ids);
  EXPECT_NE(std::string::npos, received.find("Content-ID: <report_logo>\r\n"));
}

// A line break in the report's name or in an address must not start a
// header of its own, in the mail or in the SMTP dialogue.
TEST_F(ReportMailTest, LineBreaksNeverStartAHeader) {
  instance.name_ = "Weekly\r\nBcc: evil@example.org";
  EXPECT_TRUE(sendToPeer(kGreeting + kOk + kOk + kData, {"a@x\r\nX-Evil: 1"}));
  EXPECT_NE(std::string::npos,
            received.find("\r\nSubject: Tavrel report - Weekly  Bcc: evil@example.org\r\n"));
  EXPECT_NE(std::string::npos, received.find("\r\nRCPT TO:<a@x  x-evil: 1>\r\n"));
  EXPECT_NE(std::string::npos, received.find("\r\nTo: <a@x  x-evil: 1>\r\n"));
  // The headers of the mail; the name may stand in the body as it likes.
  const size_t data = received.find("DATA\r\n");
  ASSERT_NE(std::string::npos, data);
  const std::string headers = received.substr(data, received.find("\r\n\r\n", data) - data);
  EXPECT_EQ(std::string::npos, headers.find("\nBcc:")) << headers;
  EXPECT_EQ(std::string::npos, headers.find("\nX-Evil:")) << headers;
  EXPECT_EQ(std::string::npos, received.find("\nx-evil:"));
}

TEST_F(ReportMailTest, NoAddressesNoMail) {
  EXPECT_FALSE(send("127.0.0.1:1", {}));
  EXPECT_TRUE(incidents.empty());
  EXPECT_TRUE(log.lines.empty());
}

}  // namespace
