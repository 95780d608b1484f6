// A test fixture with a directory of its own and a clock the test sets.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "resource/resource.h"

namespace resource {

// The text of the exception of class E that `f` raises, or "no fault".
template <class E, class F>
std::string FaultText(F&& f) {
  try {
    f();
  } catch (const E& e) {
    return e.text();
  }
  return "no fault";
}

class ResourceFilesTest : public testing::Test {
 protected:
  void SetUp() override {
    const testing::TestInfo* info = testing::UnitTest::GetInstance()->current_test_info();
    const char* build = std::getenv("TAVREL_BUILD_DIR");
    dir_ = std::filesystem::path(build ? build : testing::TempDir()) / "test-tmp" /
           (std::string(info->test_suite_name()) + "." + info->name());
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  // Writes `contents` to `name` in the directory; returns the path.
  std::string Write(const std::string& name, const std::string& contents) {
    const std::string path = (dir_ / name).string();
    std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
    return path;
  }
  // Sets the file's last write time to a fixed moment plus `seconds`.
  void SetFileTime(const std::string& path, int seconds) {
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type(std::chrono::hours(24 * 365 * 50)) +
                  std::chrono::seconds(seconds));
  }
  std::string Path(const std::string& name) const { return (dir_ / name).string(); }
  Clock TestClock() {
    return [this] { return now_; };
  }

  std::filesystem::path dir_;
  int64_t now_ = 1'700'000'000;
};

}  // namespace resource
