// The content encoders: exact output on the line rules, identical output for
// bulk and per-character writes, and decoding back to the input.
#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

#include "base/error.h"
#include "email/encoding.h"
#include "email/test_support.h"

namespace email {
namespace {

using namespace std::string_literals;

// Encodes `input` with one write() per `chunk` bytes, or per character
// through put() when `chunk` is 0.
std::string encode(const ContentTransferEncoding& encoding, const std::string& input,
                   std::size_t chunk = 0) {
  std::ostringstream out;
  {
    auto buf = encoding.wrap(out);
    std::ostream stream(buf.get());
    for (std::size_t i = 0; i < input.size(); i += chunk == 0 ? 1 : chunk) {
      if (chunk == 0) {
        stream.put(input[i]);
      } else {
        stream.write(input.data() + i, std::min(chunk, input.size() - i));
      }
    }
    stream.flush();
  }
  return out.str();
}

std::string base64(const std::string& input, std::size_t chunk = 0) {
  return encode(base64_encoding(), input, chunk);
}
std::string quoted(const std::string& input, std::size_t chunk = 0) {
  return encode(quoted_printable_encoding(), input, chunk);
}

std::string randomBytes(std::size_t n, unsigned seed) {
  std::mt19937 gen(seed);
  std::string s(n, '\0');
  for (char& c : s) c = static_cast<char>(gen() & 0xff);
  return s;
}

// Text-like bytes: mostly letters, with blanks, tabs, line ends, "=" and
// 8-bit characters mixed in.
std::string randomText(std::size_t n, unsigned seed) {
  static const std::string kAlphabet = "abcdefghij   \t\t\n\n\r==.\xe9\xfc\x01~";
  std::mt19937 gen(seed);
  std::string s(n, '\0');
  for (char& c : s) c = kAlphabet[gen() % kAlphabet.size()];
  return s;
}

std::string base64Decode(const std::string& text) {
  static const std::string kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  uint32_t bits = 0;
  int count = 0;
  for (char c : text) {
    const auto pos = kAlphabet.find(c);
    if (pos == std::string::npos) continue;  // line ends and padding
    bits = bits << 6 | static_cast<uint32_t>(pos);
    if (++count % 4 == 0) {
      for (int shift = 16; shift >= 0; shift -= 8) out += static_cast<char>(bits >> shift & 0xff);
      bits = 0;
    }
  }
  if (count % 4 == 2) out += static_cast<char>(bits >> 4 & 0xff);
  if (count % 4 == 3) {
    out += static_cast<char>(bits >> 10 & 0xff);
    out += static_cast<char>(bits >> 2 & 0xff);
  }
  return out;
}

// Decodes quoted-printable text; CR LF becomes LF and soft breaks vanish.
std::string quotedDecode(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.compare(i, 3, "=\r\n") == 0) {
      i += 2;
    } else if (text[i] == '=') {
      out += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else if (text.compare(i, 2, "\r\n") == 0) {
      out += '\n';
      i += 1;
    } else {
      out += text[i];
    }
  }
  return out;
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2) {
    result.push_back(text.substr(start, end - start));
  }
  EXPECT_EQ(start, text.size()) << "text does not end in CR LF";
  return result;
}

// Pairs of input and expected output.
using Cases = std::vector<std::pair<std::string, std::string>>;

// Checks every case written a character at a time and in one piece.
void expectEncodings(std::string (*encoder)(const std::string&, std::size_t), const Cases& cases) {
  for (const auto& [input, expected] : cases) {
    EXPECT_EQ(expected, encoder(input, 0)) << ::testing::PrintToString(input);
    EXPECT_EQ(expected, encoder(input, 4096))
        << "in one piece: " << ::testing::PrintToString(input);
  }
}

TEST(Base64Streambuf, StandardVectors) {
  const Cases cases = {
      {"", ""},
      {"f", "Zg==\r\n"},
      {"fo", "Zm8=\r\n"},
      {"foo", "Zm9v\r\n"},
      {"foob", "Zm9vYg==\r\n\r\n"},
      {"fooba", "Zm9vYmE=\r\n\r\n"},
      {"foobar", "Zm9vYmFy\r\n"},
      {"\xff\xef\x00"s, "/+8A\r\n"},
  };
  expectEncodings(base64, cases);
}

TEST(Base64Streambuf, LineEnds) {
  const std::string line57(57, 'M');
  std::string full;
  for (int i = 0; i < 19; ++i) full += "TU1N";
  const Cases cases = {
      {line57, full + "\r\n"},
      // The 58th byte starts a line that only padding ends: no empty line.
      {line57 + "M", full + "\r\nTQ==\r\n"},
      {line57 + "MM", full + "\r\nTU0=\r\n"},
      // A full group before the padding leaves the line open: an empty line.
      {line57 + "MMMM", full + "\r\nTU1NTQ==\r\n\r\n"},
      {line57 + line57, full + "\r\n" + full + "\r\n"},
      // CR and LF are data like any other byte.
      {"\r\n", "DQo=\r\n"},
  };
  expectEncodings(base64, cases);
}

TEST(Base64Streambuf, BulkAndPerCharacterAgreeAndDecode) {
  for (std::size_t n : {0, 1, 2, 3, 56, 57, 58, 59, 60, 61, 1000, 70000, 200003}) {
    const std::string data = randomBytes(n, static_cast<unsigned>(n));
    const std::string expected = base64(data);
    for (std::size_t chunk : {1, 2, 5, 57, 4096, 1 << 20}) {
      ASSERT_EQ(expected, base64(data, chunk)) << n << " bytes in writes of " << chunk;
    }
    EXPECT_EQ(data, base64Decode(expected)) << n;
    const auto all = lines(expected);
    for (std::size_t i = 0; i + 1 < all.size(); ++i) {
      // Every line but the last two (padding, empty) is exactly full.
      if (i + 2 < all.size()) {
        EXPECT_EQ(76u, all[i].size()) << "line " << i;
      }
      EXPECT_LE(all[i].size(), 76u);
    }
  }
}

TEST(QuotingStreambuf, CharacterClasses) {
  const Cases cases = {
      {"", ""},
      {"a=b", "a=3Db=\r\n"},
      {"caf\xe9 \xfc", "caf=E9 =FC=\r\n"},
      {"!<>~", "!<>~=\r\n"},
      {"\x00\x01\x7f\xff"s, "=00=01=7F=FF=\r\n"},
      {"a  \tb", "a  \tb=\r\n"},
  };
  expectEncodings(quoted, cases);
}

TEST(QuotingStreambuf, LineEndsAndTrailingBlanks) {
  const Cases cases = {
      {"a\nb\n", "a\r\nb\r\n"},
      {"a\r\nb\r\n", "a\r\nb\r\n"},
      {"a\rb\n", "ab\r\n"},
      {"a \n", "a=20\r\n"},
      {"a \t\n", "a =09\r\n"},
      {"\n\n", "\r\n\r\n"},
      // A blank at the very end is written in hex and the line closed softly.
      {"a ", "a=20=\r\n"},
  };
  expectEncodings(quoted, cases);
}

TEST(QuotingStreambuf, LineLimit) {
  const std::string x75(75, 'x');
  const Cases cases = {
      {x75 + "\n", x75 + "\r\n"},
      {x75 + "y\n", x75 + "=\r\ny\r\n"},
      // A hex piece that would pass the limit moves to the next line whole.
      {std::string(72, 'x') + "=\n", std::string(72, 'x') + "=3D\r\n"},
      {std::string(73, 'x') + "=\n", std::string(73, 'x') + "=\r\n=3D\r\n"},
      // A held blank before the limit goes behind the soft break as it is.
      {x75 + " y\n", x75 + "=\r\n y\r\n"},
      // ... and in hex before a line end, where it no longer fits either.
      {std::string(73, 'x') + " \n", std::string(73, 'x') + "=\r\n=20\r\n"},
  };
  expectEncodings(quoted, cases);
}

TEST(QuotingStreambuf, BulkAndPerCharacterAgreeAndDecode) {
  for (std::size_t n : {1, 2, 80, 1000, 70000, 300001}) {
    const std::string text = randomText(n, static_cast<unsigned>(n));
    const std::string expected = quoted(text);
    for (std::size_t chunk : {1, 3, 76, 1023, 1025, 1 << 20}) {
      ASSERT_EQ(expected, quoted(text, chunk)) << n << " bytes in writes of " << chunk;
    }
    std::string plain = text;
    std::erase(plain, '\r');
    EXPECT_EQ(plain, quotedDecode(expected)) << n;
    for (const auto& line : lines(expected)) {
      ASSERT_LE(line.size(), 76u);
      if (!line.empty()) {
        ASSERT_TRUE(line.back() != ' ' && line.back() != '\t') << line;
      }
    }
  }
  const std::string binary = randomBytes(100000, 11);
  EXPECT_EQ(quoted(binary), quoted(binary, 4096));
}

// A refused write raises from finish(), and from the writes themselves
// through a stream with badbit exceptions, as bodies use it.
TEST(EncoderStreambuf, RefusedOutputRaises) {
  for (const ContentTransferEncoding* encoding :
       {&base64_encoding(), &quoted_printable_encoding()}) {
    RefusingBuf refusing;
    std::ostream target(&refusing);
    auto buf = encoding->wrap(target);
    std::ostream stream(buf.get());
    stream << "some text";
    EXPECT_THROW(buf->finish(), error::ESystemError) << encoding->name();
    buf->finish();  // a second call does nothing
    stream.exceptions(std::ios::badbit);
    const std::string big(200000, 'a');
    EXPECT_THROW(stream.write(big.data(), static_cast<std::streamsize>(big.size())),
                 error::ESystemError);
  }
}

}  // namespace
}  // namespace email
