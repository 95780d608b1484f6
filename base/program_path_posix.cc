#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

#include "base/error.h"
#include "base/program_path.h"

namespace paths {

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

std::string companion_program(const std::string& name, const std::string& build_relative) {
  const std::string dir = program_directory();
  const std::string installed = dir + "/../libexec/tavrel/" + name;
  if (access(installed.c_str(), X_OK) == 0) return installed;
  return dir + "/" + build_relative + "/" + name;
}

}  // namespace paths
