// Feeds random bytes to the event reader: it must end every input with an
// event, io::EEndOfStream or another error::Exception, never with a crash,
// a leak or an unbounded allocation. Unknown type indexes, fatal in the
// process, raise here (UnknownEventPolicy::kRaise) so they count as
// rejected input.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "base/error.h"
#include "protocol/memory_stream.h"
#include "queues/event_io.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  queues::set_unknown_event_policy(queues::UnknownEventPolicy::kRaise);
  // The first byte picks the read area size, so values cross areas.
  size_t area = size > 0 ? 1 + data[0] % 16 : 1;
  std::string bytes(reinterpret_cast<const char*>(data), size);
  protocol::MemoryPipe pipe(64, area, bytes.substr(size > 0 ? 1 : 0));
  {
    protocol::ioprim io(pipe.in(), pipe.out());
    try {
      for (;;) {
        std::unique_ptr<queues::event> e = queues::read_event(io);
        std::ostringstream os;
        queues::print(os, *e);
        // What was read must write again.
        io << *e;
      }
    } catch (const error::Exception&) {
    }
  }
  queues::forget_stream(pipe.in());
  return 0;
}
