// A child process for the messenger's tests. It joins as sibling 12 and
// serves frames (frames.h) from any sibling:
//   "echo:X"      answers "X" to the sender
//   "to:N:X"      sends "X" to sibling N
//   "shutdown"    starts the orderly shutdown
// It ends when the parent's stream ends: after completing the shutdown with
// exit code 0, or with 3 when the parent went away without one.
#include <cstdio>
#include <string>

#include "base/error.h"
#include "host/frames.h"
#include "io/errors.h"
#include "io/selector.h"
#include "io/sibling_messenger.h"

int main() {
  try {
    io::SiblingMessenger m(12, "smem");
    io::BareSelector selector;
    selector.add(m.some_sibling(), nullptr);
    for (;;) {
      selector.wait(false);
      int from = m.next_ready_sibling();
      std::string text;
      try {
        text = host::read_frame(m.sibling(from).input());
      } catch (const io::EEndOfStream&) {
        m.take_end_of_stream(from);
        if (from != 0) continue;
        if (!m.shutdown_acknowledged()) return 3;
        m.completeShutdown();
        return 0;
      }
      if (text.rfind("echo:", 0) == 0) {
        host::write_frame(m.sibling(from).output(), text.substr(5));
      } else if (text.rfind("to:", 0) == 0) {
        size_t colon = text.find(':', 3);
        int to = std::stoi(text.substr(3, colon - 3));
        host::write_frame(m.sibling(to).output(), text.substr(colon + 1));
      } else if (text == "shutdown") {
        m.initiateShutdown();
      }
    }
  } catch (const error::Exception& e) {
    std::fprintf(stderr, "Caught: %s\n", e.text().c_str());
    return 1;
  }
}
