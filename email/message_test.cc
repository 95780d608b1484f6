// The MIME message tree, compared byte for byte with the expected mail.
#include "email/message.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "base/error.h"
#include "email/encoding.h"
#include "email/mime_multipart.h"
#include "email/test_support.h"

namespace email {
namespace {

const std::string kPreamble =
    "Your email program does not understand MIME format.\r\n"
    "You can edit your Tavrel alert path to use plain-text only,\r\n"
    "or your could upgrade your mail reader in order to read\r\n"
    "this mail.\r\n"
    "\r\n";
// The headers of a message whose body is a quoted-printable text.
const std::string kTextHeaders =
    "MIME-Version: 1.0\r\n"
    "Content-Type: text/plain;\r\n\tcharset=\"utf-8\"\r\n"
    "Content-Transfer-Encoding: quoted-printable\r\n";
// The Date and Message-ID that simple() fixes.
const std::string kStamp =
    "Date: Tue, 24 Nov 2026 04:59:00 +0100\r\n"
    "Message-ID: <1@x>\r\n";
const std::string kMailer =
    "X-Mailer: Tavrel Monitoring Server v.3.8.0 build 5153 on Windows NT (AMD-64)\r\n";

std::unique_ptr<Address> address(const std::string& a) { return std::make_unique<Address>(a); }

// Texts kept alive for the bodies that point into them.
const std::string kHello = "Hi = there\n";
const std::string kPlain = "plain\n";
const std::string kGif = "GIF";
const std::string kParagraph = "<p>\n";
const std::string kX = "x";

std::string render(Message& message) {
  std::ostringstream out;
  message.write(out);
  return out.str();
}

// From `from` to `to`, with `subject` and `body`.
Message& simple(Message& m, std::unique_ptr<MimeBody> body,
                std::unique_ptr<Address> from = address("f@x"), const std::string& to = "t@x",
                const std::string& subject = "S") {
  m.setFrom(std::move(from));
  m.addTo(address(to));
  m.setSubject(subject);
  m.setBody(std::move(body));
  m.setDate("Tue, 24 Nov 2026 04:59:00 +0100");
  m.setMessageId("<1@x>");
  return m;
}

TEST(Address, LowerCaseAddressKeepsNameCase) {
  Address a("Alice@Example.COM");
  EXPECT_EQ("<alice@example.com>", a.toString());
  EXPECT_EQ("alice@example.com", a.bare());
  a.setName("Alice Smith");
  EXPECT_EQ("Alice Smith <alice@example.com>", a.toString());
  EXPECT_EQ("alice@example.com", a.bare());
}

TEST(Message, SinglePartByteForByte) {
  Message m;
  simple(m, textLeaf(kHello), std::make_unique<Address>("Tavrel Reports", "Reports@Example.COM"),
         "Alice@Example.com", "Weekly report");
  m.addTo(std::make_unique<Address>("Bob", "bob@example.com"));
  m.setHeader("Report", "7");
  m.setHeader("Note", "a\nb\n");
  EXPECT_EQ("From: Tavrel Reports <reports@example.com>\r\n" + kMailer +
                "To: <alice@example.com>, Bob <bob@example.com>\r\n"
                "Subject: Weekly report\r\n" +
                kStamp + kTextHeaders +
                "X-Note: a\r\n\tb\r\n"
                "X-Report: 7\r\n"
                "\r\n"
                "Hi =3D there\r\n"
                "\r\n",
            render(m));
  EXPECT_EQ("reports@example.com", m.getFrom().bare());
  ASSERT_EQ(2u, m.getTo().size());
  EXPECT_EQ("bob@example.com", m.getTo()[1]->bare());
}

TEST(Message, ReplyToAndHeaderFolding) {
  Message m;
  simple(m, textLeaf(kX));
  m.addReplyTo(address("r@x"));
  m.addReplyTo(std::make_unique<Address>("Sam", "s@x"));
  m.setHeader("A", "one\r\ntwo");
  m.setHeader("B", "");
  EXPECT_EQ("From: <f@x>\r\n" + kMailer +
                "To: <t@x>\r\n"
                "Reply-To: <r@x>, Sam <s@x>\r\n"
                "Subject: S\r\n" +
                kStamp + kTextHeaders +
                "X-A: one\r\n\ttwo\r\n"
                "X-B: \r\n"
                "\r\n"
                "x=\r\n"
                "\r\n",
            render(m));
}

TEST(Message, NestedMultipartsNumberedInHeaderOrderWithPartsAddedWhileWriting) {
  auto alternative = std::make_unique<MimeMultipart>(MimeMultipart::kAlternative);
  auto related = std::make_unique<MimeMultipart>(MimeMultipart::kRelated);
  alternative->addPart(textLeaf(kPlain));
  alternative->addPart(std::make_unique<HtmlWithPicture>(*related, kParagraph, kGif, "image/gif"));
  related->addPart(std::move(alternative));
  auto mixed = std::make_unique<MimeMultipart>(MimeMultipart::kMixed);
  mixed->addPart(std::move(related));
  mixed->addPart(textLeaf(kX));

  Message m;
  simple(m, std::move(mixed));
  const std::string text = "Content-Type: text/plain;\r\n\tcharset=\"utf-8\"\r\n";
  const std::string qp = "Content-Transfer-Encoding: quoted-printable\r\n";
  const std::string seven = "Content-Transfer-Encoding: 7bit\r\n";
  EXPECT_EQ("From: <f@x>\r\n" + kMailer + "To: <t@x>\r\nSubject: S\r\n" + kStamp +
                "MIME-Version: 1.0\r\n" +
                "Content-Type: multipart/mixed;\r\n\tboundary=\"---------_=_1.2\"\r\n" + seven +
                "\r\n" + kPreamble +  //
                "-----------_=_1.2\r\n" +
                "Content-Type: multipart/related;\r\n\ttype=\"multipart/alternative\";\r\n"
                "\tboundary=\"---------_=_1.3\"\r\n" +
                seven + "\r\n" + kPreamble +  //
                "-----------_=_1.3\r\n" +
                "Content-Type: multipart/alternative;\r\n\tboundary=\"---------_=_1.4\"\r\n" +
                seven + "\r\n" + kPreamble +  //
                "-----------_=_1.4\r\n" + text + qp +
                "Content-Disposition: attachment;\r\n\tfilename=\"a.txt\"\r\n"
                "\r\nplain\r\n\r\n"
                "-----------_=_1.4\r\n"
                "Content-Type: text/html;\r\n\tcharset=\"utf-8\"\r\n" +
                qp + "\r\n<p>\r\n\r\n" + "-----------_=_1.4--\r\n\r\n" +  //
                "-----------_=_1.3\r\n"
                "Content-Type: image/gif\r\n"
                "Content-Transfer-Encoding: base64\r\n"
                "Content-Disposition: attachment;\r\n\tfilename=\"logo.gif\"\r\n"
                "Content-ID: <logo>\r\n"
                "\r\nR0lG\r\n\r\n"
                "-----------_=_1.3--\r\n\r\n" +  //
                "-----------_=_1.2\r\n" +
                text + qp +
                "Content-Disposition: attachment;\r\n\tfilename=\"a.txt\"\r\n"
                "\r\nx=\r\n\r\n"
                "-----------_=_1.2--\r\n"
                "\r\n",
            render(m));
}

TEST(Message, EveryMessageNumbersFromTheSameStart) {
  for (int round = 0; round < 2; ++round) {
    Message m;
    m.setFrom(address("f@x"));
    m.setBody(std::make_unique<MimeMultipart>(MimeMultipart::kRelated));
    EXPECT_NE(std::string::npos, render(m).find("boundary=\"---------_=_1.2\"\r\n"));
  }
  MimeMultipart other(7);
  int counter = 1;
  EXPECT_EQ("multipart/xxx", other.contentType("1", counter));
  EXPECT_EQ(2, counter);
}

// A CR or LF in subject, names, addresses or header names must never start
// a header line of its own.
TEST(Message, LineBreaksInHeaderTextsBecomeBlanks) {
  Message m;
  simple(m, textLeaf(kX), std::make_unique<Address>("Eve\nX-Evil: 1", "f@x"), "t@x\r\nBcc: <b@x>",
         "Hi\r\nBcc: evil@x");
  m.setHeader("A\nB", "v\n\r");
  EXPECT_EQ("From: \"Eve X-Evil: 1\" <f@x>\r\n" + kMailer +
                "To: <t@x  bcc: <b@x>>\r\n"
                "Subject: Hi  Bcc: evil@x\r\n" +
                kStamp + kTextHeaders +
                "X-A B: v\r\n"
                "\r\n"
                "x=\r\n"
                "\r\n",
            render(m));
  EXPECT_EQ("t@x  bcc: <b@x>", m.getTo()[0]->bare());
}

class PartialBody : public UnstructuredMimeBody {
 public:
  PartialBody() : UnstructuredMimeBody("text/plain", quoted_printable_encoding()) {}

 protected:
  void writeContent(std::ostream& out) override {
    out << "partial";
    throw error::EParseError("content failed");
  }
};

TEST(Message, FailuresPassOut) {
  Message m;
  m.setFrom(address("f@x"));
  m.setBody(std::make_unique<PartialBody>());
  std::ostringstream out;
  EXPECT_THROW(m.write(out), error::EParseError);

  Message refused;
  refused.setFrom(address("f@x"));
  refused.setBody(textLeaf(kHello));
  RefusingBuf buf;
  std::ostream target(&buf);
  EXPECT_THROW(refused.write(target), error::ESystemError);
}

}  // namespace
}  // namespace email
