#include "email/header_fold.h"

namespace email {

HeaderFolder::HeaderFolder(std::ostream& out, std::string_view name)
    : out_(out), column_(name.size() + 1) {
  out_ << name << ':';
}

void HeaderFolder::word(std::string_view word) {
  if (!afterBreak_ && !word.empty() && column_ + 1 + word.size() > kHeaderLineLimit) {
    out_ << "\r\n";
    column_ = 0;
  }
  if (!afterBreak_) append(" ");
  append(word);
  afterBreak_ = false;
}

void HeaderFolder::append(std::string_view text) {
  out_ << text;
  column_ += text.size();
}

void HeaderFolder::breakLine() {
  out_ << "\r\n\t";
  column_ = 1;
  afterBreak_ = true;
}

void HeaderFolder::end() { out_ << "\r\n"; }

}  // namespace email
