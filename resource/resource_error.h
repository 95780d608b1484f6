// The failure of a resource file: it couldn't be found, read or typed.
// Callers catch it and go on without the file.
#pragma once

#include "base/error.h"

namespace resource {

class resource_error : public error::TextException {
  using TextException::TextException;
};

}  // namespace resource
