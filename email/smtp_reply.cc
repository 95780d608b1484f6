#include "email/smtp_reply.h"

#include "base/error.h"

namespace email {
namespace {

// Reads up to and including the next line feed, or to the end of the
// stream, and gives the line without its trailing CRs and LFs. Characters
// past kMaxReplyLine are read and dropped.
std::string readLine(std::istream& stream) {
  std::streambuf* buf = stream.rdbuf();
  std::string line;
  for (;;) {
    const auto c = buf->sbumpc();
    if (std::streambuf::traits_type::eq_int_type(c, std::streambuf::traits_type::eof())) break;
    const char ch = std::streambuf::traits_type::to_char_type(c);
    if (ch == '\n') break;
    if (line.size() < kMaxReplyLine) line += ch;
  }
  while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.pop_back();
  return line;
}

int replyCode(const std::string& line) {
  int code = 0;
  for (int i = 0; i < 3; ++i) {
    if (line[i] < '0' || line[i] > '9') {
      throw error::EParseError("Reply code is no number in " + c_quoted(line));
    }
    code = code * 10 + (line[i] - '0');
  }
  return code;
}

int readLines(std::istream& stream, const SmtpLog& log, std::string* text) {
  for (;;) {
    const std::string line = readLine(stream);
    if (text != nullptr && text->size() < kMaxReplyText) {
      if (!text->empty()) *text += "; ";
      *text += line;
    }
    if (line.size() < 4) {
      log("Bad response: " + c_quoted(line), true);
      return -1;
    }
    if (line[3] != '-') return replyCode(line);
  }
}

}  // namespace

int readReply(std::istream& stream, const SmtpLog& log, std::string* text) {
  if (text != nullptr) text->clear();
  try {
    return readLines(stream, log, text);
  } catch (const error::Exception& e) {
    log("SMTP error: " + e.text(), true);
    return -1;
  }
}

std::string c_quoted(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
          // Three octal digits, which no following character can extend.
          const auto code = static_cast<unsigned char>(c);
          out += '\\';
          for (int shift = 6; shift >= 0; shift -= 3)
            out += static_cast<char>('0' + (code >> shift & 7));
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

}  // namespace email
