// errors::tql: a failure reported by the object database, with its numeric
// status code.
#pragma once

#include <cstdint>
#include <string>

#include "base/error.h"

namespace errors {

class tql : public error::Exception {
 public:
  // Status codes with a meaning of their own.
  static constexpr int32_t kSuccess = 0;
  static constexpr int32_t kNotFound = 1;
  static constexpr int32_t kNoMatch = 2;
  static constexpr int32_t kUpdatedByOther = 3;
  static constexpr int32_t kRequiredMissing = 6;
  static constexpr int32_t kNoSuchProperty = 7;
  static constexpr int32_t kIllegalType = 9;
  static constexpr int32_t kIncomparable = 11;

  // Code 0 is a fatal assertion: success is no error.
  explicit tql(int32_t code, std::string text = "");

  int32_t code() const { return code_; }
  // The text given, or the code's text when none was given.
  void describe(std::string& out) const override;

  // The fixed text of a code; "Unknown error" for codes without one.
  static const char* code_text(int32_t code);

 private:
  int32_t code_;
  std::string text_;
};

// Two properties that can't be compared; always code 11.
class tql_incomparable : public tql {
 public:
  explicit tql_incomparable(std::string text) : tql(kIncomparable, std::move(text)) {}
};

}  // namespace errors
