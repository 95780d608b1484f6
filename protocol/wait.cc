#include "protocol/wait.h"

#include "io/selector.h"

namespace protocol {

void wait_ready(io::Selectable& s) { io::waitReady(s); }

}  // namespace protocol
