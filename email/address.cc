#include "email/address.h"

#include "email/header_text.h"

namespace email {

std::string Address::toString() const {
  const std::string angle = "<" + bare() + ">";
  if (name_.empty()) return angle;
  return plain_header_text(name_) + " " + angle;
}

std::string Address::bare() const { return plain_header_text(lower_ascii(address_)); }

}  // namespace email
