#include "email/smtp_dialogue.h"

#include <ios>

#include "base/error.h"
#include "email/encoding.h"
#include "email/header_text.h"
#include "email/smtp_escape_streambuf.h"
#include "email/smtp_extensions.h"

namespace email {
namespace {

class Dialogue {
 public:
  Dialogue(SmtpChannel& channel, const SmtpDialogueSettings& settings, const SmtpLog& log)
      : channel_(channel), settings_(settings), server_("\"" + settings.server + "\""), log_(log) {}

  bool run(Message& message);

 private:
  // Sends `command` and CR LF, unless it is empty; reads the reply into
  // said_ and gives its code.
  int exchange(const std::string& command) {
    if (!command.empty()) send(command + "\r\n");
    return readReply(channel_.stream(), log_, &said_);
  }
  // Tells `text` as an error, ends the session with a QUIT and gives false.
  bool fail(const std::string& text) {
    log_(text, true);
    quitQuietly();
    return false;
  }
  // The tail of most reports: who said what.
  std::string whatServerSaid() const { return server_ + " said: " + said_; }

  bool greet(const std::string& heloName);
  bool startTls(const SmtpExtensions& offered, const std::string& heloName);
  bool authenticate();
  bool sendRecipients(const Message& message);
  void writeMessage(Message& message);
  void quit();
  void quitQuietly();
  void send(const std::string& text) {
    channel_.stream() << text;
    channel_.stream().flush();
  }

  SmtpChannel& channel_;
  const SmtpDialogueSettings& settings_;
  const std::string server_;  // quoted
  const SmtpLog& log_;
  std::string said_;
  SmtpExtensions offered_;
};

// EHLO; HELO when the server doesn't know EHLO (a 5xx reply). Notes the
// extensions that EHLO announces.
bool Dialogue::greet(const std::string& heloName) {
  const std::string ehlo = "EHLO " + heloName;
  const int code = exchange(ehlo);
  if (code == 250) {
    offered_ = parse_ehlo_reply(said_);
    return true;
  }
  if (code < 500 || code > 599)
    return fail("We did send \"" + ehlo + "\", but " + whatServerSaid());
  offered_ = {};
  const std::string helo = "HELO " + heloName;
  return exchange(helo) == 250 || fail("We did send \"" + helo + "\", but " + whatServerSaid());
}

bool Dialogue::startTls(const SmtpExtensions& offered, const std::string& heloName) {
  if (channel_.secure()) return true;
  if (!offered.starttls) {
    return settings_.tls == SmtpTls::kWhenOffered ||
           fail(server_ + " offers no STARTTLS, which the setting asks for; no mail is sent");
  }
  if (exchange("STARTTLS") != 220) {
    return fail("We did send \"STARTTLS\", but " + whatServerSaid());
  }
  // Whatever the server sent behind its reply came unprotected: refused,
  // so that nobody can slip replies in ahead of the encryption.
  if (channel_.stream().rdbuf()->in_avail() > 0) {
    return fail(server_ + " sent more behind its STARTTLS reply; no mail is sent");
  }
  channel_.startTls();
  return greet(heloName);
}

// AUTH PLAIN or LOGIN, over TLS only. The commands carry the credentials
// and never appear in a text.
bool Dialogue::authenticate() {
  if (settings_.user.empty()) return true;
  const std::string who = "Authentication as \"" + settings_.user + "\"";
  if (!channel_.secure()) {
    return fail(who + " needs TLS, and the connection to " + server_ +
                " has none; the password is not sent");
  }
  const bool plain = settings_.auth != SmtpAuth::kLogin && offered_.authPlain;
  const bool login = !plain && settings_.auth != SmtpAuth::kPlain && offered_.authLogin;
  if (!plain && !login) {
    return fail(who + ": " + server_ + " offers no AUTH " +
                (settings_.auth == SmtpAuth::kPlain   ? "PLAIN"
                 : settings_.auth == SmtpAuth::kLogin ? "LOGIN"
                                                      : "PLAIN or LOGIN"));
  }
  const std::string password = settings_.password();
  bool accepted;
  if (plain) {
    accepted = exchange("AUTH PLAIN " + base64_line(std::string(1, '\0') + settings_.user +
                                                    std::string(1, '\0') + password)) == 235;
  } else {
    accepted = exchange("AUTH LOGIN") == 334 && exchange(base64_line(settings_.user)) == 334 &&
               exchange(base64_line(password)) == 235;
  }
  return accepted || fail(who + " refused, " + whatServerSaid());
}

bool Dialogue::sendRecipients(const Message& message) {
  int accepted = 0;
  for (const auto& to : message.getTo()) {
    const std::string address = to->bare();
    const int code = exchange("RCPT TO:<" + address + ">");
    if (code == 250 || code == 251) {  // 251: the server forwards it
      ++accepted;
    } else {
      log_("Delivery not accepted for destination <" + address + ">, " + whatServerSaid(), true);
    }
  }
  return accepted > 0 ||
         fail("Mail server " + server_ + " accepted none of the destinations, aborting");
}

void Dialogue::writeMessage(Message& message) {
  SmtpEscapeStreambuf escape(channel_.stream());
  std::ostream data(&escape);
  data.exceptions(std::ios::badbit);
  message.write(data);
  send("\r\n.\r\n");
}

// QUIT, whose reply is read without text, so that said_ still holds the
// answer to the data.
void Dialogue::quit() {
  send("QUIT\r\n");
  if (readReply(channel_.stream(), log_) != 221) {
    log_("SMTP server failed QUIT, but that's most likely not a problem. " + server_ +
             " said: " + said_,
         false);
  }
}

// QUIT after a refusal: polite, and of no consequence; a connection that is
// gone already makes it fail, which isn't told.
void Dialogue::quitQuietly() {
  try {
    send("QUIT\r\n");
    readReply(channel_.stream(), [](const std::string&, bool) {});
  } catch (const error::Exception&) {
  } catch (const std::ios_base::failure&) {
  }
}

bool Dialogue::run(Message& message) {
  if (exchange("") != 220) return fail(server_ + " greeted us with: " + said_);
  const std::string heloName = plain_header_text(settings_.heloName);
  if (!greet(heloName) || !startTls(offered_, heloName) || !authenticate()) return false;
  const std::string sender = message.getFrom().bare();
  if (exchange("MAIL FROM:<" + sender + ">") != 250) {
    return fail("Delivery not accepted from sender <" + sender + ">, " + whatServerSaid());
  }
  if (!sendRecipients(message)) return false;
  if (exchange("DATA") != 354) return fail("SMTP server not ready for data, " + whatServerSaid());
  writeMessage(message);
  if (exchange("") != 250) return fail("SMTP server didn't accept data, " + whatServerSaid());
  quit();
  log_("Mail transaction completed successfully.", false);
  return true;
}

// A stream without TLS.
class PlainChannel : public SmtpChannel {
 public:
  explicit PlainChannel(std::iostream& stream) : stream_(stream) {}
  std::iostream& stream() override { return stream_; }
  bool secure() const override { return false; }
  void startTls() override { throw error::EParseError("TLS is not available on this connection"); }

 private:
  std::iostream& stream_;
};

}  // namespace

bool smtp_dialogue(SmtpChannel& channel, const SmtpDialogueSettings& settings, Message& message,
                   const SmtpLog& log) {
  return Dialogue(channel, settings, log).run(message);
}

bool smtp_dialogue(std::iostream& stream, const std::string& server, const std::string& heloName,
                   Message& message, const SmtpLog& log) {
  PlainChannel channel(stream);
  SmtpDialogueSettings settings;
  settings.server = server;
  settings.heloName = heloName;
  return smtp_dialogue(channel, settings, message, log);
}

}  // namespace email
