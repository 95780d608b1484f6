#include "email/message_identity.h"

#include <sys/random.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "email/header_text.h"

namespace email {

std::string mail_date(std::time_t when) {
  static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm local{};
  localtime_r(&when, &local);
  const long offset = local.tm_gmtoff / 60;
  char text[64];
  std::snprintf(text, sizeof text, "%s, %02d %s %04d %02d:%02d:%02d %c%02ld%02ld",
                kDays[local.tm_wday], local.tm_mday, kMonths[local.tm_mon], local.tm_year + 1900,
                local.tm_hour, local.tm_min, local.tm_sec, offset < 0 ? '-' : '+',
                std::labs(offset) / 60, std::labs(offset) % 60);
  return text;
}

std::string new_message_id(std::string_view domain) {
  static std::atomic<uint64_t> count{0};
  const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(
                          std::chrono::system_clock::now().time_since_epoch())
                          .count();
  uint64_t random = 0;
  if (getrandom(&random, sizeof random, GRND_NONBLOCK) != static_cast<ssize_t>(sizeof random)) {
    // Without entropy yet, the address of a local and the time still differ.
    random = reinterpret_cast<uintptr_t>(&random) ^ static_cast<uint64_t>(micros);
  }
  char text[128];
  std::snprintf(text, sizeof text, "<tavrel.%" PRIx64 ".%x.%" PRIu64 ".%016" PRIx64 "@",
                static_cast<uint64_t>(micros), static_cast<unsigned>(getpid()), ++count, random);
  return text + std::string(domain) + ">";
}

std::string message_id_domain(std::string_view address) {
  const size_t at = address.rfind('@');
  if (at == std::string_view::npos) return "localhost";
  const std::string domain = lower_ascii(std::string(address.substr(at + 1)));
  const bool plain = !domain.empty() && std::all_of(domain.begin(), domain.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == '-';
  });
  const bool dot_atom = plain && domain.front() != '.' && domain.back() != '.' &&
                        domain.find("..") == std::string::npos;
  return dot_atom ? domain : "localhost";
}

}  // namespace email
