#include <gtest/gtest.h>

#include <string>

#include "base/error.h"
#include "tavml/tavml.h"

namespace tavml {
namespace {

std::string Html(std::string_view text, const std::string& target = "") {
  std::string out;
  toHtml(out, text, target);
  return out;
}

std::string Text(std::string_view text) {
  std::string out;
  toText(out, text);
  return out;
}

TEST(TavmlHtml, EveryConstruct) {
  EXPECT_EQ("", Html(""));
  EXPECT_EQ("<b>a</b><i>b</i><u>c</u><hr>d<br>\ne", Html("<b>a</b><i>b</i><u>c</u><hr>d\r\ne"));
  EXPECT_EQ("x > y", Html("x > y"));
}

TEST(TavmlHtml, LinksQuoteTheHrefAndEscapeTheText) {
  EXPECT_EQ("<a href=\"http://h/\">http://h/</a>", Html("<link url=\"http://h/\">"));
  EXPECT_EQ("<a href=\"a&quot;b\">a&quot;b</a>", Html("<link url='a\"b'>"));
  EXPECT_EQ("<a href=\"a&#10;b\">a<BR>\nb</a>", Html("<link url='a\nb'>"));
  EXPECT_EQ("<a href=\"&lt;&amp;\">&lt;&amp;</a>", Html("<link url='<&'>"));
}

TEST(TavmlHtml, TargetAttributeStandsBeforeHref) {
  EXPECT_EQ("<a  target=\"_blank\"href=\"u\">u</a>", Html("<link url='u'>", "_blank"));
  EXPECT_EQ("<a  target=\"&quot;\"href=\"u\">u</a>", Html("<link url='u'>", "\""));
}

TEST(TavmlHtml, OutputBeforeAFaultStaysAndOldOutputIsKept) {
  std::string out = "kept:";
  try {
    toHtml(out, "<b>bold</b>&", "");
    FAIL() << "no fault";
  } catch (const error::EParseError& e) {
    EXPECT_EQ("& (ampersand) not allowed", e.text());
  }
  EXPECT_EQ("kept:<b>bold</b>", out);
}

TEST(TavmlText, SpansBecomeCapitals) {
  EXPECT_EQ("XYZ", Text("<b>x<i>y</i>z</b>"));
  EXPECT_EQ("aBc dEf gHi", Text("a<b>b</b>c d<i>e</i>f g<u>h</u>i"));
  // Only a to z change; other bytes stay.
  EXPECT_EQ("A1-\xe4", Text("<b>a1-\xe4</b>"));
  // Nesting closes back to lower case only when all spans are closed.
  EXPECT_EQ("ABc", Text("<b><i>a</i>b</b>c"));
}

TEST(TavmlText, RulesLinksAndLineEnds) {
  EXPECT_EQ("a\n" + std::string(72, '-') + "\nb", Text("a<hr>b"));
  EXPECT_EQ("see http://h/a\"b", Text("see <link url='http://h/a\"b'>"));
  // A link's URL is not capitalised inside a span.
  EXPECT_EQ("X http://h", Text("<b>x <link url='http://h'></b>"));
  EXPECT_EQ("a\nb\n", Text("a\r\nb\n"));
}

TEST(TavmlText, FaultKeepsWhatWasAppended) {
  std::string out;
  EXPECT_THROW(toText(out, "ok<i>fine"), error::EParseError);
  EXPECT_EQ("okFINE", out);
}

}  // namespace
}  // namespace tavml
