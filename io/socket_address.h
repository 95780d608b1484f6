// IPv4 addresses as the process passes them: 32 bits in network order.
#pragma once

#include <cstdint>
#include <string>

namespace io {

// The loopback address, 127.0.0.1, in network order.
uint32_t loopback_address();

// "a.b.c.d" for an address in network order.
std::string address_text(uint32_t address);

// address_text + ":" + port.
std::string endpoint_text(uint32_t address, uint16_t port);

// The first IPv4 address of `host` (a name or a dotted address), in network
// order. Raises io::EResolv "Error resolving " + host + ": " + the resolver's
// text, or "No address found" when the answer is empty. Blocks while the
// resolver works.
uint32_t resolve(const std::string& host);

// This machine's fully qualified domain name, as the resolver gives it for
// the host name; the host name itself when it has no dotted canonical name,
// and "localhost.localdomain" when even that is missing. For the greeting
// of a mail server, which refuses names that aren't fully qualified.
std::string fully_qualified_host_name();

}  // namespace io
