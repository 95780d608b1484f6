// tavrel-tool fdio-print, class-name, property-name: the event stream form
// and the schema catalogue, for operators.
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "base/error.h"
#include "io/errors.h"
#include "protocol/memory_stream.h"
#include "queues/event_io.h"
#include "tools/commands.h"
#include "tql/catalogue.h"

namespace tools {
namespace {

// Reads an fdio event stream from stdin and prints each event. The input
// comes from outside: an unknown type index or a damaged value ends the
// command with "error: " (after the events that were whole), never with an
// abort; input that stops inside an event is "truncated event at byte N".
int run_fdio_print(Args& args) {
  args.done();
  const std::string input((std::istreambuf_iterator<char>(std::cin)),
                          std::istreambuf_iterator<char>());
  queues::set_unknown_event_policy(queues::UnknownEventPolicy::kRaise);
  protocol::MemoryPipe pipe(4096, 4096, input);
  protocol::ioprim io(pipe.in(), pipe.out());
  size_t start = 0;
  while (start < input.size()) {
    try {
      queues::print(std::cout, *queues::read_event(io));
    } catch (const io::EEndOfStream&) {
      throw error::EParseError("truncated event at byte " + std::to_string(start));
    }
    start = input.size() - pipe.unread().size();
  }
  return 0;
}

int32_t number_argument(Args& args) {
  std::string word = args.positional("N");
  args.done();
  int64_t n = Args::to_int(word);
  if (n < INT32_MIN || n > INT32_MAX) throw error::EParseError("number out of range: " + word);
  return static_cast<int32_t>(n);
}

int run_class_name(Args& args) {
  std::cout << tql::class_name(number_argument(args)) << "\n";
  return 0;
}

int run_property_name(Args& args) {
  std::cout << tql::property_name(number_argument(args)) << "\n";
  return 0;
}

}  // namespace

std::vector<Command> records_commands() {
  return {{"fdio-print", "(fdio event stream on stdin)", run_fdio_print},
          {"class-name", "N", run_class_name},
          {"property-name", "N", run_property_name}};
}

}  // namespace tools
