#include <gtest/gtest.h>

#include <string>

#include "resource/resource.h"
#include "resource/test_files.h"

namespace resource {
namespace {

using ResourceUpdate = ResourceFilesTest;

TEST_F(ResourceUpdate, ChangedFileReloadsOnlyAfterSixtySeconds) {
  const std::string path = Write("s.css", "old");
  SetFileTime(path, 0);
  resource_t r(path, TestClock());
  const int64_t loaded = now_;
  Write("s.css", "new content");
  SetFileTime(path, 5);
  now_ += 60;
  r.update();
  EXPECT_EQ("old", r.text());
  EXPECT_EQ(loaded, r.checked_at());
  now_ += 1;
  r.update();
  EXPECT_EQ("new content", r.text());
  EXPECT_EQ(11u, r.size());
  EXPECT_EQ(loaded + 61, r.checked_at());
}

TEST_F(ResourceUpdate, SameWriteTimeIsNotNoticedAndKeepsCheckedAt) {
  const std::string path = Write("s.css", "first");
  SetFileTime(path, 0);
  resource_t r(path, TestClock());
  const int64_t loaded = now_;
  const uint64_t mtime = r.mtime();
  Write("s.css", "second");
  SetFileTime(path, 0);
  now_ += 3600;
  r.update();
  EXPECT_EQ("first", r.text());
  EXPECT_EQ(loaded, r.checked_at());
  EXPECT_EQ(mtime, r.mtime());
  // checked_at stayed, so the next call looks again and sees the change.
  SetFileTime(path, 1);
  now_ += 1;
  r.update();
  EXPECT_EQ("second", r.text());
  EXPECT_NE(mtime, r.mtime());
  EXPECT_EQ(now_, r.checked_at());
}

TEST_F(ResourceUpdate, GoneFileKeepsTheCopyAndRaisesOnlyAfterSixtySeconds) {
  const std::string path = Write("g.gif", "GIF89a");
  resource_t r(path, TestClock());
  std::filesystem::remove(path);
  now_ += 60;
  EXPECT_NO_THROW(r.update());
  now_ += 1;
  EXPECT_EQ("Error retrieving timestamp for file: " + path,
            FaultText<resource_error>([&] { r.update(); }));
  EXPECT_EQ("GIF89a", r.text());
}

TEST_F(ResourceUpdate, FailedReloadKeepsTheOldContents) {
  const std::string path = Write("d.png", "picture");
  SetFileTime(path, 0);
  resource_t r(path, TestClock());
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  now_ += 61;
  EXPECT_THROW(r.update(), resource_error);
  EXPECT_EQ("picture", r.text());
}

}  // namespace
}  // namespace resource
