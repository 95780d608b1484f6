// Helpers for text that goes into mail headers and the SMTP envelope.
#pragma once

#include <string>

namespace email {

// `text` with every CR and LF replaced by a blank, so that it can never
// start a new header line or SMTP command.
std::string plain_header_text(std::string text);

// `text` with the ASCII capitals turned to small letters; other bytes stay.
std::string lower_ascii(std::string text);

}  // namespace email
