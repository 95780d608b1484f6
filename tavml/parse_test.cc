#include <gtest/gtest.h>

#include <string>

#include "base/error.h"
#include "tavml/conversion.h"

namespace tavml {
namespace {

// Writes each call as a token, so a parse reads as one string.
class Recorder : public TavmlConversion {
 public:
  void begin_bold() override { out += "[b]"; }
  void begin_italic() override { out += "[i]"; }
  void begin_underline() override { out += "[u]"; }
  void end_bold() override { out += "[/b]"; }
  void end_italic() override { out += "[/i]"; }
  void end_underline() override { out += "[/u]"; }
  void rule() override { out += "[hr]"; }
  void link(const std::string& url) override { out += "[link " + url + "]"; }
  void line_break() override { out += "[br]"; }
  void text(std::string_view run) override { out += "(" + std::string(run) + ")"; }

  std::string out;
};

std::string Calls(std::string_view text) {
  Recorder r;
  r.parse(text);
  return r.out;
}

// The fault text, then "|" and the calls made before the fault.
std::string Fault(std::string_view text) {
  Recorder r;
  try {
    r.parse(text);
  } catch (const error::EParseError& e) {
    return e.text() + "|" + r.out;
  }
  return "no fault|" + r.out;
}

TEST(TavmlParse, EmptyTextMakesNoCalls) { EXPECT_EQ("", Calls("")); }

TEST(TavmlParse, SpansRulesLinksAndText) {
  EXPECT_EQ("(a)[b](x)[i](y)[/i][u](z)[/u][/b](c)", Calls("a<b>x<i>y</i><u>z</u></b>c"));
  EXPECT_EQ("(a)[hr](b)", Calls("a<hr>b"));
  EXPECT_EQ("[link http://x/?a=1]", Calls("<link url=\"http://x/?a=1\">"));
  EXPECT_EQ("[link a\"b]", Calls("<link url='a\"b'>"));
  EXPECT_EQ("[link ]", Calls("<link url=''>"));
  // A '>' is plain text.
  EXPECT_EQ("(a > b)", Calls("a > b"));
}

TEST(TavmlParse, BlanksBeforeCloseAndRoundTheAttribute) {
  EXPECT_EQ("[hr]", Calls("<hr >"));
  EXPECT_EQ("[b](x)[/b]", Calls("<b >x</b\t>"));
  EXPECT_EQ("[link u]", Calls("<link \n url \r= 'u' >"));
}

TEST(TavmlParse, LineEnds) {
  EXPECT_EQ("(a)[br](b)", Calls("a\nb"));
  // A carriage return ends a run and is dropped without a line break.
  EXPECT_EQ("(a)(b)", Calls("a\rb"));
  EXPECT_EQ("(a)[br][br]", Calls("a\r\n\r\n"));
}

TEST(TavmlParse, BytesBeyondAsciiAreText) {
  EXPECT_EQ("(\xe4\xf6\x01)", Calls("\xe4\xf6\x01"));
  EXPECT_EQ(std::string("(a\0b)", 5), Calls(std::string("a\0b", 3)));
}

TEST(TavmlParse, UnrecognizedTags) {
  EXPECT_EQ("Unrecognized tag: |", Fault("< b>"));
  EXPECT_EQ("Unrecognized tag: |", Fault("<"));
  EXPECT_EQ("Unrecognized tag: B|", Fault("<B>"));
  EXPECT_EQ("Unrecognized tag: br|(x)", Fault("x<br>"));
  EXPECT_EQ("Unrecognized tag: |", Fault("<1>"));
  // The letters run on: a tag name needs no blank to end it.
  EXPECT_EQ("Unrecognized tag: linkurl|", Fault("<linkurl='u'>"));
}

TEST(TavmlParse, MismatchedTags) {
  EXPECT_EQ("Mismatched tags|[b][i]", Fault("<b><i></b></i>"));
  EXPECT_EQ("Mismatched tags|", Fault("</hr>"));
  EXPECT_EQ("Mismatched tags|", Fault("</b>"));
  EXPECT_EQ("Mismatched tags|[b]", Fault("<b></>"));
  EXPECT_EQ("Mismatched tags|[b]", Fault("<b></B>"));
}

TEST(TavmlParse, UnterminatedSpansNameTheInnermost) {
  EXPECT_EQ("Unterminated b-tag|(x)[b]", Fault("x<b>"));
  EXPECT_EQ("Unterminated u-tag|[b][i][/i][u]", Fault("<b><i></i><u>"));
}

TEST(TavmlParse, LinkAttributeFaults) {
  EXPECT_EQ("Unrecognized attribute to <link>: href|", Fault("<link href=\"x\">"));
  EXPECT_EQ("Unrecognized attribute to <link>: |", Fault("<link>"));
  EXPECT_EQ("Unrecognized attribute to <link>: URL|", Fault("<link URL='x'>"));
  EXPECT_EQ("Expected = after url|", Fault("<link url>"));
  EXPECT_EQ("Expected = after url|", Fault("<link url"));
  EXPECT_EQ("Expected \" after =|", Fault("<link url=x>"));
  EXPECT_EQ("Expected \" after =|", Fault("<link url= "));
}

TEST(TavmlParse, UnclosedQuoteFaultsAfterTheLinkWasCalled) {
  EXPECT_EQ("Improperly quoted attribute|[link abc>rest]", Fault("<link url=\"abc>rest"));
  EXPECT_EQ("Improperly quoted attribute|[link ab\"]", Fault("<link url='ab\""));
}

TEST(TavmlParse, ImproperlyTerminatedTags) {
  EXPECT_EQ("Improperly terminated tag|[b]", Fault("<b"));
  EXPECT_EQ("Improperly terminated tag|[b]", Fault("<b x>"));
  EXPECT_EQ("Improperly terminated tag|[hr]", Fault("<hr/>"));
  EXPECT_EQ("Improperly terminated tag|[link u]", Fault("<link url='u' target='t'>"));
  EXPECT_EQ("Improperly terminated tag|[b][/b]", Fault("<b></b"));
}

TEST(TavmlParse, AmpersandIsRefusedOutsideTags) {
  EXPECT_EQ("& (ampersand) not allowed|(a )", Fault("a &amp; b"));
  // Inside a link's URL it is part of the attribute.
  EXPECT_EQ("[link a?x=1&y=2]", Calls("<link url='a?x=1&y=2'>"));
}

}  // namespace
}  // namespace tavml
