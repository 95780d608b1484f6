// Length-framed byte messages over sibling streams, for the messenger's
// tests and test programs: a 32-bit length, then the bytes. Blocking.
#pragma once

#include <cstdint>
#include <string>

#include "io/stream.h"

namespace host {

// Writes the frame; waits while the stream isn't ready. Raises what the
// stream raises.
void write_frame(io::OStream& out, const std::string& text);
// Reads one frame; waits for its bytes. Raises io::EEndOfStream at the end.
std::string read_frame(io::IStream& in);

}  // namespace host
