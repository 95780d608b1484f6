// One send to a real SMTP server (aiosmtpd, run by the system's Python)
// that delivers into a Maildir; Python's email package parses the mail back
// and must find every header, part and byte as they were given.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include "email/encoding.h"
#include "email/mime_multipart.h"
#include "email/smtp_client.h"
#include "email/test_process.h"
#include "email/test_support.h"

namespace email {
namespace {

using namespace std::chrono_literals;

const std::string kText =
    "Availability 99.5 %\n"
    ".a line that starts with a dot\n"
    ".\n"
    "caf\xe9 = ok, trailing blank \n" +
    std::string(200, 'x') + "\n";
const std::string kHtml = "<p>Report</p>\n<img src=\"cid:logo\">\n";

std::string pictureBytes() {
  std::mt19937 gen(42);
  std::string bytes(3001, '\0');
  for (char& c : bytes) c = static_cast<char>(gen() & 0xff);
  return bytes;
}
const std::string kPicture = pictureBytes();

std::unique_ptr<Message> reportLikeMessage() {
  auto related = std::make_unique<MimeMultipart>(MimeMultipart::kRelated);
  auto alternative = std::make_unique<MimeMultipart>(MimeMultipart::kAlternative);
  alternative->addPart(textLeaf(kText));
  alternative->addPart(std::make_unique<HtmlWithPicture>(*related, kHtml, kPicture));
  related->addPart(std::move(alternative));
  auto m = std::make_unique<Message>();
  m->setFrom(std::make_unique<Address>("Reports", "Sender@Example.org"));
  m->addTo(std::make_unique<Address>("Alice@Example.org"));
  m->addTo(std::make_unique<Address>("Bob", "bob@example.org"));
  m->setSubject("Tavrel report - weekly");
  m->setBody(std::move(related));
  return m;
}

// Each case starts its own Maildir server.
class MaildirTest : public SmtpTest {
 protected:
  // A client of the server, with a 30 s time-out.
  SmtpClient client() {
    const int port = server.port();
    EXPECT_NE(0, port) << server.read("output");
    SmtpClient c("127.0.0.1:" + std::to_string(port), "tavrel.test", log);
    c.setTimeout(30s);
    return c;
  }

  BackgroundPython server{kTestData + "/maildir_server.py"};
};

TEST_F(MaildirTest, SendToRealServerAndParseBack) {
  SmtpClient client = this->client();
  auto m = reportLikeMessage();
  ASSERT_TRUE(client.send(*m)) << ::testing::PrintToString(lines);
  EXPECT_EQ((LogLine{"Mail transaction completed successfully.", false}), lines.back());

  ASSERT_TRUE(parse_maildir(server)) << server.read("parsed");
  const std::string preamble =
      "'Your email program does not understand MIME format.\\n"
      "You can edit your Tavrel alert path to use plain-text only,\\n"
      "or your could upgrade your mail reader in order to read\\n"
      "this mail.\\n'";
  EXPECT_EQ(
      "From: Reports <sender@example.org>\n"
      "To: alice@example.org, Bob <bob@example.org>\n"
      "Subject: Tavrel report - weekly\n"
      "X-Mailer: Tavrel Monitoring Server v.3.8.0 build 5153 on Windows NT (AMD-64)\n"
      "X-RcptTo: alice@example.org, bob@example.org\n"
      "X-MailFrom: sender@example.org\n"
      "long header lines 0\n"
      "Message-ID ok True\n"
      "defects 0\n"
      "multipart/related Content-Transfer-Encoding=7bit\n"
      "  preamble " +
          preamble +
          "\n"
          "  multipart/alternative Content-Transfer-Encoding=7bit\n"
          "    preamble " +
          preamble +
          "\n"
          "    text/plain Content-Transfer-Encoding=quoted-printable "
          "Content-Disposition=attachment; filename=\"a.txt\" charset=utf-8\n"
          "      'Availability 99.5 %\\n.a line that starts with a dot\\n.\\n"
          "caf\\xe9 = ok, trailing blank \\n" +
          std::string(200, 'x') +
          "\\n'\n"
          "    text/html Content-Transfer-Encoding=quoted-printable charset=utf-8\n"
          "      '<p>Report</p>\\n<img src=\"cid:logo\">\\n'\n"
          "  image/png Content-ID=<logo> Content-Transfer-Encoding=base64 "
          "Content-Disposition=attachment; filename=\"logo.gif\"\n",
      server.read("parsed"));
  EXPECT_EQ(kPicture, server.read("parts/part2"));
}

// Header texts that mail systems refuse or cut when written raw: a subject
// outside ASCII, one of 2,000 characters, 120 recipients. The strict parser
// must find no defect and no line over 78 characters, and decode the
// subject back to the text that was given.
TEST_F(MaildirTest, LongAndForeignHeaderTextsArriveWhole) {
  SmtpClient client = this->client();
  const std::string foreign = "\xC3\x86r\xC3\xB8 \xE2\x9C\x93 \xE6\x97\xA5\xE6\x9C\xAC";
  std::string longName;
  while (longName.size() < 2000) longName += "Availability of " + foreign + " nodes, ";
  for (const std::string& subject : {foreign, longName}) {
    auto m = reportLikeMessage();
    m->setSubject(subject);
    for (int i = 0; i < 120; ++i) {
      m->addTo(std::make_unique<Address>("r" + std::to_string(i) + "@example.org"));
    }
    ASSERT_TRUE(client.send(*m)) << ::testing::PrintToString(lines);
    ASSERT_TRUE(parse_maildir(server)) << server.read("parsed");
    EXPECT_EQ(subject, server.read("parts/subject"));
    const std::string parsed = server.read("parsed");
    EXPECT_NE(std::string::npos, parsed.find("long header lines 0\nMessage-ID ok True\n"))
        << parsed;
    std::filesystem::remove_all(server.folder() / "maildir" / "new");
    std::filesystem::create_directories(server.folder() / "maildir" / "new");
  }
}

}  // namespace
}  // namespace email
