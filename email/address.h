// One mail address, with an optional display name. Both texts are written
// as they are, unencoded, so they must be plain text; a CR or LF in them
// comes out as a blank, so that it can't start a header line or an SMTP
// command.
#pragma once

#include <string>

namespace email {

class Address {
 public:
  explicit Address(std::string address) : address_(std::move(address)) {}
  Address(std::string name, std::string address)
      : name_(std::move(name)), address_(std::move(address)) {}
  virtual ~Address() = default;

  // For a header: "<" address ">" without a name, else name " <" address
  // ">". The address is in lower case, the name keeps its case.
  virtual std::string toString() const;
  // The address alone, in lower case, as the SMTP envelope takes it.
  virtual std::string bare() const;

  const std::string& name() const { return name_; }
  void setName(std::string name) { name_ = std::move(name); }
  const std::string& address() const { return address_; }

 private:
  std::string name_;  // empty unless set
  std::string address_;
};

}  // namespace email
