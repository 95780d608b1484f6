#include "tql/errors.h"

#include "base/fatal.h"

namespace errors {

tql::tql(int32_t code, std::string text) : code_(code), text_(std::move(text)) {
  TAVREL_ASSERT(code != kSuccess, "errors::tql constructed with code ERR_SUCCESS");
}

void tql::describe(std::string& out) const { out = text_.empty() ? code_text(code_) : text_; }

const char* tql::code_text(int32_t code) {
  switch (code) {
    case 0:
      return "No error";
    case 1:
      return "Specified ID not found in database";
    case 2:
      return "Pattern matched nothing";
    case 3:
      return "Someone else has updated the object";
    case 4:
      return "Attempted insertion of duplicate value in unique property";
    case 5:
      return "Specified class not allowed as child of given object";
    case 6:
      return "Some required properties is missing";
    case 7:
      return "Requested update of noexistant property";
    case 8:
      return "Requested update of const property";
    case 9:
      return "Property updated with illegal type";
    case 10:
      return "Property updated with illegal value";
    case 11:
      return "Incomparable property";
    case 12:
      return "The pattern is not implemented";
    case 14:
      return "Backend error";
    case 15:
      return "Access denied";
    default:
      return "Unknown error";
  }
}

}  // namespace errors
