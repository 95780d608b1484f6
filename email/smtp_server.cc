#include "email/smtp_server.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "base/error.h"

namespace email {
namespace {

uint16_t parsePort(const std::string& text) {
  const bool digits = !text.empty() && text.size() <= 5 &&
                      text.find_first_not_of("0123456789") == std::string::npos;
  const unsigned long port = digits ? std::stoul(text) : 0;
  if (!digits || port > 65535) {
    throw error::EParseError("Bad port number in SMTP server \"" + text + "\"");
  }
  return static_cast<uint16_t>(port);
}

SmtpServerAddress plainAddress(std::string host, uint16_t port) {
  SmtpServerAddress address;
  address.host = std::move(host);
  address.port = port;
  return address;
}

[[noreturn]] void refuse(const std::string& why) {
  throw error::EParseError("Bad SMTP server URL: " + why);
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string percentDecoded(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      out += text[i];
      continue;
    }
    const int high = i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
    const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
    if (low < 0) refuse("a \"%\" without two hex digits");
    out += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return out;
}

void setParameter(SmtpServerAddress& address, const std::string& pair) {
  const size_t equals = pair.find('=');
  const std::string name = pair.substr(0, equals);
  const std::string value =
      equals == std::string::npos ? "" : percentDecoded(pair.substr(equals + 1));
  if (value.empty()) refuse("parameter \"" + name + "\" without a value");
  if (name == "password-file") {
    address.password_file = value;
  } else if (name == "password-env") {
    address.password_env = value;
  } else if (name == "ca-file") {
    address.ca_file = value;
  } else if (name == "auth" && (value == "plain" || value == "login")) {
    address.auth = value == "plain" ? SmtpAuth::kPlain : SmtpAuth::kLogin;
  } else {
    refuse("unknown parameter \"" + name + "\"");
  }
}

SmtpServerAddress parseUrl(const std::string& server, size_t schemeEnd) {
  SmtpServerAddress address;
  const std::string scheme = server.substr(0, schemeEnd);
  if (scheme == "smtp") {
    address.tls = SmtpTls::kStartTls;
    address.port = kSubmissionPort;
  } else if (scheme == "smtps") {
    address.tls = SmtpTls::kImplicit;
    address.port = kSmtpsPort;
  } else {
    refuse("unknown scheme \"" + scheme + "\" (smtp or smtps)");
  }
  std::string rest = server.substr(schemeEnd + 3);
  const size_t query = rest.find('?');
  std::string authority = rest.substr(0, query);
  if (!authority.empty() && authority.back() == '/') authority.pop_back();
  const size_t at = authority.rfind('@');
  if (at != std::string::npos) {
    const std::string user = authority.substr(0, at);
    // The password must never stand in the setting; its text isn't quoted.
    if (user.find(':') != std::string::npos) {
      refuse("a password in the URL is refused; name a password-file or password-env");
    }
    address.user = percentDecoded(user);
    authority = authority.substr(at + 1);
  }
  const size_t colon = authority.find(':');
  address.host = authority.substr(0, colon);
  if (colon != std::string::npos) address.port = parsePort(authority.substr(colon + 1));
  if (address.host.empty() || address.port == 0) refuse("no host or port 0");
  if (query != std::string::npos) {
    const std::string parameters = rest.substr(query + 1);
    size_t start = 0;
    for (size_t amp; start <= parameters.size(); start = amp + 1) {
      amp = parameters.find('&', start);
      if (amp == std::string::npos) amp = parameters.size();
      setParameter(address, parameters.substr(start, amp - start));
    }
  }
  const bool source = !address.password_file.empty() || !address.password_env.empty();
  if (address.user.empty() == source) {
    refuse(address.user.empty()
               ? "a password source without a user"
               : "user \"" + address.user + "\" without password-file or password-env");
  }
  return address;
}

}  // namespace

SmtpServerAddress parse_smtp_server(const std::string& server, const SmtpLog& log) {
  const size_t scheme = server.find("://");
  if (scheme != std::string::npos) return parseUrl(server, scheme);
  const auto colon = server.find(':');
  if (colon == std::string::npos) {
    if (!server.empty()) return plainAddress(server, kSmtpPort);
  } else {
    SmtpServerAddress parsed =
        plainAddress(server.substr(0, colon), parsePort(server.substr(colon + 1)));
    if (!parsed.host.empty() && parsed.port != 0) return parsed;
  }
  log("SMTP server parse problem: \"" + server + "\"", true);
  return plainAddress(server, kSmtpPort);
}

std::string read_smtp_password(const SmtpServerAddress& address) {
  if (!address.password_env.empty()) {
    const char* value = std::getenv(address.password_env.c_str());
    if (value == nullptr) {
      throw error::EParseError("The SMTP password variable " + address.password_env +
                               " is not set");
    }
    return value;
  }
  std::ifstream file(address.password_file);
  std::string line;
  if (!file || !std::getline(file, line)) {
    const int code = errno;
    throw error::EParseError("Cannot read the SMTP password file " + address.password_file + ": " +
                             (file.is_open() ? "it is empty" : std::strerror(code)));
  }
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

}  // namespace email
