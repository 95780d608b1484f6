#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

#include "base/error.h"
#include "tools/program_path.h"

namespace tools {

std::string program_directory() {
  char path[PATH_MAX];
  ssize_t n = readlink("/proc/self/exe", path, sizeof(path) - 1);
  if (n <= 0) {
    throw error::ESystemError(std::string("Cannot find the program's file: ") +
                              std::strerror(errno));
  }
  std::string self(path, static_cast<size_t>(n));
  return self.substr(0, self.rfind('/'));
}

}  // namespace tools
