#include "io/test_streams.h"

#include <algorithm>
#include <cstring>

#include "io/errors.h"
#include "io/selector.h"

namespace io::testing {

void write_all(OStream& out, const std::string& data, Duration timeout) {
  size_t done = 0;
  while (done < data.size()) {
    char* space = nullptr;
    size_t room = out.writeBegin(space);
    size_t n = std::min(room, data.size() - done);
    if (n > 0) std::memcpy(space, data.data() + done, n);
    out.writeCommit(n);
    done += n;
    if (n == 0) waitReady(out, timeout);
  }
  while (!out.flushStep()) waitReady(out, timeout);
}

std::string read_some(IStream& in, size_t max, Duration timeout) {
  for (;;) {
    waitReady(in, timeout);
    const char* bytes = nullptr;
    size_t n = std::min(in.readBegin(bytes), max);
    if (n == 0) continue;
    std::string out(bytes, n);
    in.readCommit(n);
    return out;
  }
}

std::string read_to_end(IStream& in, Duration timeout) {
  std::string out;
  try {
    for (;;) out += read_some(in, static_cast<size_t>(-1), timeout);
  } catch (const EEndOfStream&) {
  }
  return out;
}

}  // namespace io::testing
