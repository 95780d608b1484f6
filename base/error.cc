#include "base/error.h"

namespace error {

std::string Exception::text() const {
  std::string out;
  describe(out);
  return out + context;
}

}  // namespace error
