// The exceptions of io/. Each stores its text; the throw site gives only the
// words below.
#pragma once

#include <string>

#include "base/error.h"

namespace io {

// A stream has ended: "EOS from " + the stream's name, and " (" + reason +
// ")" when a reason is given.
class EEndOfStream : public error::TextException {
 public:
  explicit EEndOfStream(const std::string& stream_name, const std::string& reason = "");
};

// The peer's connection is gone; the text is the thrower's.
class ENoConnection : public error::TextException {
  using TextException::TextException;
};

// A selectable isn't ready: "Selectable " + name + " not ready".
class ENotReady : public error::TextException {
 public:
  explicit ENotReady(const std::string& selectable_name);
};

// A wait ran out: "Timeout waiting for " + name.
class ETimeout : public error::TextException {
 public:
  explicit ETimeout(const std::string& selectable_name);
};

// A TCP connection failed; the text is the thrower's.
class EConnection : public error::ESystemError {
  using ESystemError::ESystemError;
};

// A host name didn't resolve; the text is the thrower's.
class EResolv : public error::ESystemError {
  using ESystemError::ESystemError;
};

}  // namespace io
