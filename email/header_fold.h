// Writing header fields whose lines stay within 78 characters: words are
// written behind a blank, and the blank becomes a fold (CR LF and the blank)
// where the word would make the line longer.
#pragma once

#include <cstddef>
#include <ostream>
#include <string_view>

namespace email {

inline constexpr size_t kHeaderLineLimit = 78;

class HeaderFolder {
 public:
  // Writes `name` and ":".
  HeaderFolder(std::ostream& out, std::string_view name);

  // Writes a blank and `word`; the blank becomes a fold when the line would
  // pass the limit, unless the word is empty (a folded line must hold more
  // than white space). A word longer than a line still goes on one line of
  // its own.
  void word(std::string_view word);
  // Starts a line of its own behind a TAB, for a value that holds line
  // feeds; the next word follows the TAB directly.
  void breakLine();
  // Ends the field with CR LF.
  void end();

 private:
  void append(std::string_view text);

  std::ostream& out_;
  size_t column_;
  bool afterBreak_ = false;
};

}  // namespace email
