// Texts and exceptions for the codes of failed system calls (errno values).
#pragma once

#include <string>

namespace io {

// The system's text for `code`, without trailing line ends; the code in
// decimal when the system has no text.
std::string system_error_text(int code);

// Raises the exception for `code` with the text `what` + ": " + the system's
// text: error::EFileNotFoundError for ENOENT and ENOTDIR, error::EFileExistsError
// for EEXIST, error::ESystemError for anything else.
[[noreturn]] void raise_system_error(const std::string& what, int code);

// raise_system_error with the code of the last failed call (errno).
[[noreturn]] void raise_last_error(const std::string& what);

}  // namespace io
