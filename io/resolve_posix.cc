#include <errno.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

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

}  // namespace io
