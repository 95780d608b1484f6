// Feeds arbitrary bytes to the reader as a message of the outside protocol.
// The first byte picks the generation. A message that reads is written and
// read again: the second writing must equal the first one's reading
// written out (reading normalises NaN and unsigned forms once).
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "protocol/ber_reader.h"
#include "protocol/catalogue.h"

namespace {

std::vector<uint8_t> write(const protocol::BerValue& value, bool legacy) {
  protocol::BerBuffer out;
  value.write(out, legacy);
  return out.bytes();
}

std::unique_ptr<protocol::BerConstructed> read(const uint8_t* data, size_t size, bool legacy) {
  protocol::BerReader reader(data, size, legacy);
  return reader.read_message(protocol::guiProtocol());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  bool legacy = data[0] & 1;
  std::unique_ptr<protocol::BerConstructed> message;
  try {
    message = read(data + 1, size - 1, legacy);
  } catch (const protocol::EBer&) {
    return 0;
  }
  // Every pointer field is required, so a message that reads can be written.
  std::vector<uint8_t> first = write(*message, legacy);
  std::unique_ptr<protocol::BerConstructed> again = read(first.data(), first.size(), legacy);
  std::vector<uint8_t> second = write(*again, legacy);
  std::unique_ptr<protocol::BerConstructed> third = read(second.data(), second.size(), legacy);
  if (!(*again == *third) || second != write(*third, legacy)) std::abort();
  return 0;
}
