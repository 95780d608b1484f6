#include "email/encoded_words.h"

#include <algorithm>

#include "base/utf8.h"
#include "email/encoding.h"

namespace email {
namespace {

// The longest word that fits on a folded line behind the longest header
// name we write ("Message-ID:") and its blank.
constexpr size_t kLongestPlainWord = kHeaderLineLimit - 13;
// Bytes of text per encoded word: 40 base64 characters, so that a word of
// either charset fits on the first line behind "Subject: ".
constexpr size_t kBytesPerWord = 30;

bool printable(char c) { return (c >= 32 && c <= 126) || c == '\t'; }

std::vector<std::string_view> words_of(std::string_view text) {
  std::vector<std::string_view> words;
  size_t start = 0;
  for (size_t blank; (blank = text.find(' ', start)) != std::string_view::npos; start = blank + 1) {
    words.push_back(text.substr(start, blank - start));
  }
  words.push_back(text.substr(start));
  return words;
}

// Characters of an atom (RFC 5322) and the blank, which a phrase may hold
// between its atoms.
bool atom_or_blank(char c) {
  static constexpr std::string_view kSpecials = "!#$%&'*+-/=?^_`{|}~ ";
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         kSpecials.find(c) != std::string_view::npos;
}

}  // namespace

bool needs_encoding(std::string_view text) {
  if (!std::all_of(text.begin(), text.end(), printable)) return true;
  if (text.find("=?") != std::string_view::npos) return true;
  const auto words = words_of(text);
  return std::any_of(words.begin(), words.end(),
                     [](std::string_view w) { return w.size() > kLongestPlainWord; });
}

std::vector<std::string> encoded_words(std::string_view text) {
  const bool utf8 = text::is_valid_utf8(text);
  const std::string prefix = utf8 ? "=?UTF-8?B?" : "=?ISO-8859-1?B?";
  std::vector<std::string> words;
  for (size_t i = 0; i < text.size();) {
    size_t n = 0;
    while (i + n < text.size()) {
      const size_t step = utf8 ? text::utf8_sequence_length(text.substr(i + n)) : 1;
      if (n > 0 && n + step > kBytesPerWord) break;
      n += step;
    }
    words.push_back(prefix + base64_line(text.substr(i, n)) + "?=");
    i += n;
  }
  return words;
}

void write_unstructured(HeaderFolder& folder, std::string_view text) {
  if (!needs_encoding(text)) {
    for (std::string_view word : words_of(text)) folder.word(word);
    return;
  }
  for (const std::string& word : encoded_words(text)) folder.word(word);
}

void write_phrase(HeaderFolder& folder, std::string_view name) {
  if (needs_encoding(name)) {
    for (const std::string& word : encoded_words(name)) folder.word(word);
  } else if (std::all_of(name.begin(), name.end(), atom_or_blank)) {
    for (std::string_view word : words_of(name)) folder.word(word);
  } else {
    std::string quoted = "\"";
    for (char c : name) {
      if (c == '"' || c == '\\') quoted += '\\';
      quoted += c;
    }
    folder.word(quoted + "\"");
  }
}

}  // namespace email
