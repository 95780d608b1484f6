// One outgoing mail: envelope addresses, headers and the root of a MIME body
// tree, written as a stream of bytes with CR LF line ends. The message owns
// its addresses and its body. Used on one thread.
#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "email/address.h"
#include "email/mime_body.h"

namespace email {

class Message {
 public:
  using AddressList = std::vector<std::unique_ptr<Address>>;

  Message() = default;
  Message(const Message&) = delete;
  Message& operator=(const Message&) = delete;

  void setFrom(std::unique_ptr<Address> from) { from_ = std::move(from); }
  void addTo(std::unique_ptr<Address> to) { to_.push_back(std::move(to)); }
  void addReplyTo(std::unique_ptr<Address> replyTo) { replyTo_.push_back(std::move(replyTo)); }
  void setBody(std::unique_ptr<MimeBody> body) { body_ = std::move(body); }
  // Any text; a CR or LF in it is written as a blank. Text that can't stand
  // in a header as it is goes out as encoded words.
  void setSubject(std::string subject) { subject_ = std::move(subject); }
  // Fixes the Date and Message-ID headers (tests); by default write() takes
  // the time of writing and a new id in the sender's domain.
  void setDate(std::string date) { date_ = std::move(date); }
  void setMessageId(std::string id) { messageId_ = std::move(id); }
  // Adds or replaces the header "X-" + name. A line feed in the value
  // continues the header on a folded line; CR and LF in the name are
  // written as blanks.
  void setHeader(const std::string& name, std::string value) { headers_[name] = std::move(value); }

  // The sender; a fatal assertion when none was set.
  const Address& getFrom() const;
  // The recipients, in the order of adding.
  const AddressList& getTo() const { return to_; }

  // Writes the whole message, headers and body, and flushes `stream`. The
  // sender and the body must have been set (else a fatal assertion). Raises
  // what the body raises, and error::ESystemError when `stream` is left in
  // a failed state.
  void write(std::ostream& stream);

 private:
  void writeHeaders(std::ostream& stream, int& counter);
  void writeExtraHeader(std::ostream& stream, const std::string& name, const std::string& value);
  std::string date() const;
  std::string messageId() const;

  std::string stamp_;  // the middle of every boundary
  std::unique_ptr<Address> from_;
  AddressList to_;
  AddressList replyTo_;
  std::unique_ptr<MimeBody> body_;
  std::string subject_;
  std::string date_;                            // empty: the time of writing
  std::string messageId_;                       // empty: a new one
  std::map<std::string, std::string> headers_;  // by name, without "X-"
};

}  // namespace email
