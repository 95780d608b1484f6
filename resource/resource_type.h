// The kinds of resource file and how a file's kind is found.
#pragma once

#include <string>

namespace resource {

enum resource_type { png = 0, gif = 1, css = 2 };

// The type by the extension of the file name: what follows the last '.' of
// the path's last component, folded to lower case, is "png", "gif" or "css".
// Raises resource_error "No file extension found in filename: " + path, or
// "Unknown resource file type: " + the extension as it stands in the path.
resource_type type_from_path(const std::string& path);

// "image/png", "image/gif" or "text/css". Any other value raises
// error::EFatal "Unknown resource_type encountered in resource_t::mime_type()".
const char* mime_type_of(resource_type type);

}  // namespace resource
