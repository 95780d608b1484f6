#include "protocol/wait.h"

#include "base/fatal.h"
#include "io/selectable.h"

namespace protocol {

// Until io's selector is merged only streams that are always ready (the
// in-memory pair) are supported.
void wait_ready(io::Selectable& s) {
  TAVREL_ASSERT(s.is_ready(), "stream " + io::name_of(s) + " not ready and no selector to wait on");
}

}  // namespace protocol
