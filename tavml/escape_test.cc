#include "tavml/escape.h"

#include <gtest/gtest.h>

#include "tavml/dot_string.h"

namespace tavml {
namespace {

TEST(Escape, HtmlEscapeByteByByte) {
  EXPECT_EQ("", html_escape(""));
  EXPECT_EQ("a&lt;b&gt;c&amp;d&quot;e'f", html_escape("a<b>c&d\"e'f"));
  EXPECT_EQ("1<BR>\n2", html_escape("1\r\n2"));
  EXPECT_EQ("&#0;&#9;&#31; ~\x7f\xff", html_escape(std::string("\0\t\x1f ~\x7f\xff", 7)));
}

TEST(Escape, AttrEscapeKeepsLineEndsAsReferences) {
  EXPECT_EQ("a&#13;&#10;b", attr_escape("a\r\nb"));
  EXPECT_EQ("&lt;&gt;&amp;&quot;'&#27;\xe9", attr_escape("<>&\"'\x1b\xe9"));
}

TEST(Escape, QuotedWrapsTheAttributeForm) {
  EXPECT_EQ("\"\"", quoted(""));
  EXPECT_EQ("\"a&quot;&#10;\"", quoted("a\"\n"));
}

TEST(DotStringWidth, FillsCutsOrKeeps) {
  EXPECT_EQ("ab   ", dot_string_width("ab", 5));
  EXPECT_EQ("abcde", dot_string_width("abcde", 5));
  EXPECT_EQ("ab...", dot_string_width("abcdef", 5));
  EXPECT_EQ("...", dot_string_width("abcd", 3));
  EXPECT_EQ("", dot_string_width("", 0));
  EXPECT_EQ("   ", dot_string_width("", 3));
}

TEST(DotStringWidthDeathTest, ShortWidthWithACutIsFatal) {
  EXPECT_DEATH(dot_string_width("abc", 2),
               "Assertion failed: short length given to dot_string_width");
  EXPECT_DEATH(dot_string_width("", -1),
               "Assertion failed: short length given to dot_string_width");
  // No cut, no assertion.
  EXPECT_EQ("ab", dot_string_width("ab", 2));
}

}  // namespace
}  // namespace tavml
