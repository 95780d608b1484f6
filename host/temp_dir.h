// A fresh directory under the system's temporary folder, removed with all
// it holds when the object goes.
#pragma once

#include <string>

namespace host {

class TempDir {
 public:
  // Raises error::ESystemError when the directory can't be made.
  explicit TempDir(const std::string& stem);
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace host
