#include "io/socket_address.h"

#include <cstring>

namespace io {

uint32_t loopback_address() {
  const unsigned char bytes[4] = {127, 0, 0, 1};
  uint32_t address;
  std::memcpy(&address, bytes, sizeof address);
  return address;
}

std::string address_text(uint32_t address) {
  unsigned char bytes[4];
  std::memcpy(bytes, &address, sizeof bytes);
  return std::to_string(bytes[0]) + "." + std::to_string(bytes[1]) + "." +
         std::to_string(bytes[2]) + "." + std::to_string(bytes[3]);
}

std::string endpoint_text(uint32_t address, uint16_t port) {
  return address_text(address) + ":" + std::to_string(port);
}

}  // namespace io
