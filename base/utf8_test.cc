#include "base/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace {

TEST(Utf8Test, TellsValidSequencesFromOtherBytes) {
  EXPECT_TRUE(text::is_valid_utf8(""));
  EXPECT_TRUE(text::is_valid_utf8("plain"));
  EXPECT_TRUE(text::is_valid_utf8("\xC3\x86r\xC3\xB8 \xE2\x9C\x93 \xE6\x97\xA5\xE6\x9C\xAC"));
  EXPECT_TRUE(text::is_valid_utf8("\xF0\x9F\x98\x80"));   // U+1F600
  EXPECT_TRUE(text::is_valid_utf8("\xF4\x8F\xBF\xBF"));   // U+10FFFF
  EXPECT_FALSE(text::is_valid_utf8("\xC6r\xF8"));         // ISO-8859-1
  EXPECT_FALSE(text::is_valid_utf8("\xC0\x80"));          // overlong NUL
  EXPECT_FALSE(text::is_valid_utf8("\xE0\x80\xAF"));      // overlong "/"
  EXPECT_FALSE(text::is_valid_utf8("\xF0\x80\x80\xAF"));  // overlong, four bytes
  EXPECT_FALSE(text::is_valid_utf8("\xED\xA0\x80"));      // surrogate
  EXPECT_FALSE(text::is_valid_utf8("\xF4\x90\x80\x80"));  // above U+10FFFF
  EXPECT_FALSE(text::is_valid_utf8("\xF5\x80\x80\x80"));
  EXPECT_FALSE(text::is_valid_utf8("\xE2\x9C"));  // cut short
  EXPECT_FALSE(text::is_valid_utf8("\x80"));      // stray continuation
}

TEST(Utf8Test, ReadsWhatIsNoUtf8AsIso88591) {
  EXPECT_EQ(text::to_utf8("\xC6r\xF8"), "\xC3\x86r\xC3\xB8");
  EXPECT_EQ(text::to_utf8("\xC3\xB8 and \xF8"), "\xC3\xB8 and \xC3\xB8");
  EXPECT_EQ(text::to_utf8("\xE2\x9C"), "\xC3\xA2\xC2\x9C");
  EXPECT_EQ(text::to_utf8("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xC2\x80");
  EXPECT_TRUE(text::is_valid_utf8(text::to_utf8(std::string_view("\xFF\xFE\x00\x80\xC0", 5))));
}

std::string through_streambuf(const std::string& bytes, std::mt19937& random, bool sync_between) {
  std::stringbuf target;
  {
    text::Utf8Streambuf utf8(target);
    std::ostream out(&utf8);
    std::uniform_int_distribution<size_t> chunk(0, 9);
    for (size_t i = 0; i < bytes.size();) {
      const size_t n = std::min(chunk(random), bytes.size() - i);
      if (n == 1) {
        out.put(bytes[i]);
      } else {
        out.write(bytes.data() + i, static_cast<std::streamsize>(n));
      }
      if (sync_between) out.flush();
      i += n;
    }
    EXPECT_TRUE(utf8.finish());
  }
  return target.str();
}

// Whatever the pieces a text is written in, and however often it is flushed,
// the result is the text converted at once.
TEST(Utf8Test, StreambufConvertsAsAWholeWhateverThePieces) {
  std::mt19937 random(7);
  const std::string samples[] = {
      "\xC3\x86r\xC3\xB8-S\xC3\xB8nderborg \xE2\x9C\x93 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80",
      "\xC6r\xF8 \xE2\x9C \xF0\x9F\x98",  // ISO-8859-1 and sequences cut short
  };
  for (const std::string& sample : samples) {
    for (int round = 0; round < 50; ++round) {
      EXPECT_EQ(through_streambuf(sample, random, round % 2 == 0), text::to_utf8(sample));
    }
  }
  std::uniform_int_distribution<int> any_byte(0, 255);
  for (int round = 0; round < 200; ++round) {
    std::string bytes(64 + round * 37, '\0');
    for (char& c : bytes) c = static_cast<char>(any_byte(random));
    EXPECT_EQ(through_streambuf(bytes, random, round % 3 == 0), text::to_utf8(bytes));
  }
}

TEST(Utf8Test, StreambufHandsOnAHeldTailOnlyAtTheEnd) {
  std::stringbuf target;
  text::Utf8Streambuf utf8(target);
  std::ostream out(&utf8);
  out << "a\xE2\x9C";
  out.flush();
  EXPECT_EQ(target.str(), "a");  // may still become a check mark
  out << "\x93";
  out.flush();
  EXPECT_EQ(target.str(), "a\xE2\x9C\x93");
  out << "\xE2";
  utf8.finish();
  EXPECT_EQ(target.str(), "a\xE2\x9C\x93\xC3\xA2");
}

}  // namespace
