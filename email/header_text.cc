#include "email/header_text.h"

namespace email {

std::string plain_header_text(std::string text) {
  for (char& c : text) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  return text;
}

std::string lower_ascii(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

}  // namespace email
