// Reading the replies of an SMTP server.
#pragma once

#include <functional>
#include <istream>
#include <string>

namespace email {

// Where the SMTP client tells what happens: a text, and whether it is an
// error (else it is for tracing).
using SmtpLog = std::function<void(const std::string& text, bool isError)>;

// Reads one reply, of one or more lines, from `stream`, and gives its code,
// or -1 when the reply is unusable: a line of fewer than 4 characters
// (also the empty line at the end of the stream) is logged as "Bad
// response: " and the line, quoted with C-style escapes; an error::Exception
// while reading, or a reply whose code is no number, is logged as
// "SMTP error: " and its text. Never raises error::Exception.
//
// When `text` is given, it gets the reply's lines, without line ends,
// joined by "; ". A line is cut at kMaxReplyLine characters, and `text`
// stops growing at kMaxReplyText, so that no server can make it grow
// without end.
int readReply(std::istream& stream, const SmtpLog& log, std::string* text = nullptr);

inline constexpr std::size_t kMaxReplyLine = 4096;
inline constexpr std::size_t kMaxReplyText = 64 * 1024;

// `text` between double quotes, with C-style escapes for control
// characters, quotes and backslashes.
std::string c_quoted(const std::string& text);

}  // namespace email
