#include "io/stream.h"

namespace io {

bool OStream::flushStep() { return false; }

}  // namespace io
