#include <errno.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "io/errors.h"
#include "io/socket_address.h"
#include "io/system_error.h"

namespace io {

uint32_t resolve(const std::string& host) {
  addrinfo hints{};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* result = nullptr;
  int rc = getaddrinfo(host.c_str(), nullptr, &hints, &result);
  if (rc != 0) {
    std::string text = rc == EAI_SYSTEM ? system_error_text(errno) : gai_strerror(rc);
    throw EResolv("Error resolving " + host + ": " + text);
  }
  if (result == nullptr) throw EResolv("No address found");
  uint32_t address = reinterpret_cast<const sockaddr_in*>(result->ai_addr)->sin_addr.s_addr;
  freeaddrinfo(result);
  return address;
}

std::string fully_qualified_host_name() {
  char name[256] = {};
  if (gethostname(name, sizeof name - 1) != 0 || name[0] == '\0') return "localhost.localdomain";
  addrinfo hints{};
  hints.ai_flags = AI_CANONNAME;
  addrinfo* result = nullptr;
  std::string fqdn = name;
  if (getaddrinfo(name, nullptr, &hints, &result) == 0 && result != nullptr) {
    if (result->ai_canonname != nullptr &&
        std::string(result->ai_canonname).find('.') != std::string::npos) {
      fqdn = result->ai_canonname;
    }
    freeaddrinfo(result);
  }
  return fqdn;
}

}  // namespace io
