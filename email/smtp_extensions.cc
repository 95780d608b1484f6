#include "email/smtp_extensions.h"

#include <sstream>

#include "email/header_text.h"

namespace email {

SmtpExtensions parse_ehlo_reply(const std::string& said) {
  SmtpExtensions offered;
  size_t start = said.find("; ");  // the greeting line names the server only
  while (start != std::string::npos) {
    start += 2;
    const size_t end = said.find("; ", start);
    const std::string line = said.substr(start, end == std::string::npos ? end : end - start);
    start = end;
    if (line.size() < 4) continue;
    std::istringstream words(lower_ascii(line.substr(4)));
    std::string keyword, mechanism;
    words >> keyword;
    if (keyword == "starttls") offered.starttls = true;
    if (keyword != "auth") continue;
    while (words >> mechanism) {
      if (mechanism == "plain") offered.authPlain = true;
      if (mechanism == "login") offered.authLogin = true;
    }
  }
  return offered;
}

}  // namespace email
