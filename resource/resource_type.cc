#include "resource/resource_type.h"

#include "resource/resource_error.h"

namespace resource {

resource_type type_from_path(const std::string& path) {
  const size_t dot = path.rfind('.');
  const size_t slash = path.rfind('/');
  // A point in a directory name is not an extension.
  if (dot == std::string::npos || (slash != std::string::npos && slash > dot)) {
    throw resource_error("No file extension found in filename: " + path);
  }
  const std::string extension = path.substr(dot + 1);
  std::string folded = extension;
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  if (folded == "png") return png;
  if (folded == "gif") return gif;
  if (folded == "css") return css;
  throw resource_error("Unknown resource file type: " + extension);
}

const char* mime_type_of(resource_type type) {
  switch (type) {
    case png:
      return "image/png";
    case gif:
      return "image/gif";
    case css:
      return "text/css";
  }
  throw error::EFatal("Unknown resource_type encountered in resource_t::mime_type()");
}

}  // namespace resource
