#include "resource/resource.h"

#include <gtest/gtest.h>

#include <string>

#include "resource/test_files.h"

namespace resource {
namespace {

std::string ErrorOf(const std::string& path) {
  return FaultText<resource_error>([&] { resource_t r(path); });
}

TEST(ResourceType, ByTheLastExtensionFoldedToLowerCase) {
  EXPECT_EQ(png, type_from_path("report.PNG"));
  EXPECT_EQ(css, type_from_path("a.b.css"));
  EXPECT_EQ(gif, type_from_path("dir.png/spacer.GiF"));
  EXPECT_STREQ("image/png", mime_type_of(png));
  EXPECT_STREQ("image/gif", mime_type_of(gif));
  EXPECT_STREQ("text/css", mime_type_of(css));
}

TEST(ResourceType, BadExtensionsAreRefusedBeforeTheFileIsOpened) {
  EXPECT_EQ("No file extension found in filename: noext", ErrorOf("noext"));
  EXPECT_EQ("No file extension found in filename: dir.d/file", ErrorOf("dir.d/file"));
  EXPECT_EQ("Unknown resource file type: JPG", ErrorOf("/nonexistent/a.JPG"));
  EXPECT_EQ("Unknown resource file type: ", ErrorOf("/nonexistent/a."));
}

TEST(ResourceType, UnknownTypeHasNoMimeType) {
  EXPECT_EQ("Unknown resource_type encountered in resource_t::mime_type()",
            FaultText<error::EFatal>([] { mime_type_of(static_cast<resource_type>(3)); }));
}

using ResourceLoad = ResourceFilesTest;

TEST_F(ResourceLoad, LoadsTheWholeFile) {
  const std::string bytes("\x89PNG\r\n\x1a\n\0\xff", 10);
  const std::string path = Write("x.png", bytes);
  resource_t r(path, TestClock());
  EXPECT_EQ(png, r.type());
  EXPECT_STREQ("image/png", r.mime_type());
  EXPECT_EQ(path, r.name());
  EXPECT_EQ(10u, r.size());
  EXPECT_EQ(bytes, r.text());
  EXPECT_EQ(bytes, std::string(r.data().begin(), r.data().end()));
  EXPECT_NE(0u, r.mtime());
  EXPECT_EQ(now_, r.checked_at());
}

TEST_F(ResourceLoad, EmptyFileIsAGoodResource) {
  resource_t r(Write("empty.css", ""), TestClock());
  EXPECT_EQ(0u, r.size());
  EXPECT_EQ("", r.text());
}

TEST_F(ResourceLoad, MissingOrUnreadableFiles) {
  const std::string missing = Path("missing.gif");
  EXPECT_EQ("Error loading resource \"" + missing +
                "\": Error obtaining handle to read file size: No such file or directory",
            ErrorOf(missing));
  std::filesystem::create_directory(Path("dir.png"));
  EXPECT_EQ("Error loading resource \"" + Path("dir.png") +
                "\": Error getting file size: Not a regular file",
            ErrorOf(Path("dir.png")));
}

}  // namespace
}  // namespace resource
