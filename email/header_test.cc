// Header fields that real mail systems take: lines within 78 characters,
// text outside printable ASCII as encoded words, and a Date and Message-ID
// in every mail.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "email/encoded_words.h"
#include "email/message.h"
#include "email/message_identity.h"
#include "email/test_support.h"

namespace email {
namespace {

const std::string kBody = "Hi\n";

std::string headersOf(Message& m) {
  std::ostringstream out;
  m.write(out);
  const std::string mail = out.str();
  return mail.substr(0, mail.find("\r\n\r\n") + 2);
}

Message& withSubject(Message& m, const std::string& subject) {
  m.setFrom(std::make_unique<Address>("reports@example.org"));
  m.addTo(std::make_unique<Address>("a@example.org"));
  m.setSubject(subject);
  m.setBody(textLeaf(kBody));
  return m;
}

// The field `name` of `headers`, unfolded (CR LF before white space dropped).
std::string unfolded(const std::string& headers, const std::string& name) {
  const size_t start = headers.find(name + ": ");
  if (start == std::string::npos) return "<missing>";
  std::string field;
  for (size_t i = start + name.size() + 2; i < headers.size(); ++i) {
    if (headers.compare(i, 2, "\r\n") == 0) {
      if (i + 2 < headers.size() && (headers[i + 2] == ' ' || headers[i + 2] == '\t')) {
        ++i;
        continue;
      }
      break;
    }
    field += headers[i];
  }
  return field;
}

void expectShortLines(const std::string& headers) {
  std::istringstream lines(headers);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), kHeaderLineLimit + 1) << line;  // + the CR
    EXPECT_NE(line.find_first_not_of(" \t\r"), std::string::npos) << "a blank folded line";
  }
}

TEST(HeaderTest, SubjectOutsidePrintableAsciiGoesOutAsEncodedWords) {
  Message utf8;
  EXPECT_NE(std::string::npos,
            headersOf(withSubject(utf8, "\xC3\x86r\xC3\xB8 \xE2\x9C\x93 \xE6\x97\xA5\xE6\x9C\xAC"))
                .find("\r\nSubject: =?UTF-8?B?w4Zyw7gg4pyTIOaXpeacrA==?=\r\n"));
  Message latin1;
  EXPECT_NE(
      std::string::npos,
      headersOf(withSubject(latin1, "\xC6r\xF8")).find("\r\nSubject: =?ISO-8859-1?B?xnL4?=\r\n"));
  // Text that would read as an encoded word is encoded itself.
  EXPECT_EQ(encoded_words("=?x?="), std::vector<std::string>{"=?UTF-8?B?PT94Pz0=?="});
  Message lookalike;
  EXPECT_EQ(unfolded(headersOf(withSubject(lookalike, "a =?x?=")), "Subject"),
            "=?UTF-8?B?YSA9P3g/PQ==?=");
}

TEST(HeaderTest, EncodedWordsAreShortAndCutBetweenCharacters) {
  std::string name;
  for (int i = 0; i < 400; ++i) name += "\xC3\x86r\xC3\xB8 ";  // 2,400 bytes
  const auto words = encoded_words(name);
  size_t bytes = 0;
  for (const std::string& word : words) {
    EXPECT_LE(word.size(), 75u);
    EXPECT_EQ(word.rfind("=?UTF-8?B?", 0), 0u);
    bytes += (word.size() - 12) / 4 * 3 - std::count(word.begin(), word.end() - 2, '=') + 1;
  }
  EXPECT_EQ(bytes, name.size());
  // At most 30 bytes a word, and never a cut inside a character: "a" and
  // 14 times "Æ" (29 bytes), then the other 6.
  std::string cut = "a";
  for (int i = 0; i < 20; ++i) cut += "\xC3\x86";
  EXPECT_EQ(encoded_words(cut),
            (std::vector<std::string>{"=?UTF-8?B?YcOGw4bDhsOGw4bDhsOGw4bDhsOGw4bDhsOGw4Y=?=",
                                      "=?UTF-8?B?w4bDhsOGw4bDhsOG?="}));

  Message m;
  const std::string headers = headersOf(withSubject(m, name));
  expectShortLines(headers);
}

TEST(HeaderTest, LongFieldsFoldAtBlanksAndUnfoldToTheirText) {
  std::string subject;
  for (int i = 0; i < 300; ++i) subject += "word" + std::to_string(i) + " ";
  subject += "end";
  Message m;
  withSubject(m, subject);
  std::string to = "<a@example.org>";
  for (int i = 0; i < 120; ++i) {
    const std::string address = "recipient" + std::to_string(i) + "@example.org";
    m.addTo(std::make_unique<Address>(address));
    to += ", <" + address + ">";
  }
  m.setHeader("Note", std::string(100, 'n') + " short\nsecond line");
  const std::string headers = headersOf(m);
  expectShortLines(headers);
  EXPECT_EQ(unfolded(headers, "Subject"), subject);
  EXPECT_EQ(unfolded(headers, "To"), to);
  // A word too long for any line is encoded, so that it can be cut.
  EXPECT_EQ(unfolded(headers, "X-Note").substr(0, 10), "=?UTF-8?B?");
  EXPECT_NE(headers.find("\r\n\tsecond line\r\n"), std::string::npos);
}

TEST(HeaderTest, DisplayNamesAreQuotedOrEncodedAsNeeded) {
  Message m;
  withSubject(m, "S");
  m.addTo(std::make_unique<Address>("Ops Team", "ops@example.org"));
  m.addTo(std::make_unique<Address>("Smith, Jo \"JJ\"", "jo@example.org"));
  m.addTo(std::make_unique<Address>("S\xC3\xB8ren", "s@example.org"));
  EXPECT_EQ(unfolded(headersOf(m), "To"),
            "<a@example.org>, Ops Team <ops@example.org>, \"Smith, Jo \\\"JJ\\\"\" "
            "<jo@example.org>, =?UTF-8?B?U8O4cmVu?= <s@example.org>");
}

TEST(HeaderTest, EveryMailHasADateAndAnIdOfItsOwn) {
  std::set<std::string> ids;
  for (int i = 0; i < 100; ++i) {
    Message m;
    const std::string headers = headersOf(withSubject(m, "S"));
    EXPECT_TRUE(std::regex_match(unfolded(headers, "Date"),
                                 std::regex("(Mon|Tue|Wed|Thu|Fri|Sat|Sun), [0-3][0-9] "
                                            "(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) "
                                            "20[0-9][0-9] [0-2][0-9]:[0-5][0-9]:[0-6][0-9] "
                                            "[-+][01][0-9][0-5][0-9]")))
        << headers;
    const std::string id = unfolded(headers, "Message-ID");
    EXPECT_TRUE(std::regex_match(id, std::regex("<tavrel\\.[0-9a-f.]+@example\\.org>"))) << id;
    ids.insert(id);
  }
  EXPECT_EQ(ids.size(), 100u);
  EXPECT_EQ(mail_date(0).substr(0, 16), "Thu, 01 Jan 1970");  // TZ of the test is UTC or east
  EXPECT_EQ(message_id_domain("Reports@Mail.Example.ORG"), "mail.example.org");
  EXPECT_EQ(message_id_domain("no-domain"), "localhost");
  EXPECT_EQ(message_id_domain("a@[127.0.0.1]"), "localhost");
  EXPECT_EQ(message_id_domain("a@.example..org"), "localhost");
}

TEST(HeaderTest, TextBodiesGoOutAsUtf8AndPicturesWithoutCharset) {
  const std::string latin1 = "\xC6r\xF8\n";
  const std::string utf8 = "\xE2\x9C\x93\n";
  for (const std::string* text : {&latin1, &utf8}) {
    Message m;
    m.setFrom(std::make_unique<Address>("f@x"));
    m.setBody(textLeaf(*text));
    std::ostringstream out;
    m.write(out);
    EXPECT_NE(out.str().find("charset=\"utf-8\""), std::string::npos);
    EXPECT_NE(
        out.str().find(text == &latin1 ? "\r\n\r\n=C3=86r=C3=B8\r\n" : "\r\n\r\n=E2=9C=93\r\n"),
        std::string::npos)
        << out.str();
  }
}

}  // namespace
}  // namespace email
