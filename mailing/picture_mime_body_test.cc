// A picture from the resource files as a mail part, byte for byte; and its
// bytes stay those it was made with when the resource is reloaded.
#include "mailing/picture_mime_body.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "email/mime_multipart.h"

namespace email {
namespace {

class PictureMimeBodyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::random_device random;
    dir_ = std::filesystem::temp_directory_path() /
           ("tavrel-picture-test-" + std::to_string(random()));
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  std::string writeFile(const std::string& name, const std::string& content) {
    const auto path = dir_ / name;
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }

  std::filesystem::path dir_;
};

TEST_F(PictureMimeBodyTest, PartHeadersAndBase64Content) {
  int64_t now = 1000;
  resource::resource_t spacer(writeFile("spacer.gif", "GIF89a"), [&now] { return now; });
  MimeMultipart related(MimeMultipart::kRelated);
  int counter = 1;
  related.contentType("1", counter);
  related.addPart(std::make_unique<PictureMimeBody>(spacer, "spacer", "spacer.gif"));

  // A reload of the resource after the part was made doesn't change it.
  writeFile("spacer.gif", "GIF87a-changed");
  std::filesystem::last_write_time(
      dir_ / "spacer.gif", std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  now += 3600;
  spacer.update();
  ASSERT_EQ(14u, spacer.size());

  std::ostringstream out;
  related.writeBody(out, "1", counter);
  EXPECT_EQ(
      "Your email program does not understand MIME format.\r\n"
      "You can edit your Tavrel alert path to use plain-text only,\r\n"
      "or your could upgrade your mail reader in order to read\r\n"
      "this mail.\r\n\r\n"
      "-----------_=_1.2\r\n"
      "Content-Type: image/gif\r\n"
      "Content-Transfer-Encoding: base64\r\n"
      "Content-Disposition: inline;\r\n\tfilename=\"spacer.gif\"\r\n"
      "Content-ID: <spacer>\r\n"
      "\r\n"
      "R0lGODlh\r\n"
      "\r\n"
      "-----------_=_1.2--\r\n",
      out.str());
}

}  // namespace
}  // namespace email
