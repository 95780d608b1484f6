#include "mailing/report_mail_test_support.h"

#include <fstream>
#include <random>

#include "base/log.h"
#include "grapher/check_image.h"
#include "tql/schema.h"

const std::string ResourceFolder::kStyleSheet = "body { color: black }\r\n";

namespace {

// A 1 x 1 transparent GIF.
const std::string kSpacerGif(
    "GIF89a\x01\x00\x01\x00\x80\x00\x00\x00\x00\x00\xff\xff\xff\x21\xf9\x04\x01\x00\x00\x00\x00"
    "\x2c\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00\x3b",
    43);

// A small real PNG that shows `text`.
std::string png(const std::string& text) {
  const std::vector<uint8_t> bytes = grapher::errorPicture(text);
  return std::string(bytes.begin(), bytes.end());
}

}  // namespace

report::fake::Instance sampleReport() {
  namespace fake = report::fake;
  fake::Instance instance(
      {fake::folder(schema::kFolderNode, "web01",
                    {fake::row("Availability", "99.5 %"),
                     fake::log("Incidents", {{report::kSeverityOk, "up", kStart + 3600},
                                             {report::kSeverityWarning, "slow", kStart + 7200},
                                             {report::kSeverityAlert, "down", kStart + 9000},
                                             {report::kSeverityOk, "up again", kStart + 9600}}),
                     fake::graph("Response time")},
                    {fake::folder(schema::kFolderCheck, "http", {fake::graph("Latency")})})});
  instance.start_ = kStart;
  instance.duration_ = kDay;
  instance.generated_ = kStart + kDay + 60;
  return instance;
}

ResourceFolder::ResourceFolder() {
  std::random_device random;
  dir_ = std::filesystem::temp_directory_path() / ("tavrel-mail-test-" + std::to_string(random()));
  std::filesystem::create_directories(dir_);
  store_.set_directory(dir_.string());
  write("tavrel.css", kStyleSheet);
  write("ok_lamp_small.png", png("ok"));
  write("warning_lamp_small.png", png("warning"));
  write("error_lamp_small.png", png("alert"));
  write("report_logo.png", png("Tavrel"));
  write("spacer.gif", kSpacerGif);
}

ResourceFolder::~ResourceFolder() { std::filesystem::remove_all(dir_); }

void ResourceFolder::write(const std::string& name, const std::string& content) {
  std::ofstream(dir_ / name, std::ios::binary) << content;
}

void ResourceFolder::remove(const std::string& name) { std::filesystem::remove(dir_ / name); }

LogCapture::LogCapture() : mask_(log_mask()) {
  set_log_mask(0xffffffff);
  set_log_sink([this](const std::string& msg, uint32_t level) {
    (level == kLogAlways ? lines : traces).push_back(msg);
  });
}

LogCapture::~LogCapture() {
  set_log_sink({});
  set_log_mask(mask_);
}
