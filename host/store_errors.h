// Failures of the stand-in database that are the requester's fault.
#pragma once

#include "base/error.h"

namespace host {

// A malformed request (a null property or record, a record of the wrong
// class, ...). The database endpoint answers it with an exception reply that
// carries the text.
class EBadRequest : public error::TextException {
  using TextException::TextException;
};

}  // namespace host
