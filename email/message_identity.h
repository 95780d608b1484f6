// The Date and Message-ID of an outgoing mail.
#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace email {

// `when` as the date of a mail, in the local time of this machine with its
// offset from UTC: "Tue, 24 Nov 2026 04:59:00 +0100". English names, whatever
// the locale.
std::string mail_date(std::time_t when);

// A new message id, angle brackets included, unique across processes and
// machines: the time in microseconds, the process id, a count within the
// process and 64 random bits, then "@" and `domain`.
std::string new_message_id(std::string_view domain);

// The domain of `address` in lower case when it is a plain one (letters,
// digits and hyphens between single dots); "localhost" otherwise.
std::string message_id_domain(std::string_view address);

}  // namespace email
