// How ioprim waits for a stream: through the selector framework of io/.
#pragma once

namespace io {
class Selectable;
}

namespace protocol {

// Returns when `s` is ready (io::waitReady).
void wait_ready(io::Selectable& s);

}  // namespace protocol
