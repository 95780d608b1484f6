// Reply reading, dot-stuffing and the SMTP dialogue, over scripted replies
// in memory; the dialogue's output is compared byte for byte.
#include "email/smtp_dialogue.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/error.h"
#include "email/encoding.h"
#include "email/message.h"
#include "email/smtp_escape_streambuf.h"
#include "email/test_support.h"

namespace email {
namespace {

// Raises at the first read.
class FailingBuf : public std::streambuf {
 protected:
  int_type underflow() override { throw error::ESystemError("connection reset"); }
};

using ReadReplyTest = SmtpTest;

TEST_F(ReadReplyTest, CodesAndJoinedLines) {
  std::istringstream in("250 OK\r\n220-first\r\n220 second\n354 go");
  std::string text = "old";
  EXPECT_EQ(250, readReply(in, log, &text));
  EXPECT_EQ("250 OK", text);
  EXPECT_EQ(220, readReply(in, log, &text));
  EXPECT_EQ("220-first; 220 second", text);
  EXPECT_EQ(354, readReply(in, log));
  EXPECT_TRUE(lines.empty());
}

TEST_F(ReadReplyTest, BadResponses) {
  std::istringstream in("250\r\n");
  std::string text;
  EXPECT_EQ(-1, readReply(in, log, &text));
  EXPECT_EQ("250", text);
  EXPECT_EQ(-1, readReply(in, log, &text));  // the end of the stream
  EXPECT_EQ("", text);
  std::istringstream odd("\"\\\x01\r\n");
  EXPECT_EQ(-1, readReply(odd, log));
  std::istringstream tab("2\tx\ry\r\n");
  EXPECT_EQ(-1, readReply(tab, log));
  std::istringstream words("abc def\r\n");
  EXPECT_EQ(-1, readReply(words, log));
  FailingBuf failing;
  std::istream broken(&failing);
  EXPECT_EQ(-1, readReply(broken, log));
  const std::vector<LogLine> expected = {
      {"Bad response: \"250\"", true},
      {"Bad response: \"\"", true},
      {"Bad response: \"\\\"\\\\\\001\"", true},
      {"SMTP error: Reply code is no number in \"2\\tx\\ry\"", true},
      {"SMTP error: Reply code is no number in \"abc def\"", true},
      {"SMTP error: connection reset", true},
  };
  EXPECT_EQ(expected, lines);
}

TEST_F(ReadReplyTest, EndlessRepliesAreBounded) {
  std::string script = "250-" + std::string(10000, 'x') + "\r\n";
  for (int i = 0; i < 20000; ++i) script += "250-more\r\n";
  script += "250 end\r\n";
  std::istringstream in(script);
  std::string text;
  EXPECT_EQ(250, readReply(in, log, &text));
  EXPECT_EQ("250-" + std::string(kMaxReplyLine - 4, 'x'), text.substr(0, kMaxReplyLine));
  EXPECT_LE(text.size(), kMaxReplyText + kMaxReplyLine + 2);
}

TEST(SmtpEscapeStreambuf, DotsAtLineStartsAreDoubled) {
  for (bool perCharacter : {true, false}) {
    EXPECT_EQ("..a\r\nb.c\r\n..\r\n...x\r\n", stuffed(".a\r\nb.c\r\n.\r\n..x\r\n", perCharacter));
    EXPECT_EQ("a.\r\n", stuffed("a.\r\n", perCharacter));
  }
  std::mt19937 gen(5);
  std::string text(100000, 'a');
  for (char& c : text) c = ".\n\ra"[gen() % 4];
  EXPECT_EQ(stuffed(text, true), stuffed(text));
  // Bulk writes that end inside a line carry the line state over.
  std::ostringstream out;
  SmtpEscapeStreambuf escape(out);
  std::ostream data(&escape);
  data << "ab\r\n"
       << ".c"
       << "."
       << "\r\n"
       << ".";
  EXPECT_EQ("ab\r\n..c.\r\n..", out.str());
}

using DialogueTest = SmtpTest;

TEST_F(DialogueTest, RefusedRecipientAmongTwoStillDelivers) {
  auto m = makeMessage({"A@Example.org", "b@example.org"});
  ScriptBuf script(
      "220-mail.example ESMTP\r\n220 ready\r\n250 hello\r\n250 sender ok\r\n250 ok\r\n"
      "550 no such user\r\n354 go ahead\r\n250 queued as 17\r\n221 bye\r\n");
  std::iostream stream(&script);
  EXPECT_TRUE(smtp_dialogue(stream, "mail.example:2525", "Tavrel.Example", *m, log));
  EXPECT_EQ(
      "EHLO Tavrel.Example\r\nMAIL FROM:<sender@example.org>\r\nRCPT TO:<a@example.org>\r\n"
      "RCPT TO:<b@example.org>\r\nDATA\r\n" +
          dataOf(*m) + "QUIT\r\n",
      script.out);
  EXPECT_NE(std::string::npos, script.out.find("\r\n..hidden line\r\n"));
  const std::vector<LogLine> expected = {
      {"Delivery not accepted for destination <b@example.org>, \"mail.example:2525\" said: "
       "550 no such user",
       true},
      {"Mail transaction completed successfully.", false},
  };
  EXPECT_EQ(expected, lines);
}

TEST_F(DialogueTest, QuitRefusalIsNoFailure) {
  auto m = makeMessage({"a@x"});
  ScriptBuf script("220 hi\r\n250 a\r\n250 b\r\n250 c\r\n354 d\r\n250 e\r\n500 what\r\n");
  std::iostream stream(&script);
  EXPECT_TRUE(smtp_dialogue(stream, "srv", "h", *m, log));
  const std::vector<LogLine> expected = {
      {"SMTP server failed QUIT, but that's most likely not a problem. \"srv\" said: 250 e", false},
      {"Mail transaction completed successfully.", false},
  };
  EXPECT_EQ(expected, lines);
}

// Each refusal stops the dialogue at once with its report, and a QUIT.
TEST_F(DialogueTest, RefusalsStopWithTheirReport) {
  struct Case {
    std::string replies, lastSent, report;
  };
  const std::vector<Case> cases = {
      {"554-no\r\n554 go away\r\n", "", "\"srv\" greeted us with: 554-no; 554 go away"},
      {"", "", "\"srv\" greeted us with: "},
      {"220 hi\r\n421 busy\r\n", "EHLO h\r\n",
       "We did send \"EHLO h\", but \"srv\" said: 421 busy"},
      {"220 hi\r\n502 what\r\n501 bad\r\n", "EHLO h\r\nHELO h\r\n",
       "We did send \"HELO h\", but \"srv\" said: 501 bad"},
      {"220 hi\r\n250 a\r\n553 who\r\n", "MAIL FROM:<sender@example.org>\r\n",
       "Delivery not accepted from sender <sender@example.org>, \"srv\" said: 553 who"},
      {"220 hi\r\n250 a\r\n250 b\r\n550 x\r\n550 y\r\n", "RCPT TO:<b@x>\r\n",
       "Mail server \"srv\" accepted none of the destinations, aborting"},
      {"220 hi\r\n250 a\r\n250 b\r\n250 c\r\n250 d\r\n451 later\r\n", "DATA\r\n",
       "SMTP server not ready for data, \"srv\" said: 451 later"},
      {"220 hi\r\n250 a\r\n250 b\r\n250 c\r\n250 d\r\n354 go\r\n552 too big\r\n", "\r\n.\r\n",
       "SMTP server didn't accept data, \"srv\" said: 552 too big"},
      {"220 hi\r\n250 a\r\n250 b\r\n250 c\r\n250 d\r\n354 go\r\n", "\r\n.\r\n",
       "SMTP server didn't accept data, \"srv\" said: "},
  };
  for (const auto& c : cases) {
    lines.clear();
    auto m = makeMessage({"a@x", "b@x"});
    ScriptBuf script(c.replies);
    std::iostream stream(&script);
    EXPECT_FALSE(smtp_dialogue(stream, "srv", "h", *m, log)) << c.report;
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ((LogLine{c.report, true}), lines.back());
    EXPECT_TRUE(script.out.ends_with(c.lastSent + "QUIT\r\n")) << script.out;
  }
}

TEST_F(DialogueTest, LineBreakInHeloNameCannotStartACommand) {
  auto m = makeMessage({"a@x"});
  ScriptBuf script("220 hi\r\n501 no\r\n");
  std::iostream stream(&script);
  EXPECT_FALSE(smtp_dialogue(stream, "srv", "h\r\nRSET", *m, log));
  EXPECT_EQ("EHLO h  RSET\r\nHELO h  RSET\r\nQUIT\r\n", script.out);
}

}  // namespace
}  // namespace email
