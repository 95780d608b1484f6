// Failures of the stand-in database that come from outside: malformed
// requests and bad world files.
#pragma once

#include <string>

#include "base/error.h"

namespace host {

// A malformed request (a null property or record, a record of the wrong
// class, ...). The database endpoint answers it with an exception reply that
// carries the text.
class EBadRequest : public error::TextException {
  using TextException::TextException;
};

// A world file that can't be loaded. The text begins with the JSON path of
// the bad value, as "objects.children[2].props.active: expected a boolean".
class EWorldError : public error::EParseError {
 public:
  EWorldError(const std::string& path, const std::string& text)
      : error::EParseError(path.empty() ? text : path + ": " + text) {}
};

}  // namespace host
