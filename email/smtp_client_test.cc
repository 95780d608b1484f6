// The SMTP client: the server setting, and whole sends over loopback to
// scripted peers and to a real SMTP server (aiosmtpd) delivering into a
// Maildir.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/error.h"
#include "email/smtp_server.h"

namespace email {
namespace {

struct LogLine {
  std::string text;
  bool isError;
  bool operator==(const LogLine&) const = default;
};
std::ostream& operator<<(std::ostream& os, const LogLine& l) {
  return os << (l.isError ? "error: " : "trace: ") << l.text;
}

class SmtpClientTest : public ::testing::Test {
 protected:
  SmtpLog log = [this](const std::string& text, bool isError) { lines.push_back({text, isError}); };
  std::vector<LogLine> lines;
};

TEST_F(SmtpClientTest, ServerSetting) {
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

}  // namespace
}  // namespace email
