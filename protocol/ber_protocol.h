// The top level of a BER protocol: which message class a top-level tag
// stands for. guiProtocol, the server's outside protocol, is generated with
// the catalogue (protocol/catalogue.h).
#pragma once

#include <cstdint>
#include <memory>

#include "protocol/ber_value.h"

namespace protocol {

class BerProtocol {
 public:
  virtual ~BerProtocol() = default;
  // A new, empty message for the top-level `tag`, owned by the caller.
  // Raises EBer "Unknown tag <tag>" for a tag without a message.
  virtual std::unique_ptr<BerConstructed> make(uint32_t tag, bool legacy) const = 0;
};

}  // namespace protocol
