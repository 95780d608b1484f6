// The exception tree of the process. Every failure that can come from outside
// is one of these; a state the design rules out is a fatal assertion instead
// (see fatal.h).
//
// The full text of an exception, which every catcher prints, is describe()
// followed by context. The throw site gives only the class's own text.
#pragma once

#include <string>

namespace error {

class Exception {
 public:
  virtual ~Exception() = default;
  // Sets `out` to the class's own text.
  virtual void describe(std::string& out) const = 0;
  // describe() followed by context.
  std::string text() const;

  std::string context;  // Empty as a rule.
};

// Base of the classes that carry a text of their own.
class TextException : public Exception {
 public:
  explicit TextException(std::string text) : text_(std::move(text)) {}
  void describe(std::string& out) const override { out = text_; }

 private:
  std::string text_;
};

// A fault the process can't go on after; caught only in main.
class EFatal : public TextException {
  using TextException::TextException;
};
// A value out of its allowed range.
class ERange : public TextException {
  using TextException::TextException;
};
// Text or bytes that don't parse.
class EParseError : public TextException {
  using TextException::TextException;
};
// A failed system call: the caller's words, ": " and the system's text.
class ESystemError : public TextException {
  using TextException::TextException;
};
// System codes "not found" (ENOENT).
class EFileNotFoundError : public ESystemError {
  using ESystemError::ESystemError;
};
// System code "exists" (EEXIST).
class EFileExistsError : public ESystemError {
  using ESystemError::ESystemError;
};

}  // namespace error
