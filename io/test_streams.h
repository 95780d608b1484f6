// Helpers of the io tests: move whole strings through the lending streams.
#pragma once

#include <string>

#include "io/clock.h"
#include "io/stream.h"

namespace io::testing {

// Writes all of `data` and flushes, waiting as needed. Raises what the
// stream raises, io::ETimeout included.
void write_all(OStream& out, const std::string& data, Duration timeout = std::chrono::seconds(10));
// Reads until the end of the stream and returns everything.
std::string read_to_end(IStream& in, Duration timeout = std::chrono::seconds(10));
// Waits for the next bytes and returns at most `max` of them, consumed.
std::string read_some(IStream& in, size_t max, Duration timeout = std::chrono::seconds(10));

}  // namespace io::testing
