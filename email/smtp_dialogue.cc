#include "email/smtp_dialogue.h"

#include "email/header_text.h"
#include "email/smtp_escape_streambuf.h"

namespace email {
namespace {

class Dialogue {
 public:
  Dialogue(std::iostream& stream, const std::string& server, const SmtpLog& log)
      : stream_(stream), server_("\"" + server + "\""), log_(log) {}

  // Sends `command` and CR LF, unless it is empty; reads the reply into
  // said(). True when its code is `expected`.
  bool exchange(const std::string& command, int expected) {
    if (!command.empty()) send(command + "\r\n");
    return readReply(stream_, log_, &said_) == expected;
  }

  // Tells `text` as an error and gives false.
  bool fail(const std::string& text) {
    log_(text, true);
    return false;
  }
  // The tail of most reports: who said what.
  std::string whatServerSaid() const { return server_ + " said: " + said_; }

  void writeMessage(Message& message) {
    SmtpEscapeStreambuf escape(stream_);
    std::ostream data(&escape);
    data.exceptions(std::ios::badbit);
    message.write(data);
    send("\r\n.\r\n");
  }

  // QUIT, whose reply is read without text, so that said() still holds the
  // answer to the data.
  void quit() {
    send("QUIT\r\n");
    if (readReply(stream_, log_) != 221) {
      log_("SMTP server failed QUIT, but that's most likely not a problem. " + server_ +
               " said: " + said_,
           false);
    }
  }

  const std::string& server() const { return server_; }
  const std::string& said() const { return said_; }

 private:
  void send(const std::string& text) {
    stream_ << text;
    stream_.flush();
  }

  std::iostream& stream_;
  const std::string server_;  // quoted
  const SmtpLog& log_;
  std::string said_;
};

bool sendRecipients(Dialogue& d, const Message& message, const SmtpLog& log) {
  int accepted = 0;
  for (const auto& to : message.getTo()) {
    const std::string address = to->bare();
    if (d.exchange("RCPT TO:<" + address + ">", 250)) {
      ++accepted;
    } else {
      log("Delivery not accepted for destination <" + address + ">, " + d.whatServerSaid(), true);
    }
  }
  return accepted > 0 ||
         d.fail("Mail server " + d.server() + " accepted none of the destinations, aborting");
}

}  // namespace

bool smtp_dialogue(std::iostream& stream, const std::string& server, const std::string& heloName,
                   Message& message, const SmtpLog& log) {
  Dialogue d(stream, server, log);
  if (!d.exchange("", 220)) return d.fail(d.server() + " greeted us with: " + d.said());
  const std::string helo = "HELO " + plain_header_text(heloName);
  if (!d.exchange(helo, 250)) {
    return d.fail("We did send \"" + helo + "\", but " + d.whatServerSaid());
  }
  const std::string sender = message.getFrom().bare();
  if (!d.exchange("MAIL FROM:<" + sender + ">", 250)) {
    return d.fail("Delivery not accepted from sender <" + sender + ">, " + d.whatServerSaid());
  }
  if (!sendRecipients(d, message, log)) return false;
  if (!d.exchange("DATA", 354)) {
    return d.fail("SMTP server not ready for data, " + d.whatServerSaid());
  }
  d.writeMessage(message);
  if (!d.exchange("", 250)) {
    return d.fail("SMTP server didn't accept data, " + d.whatServerSaid());
  }
  d.quit();
  log("Mail transaction completed successfully.", false);
  return true;
}

}  // namespace email
