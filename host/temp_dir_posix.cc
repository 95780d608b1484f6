#include <stdlib.h>

#include <filesystem>

#include "host/temp_dir.h"
#include "io/system_error.h"

namespace host {

TempDir::TempDir(const std::string& stem) {
  const char* base = getenv("TMPDIR");
  std::string pattern = std::string(base && *base ? base : "/tmp") + "/" + stem + "-XXXXXX";
  if (!mkdtemp(pattern.data())) io::raise_last_error("Cannot make directory " + pattern);
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace host
