#include "resource/collection.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "base/log.h"
#include "resource/test_files.h"

namespace resource {
namespace {

TEST(ResourceNames, ThirtyFiveFixedNamesOfKnownTypes) {
  EXPECT_STREQ("tavrel.css", resource_file_name(kStyleSheet));
  EXPECT_STREQ("ok_lamp_small.png", resource_file_name(kOkLamp));
  EXPECT_STREQ("warning_lamp_small.png", resource_file_name(kWarningLamp));
  EXPECT_STREQ("error_lamp_small.png", resource_file_name(kErrorLamp));
  EXPECT_STREQ("wdownok_lamp_small.png", resource_file_name(17));
  EXPECT_STREQ("wblank_lamp_small.png", resource_file_name(26));
  EXPECT_STREQ("link_small.gif", resource_file_name(29));
  EXPECT_STREQ("report_logo.png", resource_file_name(kReportLogo));
  EXPECT_STREQ("spacer.gif", resource_file_name(kSpacer));
  EXPECT_EQ(nullptr, resource_file_name(35));
  EXPECT_EQ(nullptr, resource_file_name(-1));
  std::set<std::string> distinct;
  for (int32_t n = 0; n < kResourceCount; ++n) {
    distinct.insert(resource_file_name(n));
    EXPECT_NO_THROW(type_from_path(resource_file_name(n))) << n;
  }
  EXPECT_EQ(35u, distinct.size());
}

class ResourceCollection : public ResourceFilesTest {
 protected:
  void SetUp() override {
    ResourceFilesTest::SetUp();
    set_log_sink([this](const std::string& m, uint32_t t) {
      logged_.push_back(std::to_string(t) + " " + m);
    });
  }
  void TearDown() override {
    set_log_sink(nullptr);
    ResourceFilesTest::TearDown();
  }
  std::vector<std::string> logged_;
};

TEST_F(ResourceCollection, LoadsFromTheDirectoryAndKeepsTheEntry) {
  resource_collection store(TestClock());
  store.set_directory(dir_.string());
  Write("tavrel.css", "body {}");
  const resource_t& css = store.get(0);
  EXPECT_EQ(Path("tavrel.css"), css.name());
  EXPECT_EQ("body {}", css.text());
  EXPECT_EQ(&css, &store.get(0));
}

TEST_F(ResourceCollection, MissingFileRaisesEachTimeUntilItComes) {
  resource_collection store(TestClock());
  store.set_directory(dir_.string());
  const std::string expected =
      "Error loading resource \"" + Path("spacer.gif") +
      "\": Error obtaining handle to read file size: No such file or directory";
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(expected, FaultText<resource_error>([&] { store.get(34); }));
  Write("spacer.gif", "GIF89a");
  EXPECT_EQ("GIF89a", store.get(34).text());
  EXPECT_TRUE(logged_.empty());
}

TEST_F(ResourceCollection, UnknownNumberIsRefused) {
  resource_collection store(TestClock());
  EXPECT_EQ("Unknown resource number: 35", FaultText<resource_error>([&] { store.get(35); }));
}

TEST_F(ResourceCollection, GetsWithinSixtySecondsReadNoFileInformation) {
  resource_collection store(TestClock());
  store.set_directory(dir_.string());
  Write("graph.png", "g");
  store.get(27);
  // With the file gone, any look at it would fail and log.
  std::filesystem::remove(Path("graph.png"));
  now_ += 60;
  EXPECT_EQ("g", store.get(27).text());
  EXPECT_EQ("g", store.get(27).text());
  EXPECT_TRUE(logged_.empty());
  now_ += 1;
  EXPECT_EQ("g", store.get(27).text());
  ASSERT_EQ(1u, logged_.size());
  EXPECT_EQ("0 Error updating resource: Error retrieving timestamp for file: " + Path("graph.png"),
            logged_[0]);
}

TEST_F(ResourceCollection, ChangedFileComesInAfterSixtySeconds) {
  resource_collection store(TestClock());
  store.set_directory(dir_.string());
  SetFileTime(Write("report_logo.png", "v1"), 0);
  const resource_t& logo = store.get(32);
  SetFileTime(Write("report_logo.png", "version 2"), 10);
  now_ += 61;
  EXPECT_EQ("version 2", store.get(32).text());
  EXPECT_EQ("version 2", logo.text());
}

TEST_F(ResourceCollection, EmptyDirectoryOpensTheBareNameInTheWorkingDirectory) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(dir_);
  Write("note_small.png", "note");
  resource_collection store(TestClock());
  std::string name;
  std::string text;
  try {
    name = store.get(30).name();
    text = store.get(30).text();
  } catch (...) {
  }
  std::filesystem::current_path(before);
  EXPECT_EQ("note_small.png", name);
  EXPECT_EQ("note", text);
}

}  // namespace
}  // namespace resource
