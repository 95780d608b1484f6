// BER commands: ber-dump reads one message of the outside protocol from
// stdin and prints its tree, then the catalogue's name of the message.
#include <cstdint>
#include <iostream>
#include <iterator>
#include <string>

#include "base/error.h"
#include "protocol/ber_reader.h"
#include "protocol/ber_tree.h"
#include "protocol/catalogue.h"
#include "tools/commands.h"

namespace tools {

namespace {

// ber-dump [--legacy]: the tree of any well-formed BER value, then
// "message: NAME" when the catalogue reads it. Bytes after the value, or a
// message the catalogue refuses, end in an error (exit 1) after the tree.
int ber_dump(Args& args) {
  bool legacy = args.flag("--legacy");
  args.done();
  std::string input{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  const auto* data = reinterpret_cast<const uint8_t*>(input.data());
  size_t used = 0;
  std::cout << protocol::dump_ber(data, input.size(), legacy, &used);
  if (used != input.size()) {
    throw error::EParseError(std::to_string(input.size() - used) + " bytes after the message");
  }
  protocol::BerReader reader(data, input.size(), legacy);
  std::unique_ptr<protocol::BerConstructed> message = reader.read_message(protocol::guiProtocol());
  std::cout << "message: " << protocol::message_name(message->tag(legacy)) << "\n";
  return 0;
}

}  // namespace

std::vector<Command> ber_commands() { return {{"ber-dump", "[--legacy] < message", ber_dump}}; }

}  // namespace tools
