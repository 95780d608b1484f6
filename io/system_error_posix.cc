#include <errno.h>
#include <string.h>

#include "base/error.h"
#include "io/system_error.h"

namespace io {

std::string system_error_text(int code) {
  char buffer[256];
  // The GNU strerror_r returns the text, in `buffer` or a static string; it
  // gives "Unknown error N" for a code it doesn't know and can't fail.
  std::string text = strerror_r(code, buffer, sizeof buffer);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  if (text.empty()) text = std::to_string(code);
  return text;
}

void raise_system_error(const std::string& what, int code) {
  std::string text = what + ": " + system_error_text(code);
  if (code == ENOENT || code == ENOTDIR) throw error::EFileNotFoundError(text);
  if (code == EEXIST) throw error::EFileExistsError(text);
  throw error::ESystemError(text);
}

void raise_last_error(const std::string& what) { raise_system_error(what, errno); }

}  // namespace io
