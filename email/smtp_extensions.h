// What an SMTP server offers in its reply to EHLO.
#pragma once

#include <string>

namespace email {

struct SmtpExtensions {
  bool starttls = false;
  bool authPlain = false;
  bool authLogin = false;
};

// Reads the extensions from the text of an EHLO reply as readReply joins it
// ("250-host greets; 250-STARTTLS; 250 AUTH PLAIN LOGIN"): keywords and AUTH
// mechanisms in any case, the first line (the greeting) left out. Anything
// it doesn't know is passed over.
SmtpExtensions parse_ehlo_reply(const std::string& said);

}  // namespace email
