#include "email/test_process.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

namespace email {
namespace {

constexpr auto kPatience = std::chrono::seconds(20);
constexpr auto kPoll = std::chrono::milliseconds(20);

std::filesystem::path freshFolder() {
  std::random_device random;
  auto path = std::filesystem::temp_directory_path() /
              ("tavrel-email-test-" + std::to_string(random()) + std::to_string(random()));
  std::filesystem::create_directories(path);
  return path;
}

template <typename Done>
bool waitUntil(Done done) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(kPoll);
  }
  return true;
}

}  // namespace

BackgroundPython::BackgroundPython(const std::string& script,
                                   std::initializer_list<std::pair<std::string, std::string>> files)
    : folder_(freshFolder()) {
  for (const auto& [name, content] : files) std::ofstream(folder_ / name) << content;
  const std::string f = folder_.string();
  const std::string command = "/usr/bin/python3 '" + script + "' '" + f + "' >'" + f +
                              "/output' 2>&1 & echo $! >'" + f + "/pid'";
  if (std::system(command.c_str()) == 0) pid_ = read("pid");
  while (!pid_.empty() && (pid_.back() == '\n')) pid_.pop_back();
}

BackgroundPython::~BackgroundPython() {
  if (!pid_.empty() && running()) {
    std::system(("kill " + pid_ + " 2>/dev/null").c_str());
    waitUntil([this] { return !running(); });
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

// Read from /proc, as a process that has ended may stay a zombie for a
// while when nobody reaps the orphans: it counts as ended.
bool BackgroundPython::running() const {
  std::ifstream stat("/proc/" + pid_ + "/stat");
  std::string pid, command, state;
  if (!(stat >> pid >> command >> state)) return false;
  return state != "Z" && state != "X";
}

int BackgroundPython::port() {
  if (!waitUntil([this] { return std::filesystem::exists(folder_ / "port"); })) return 0;
  return std::atoi(read("port").c_str());
}

std::string BackgroundPython::read(const std::string& name) const {
  std::ifstream in(folder_ / name, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

bool BackgroundPython::waitForExit() {
  return !pid_.empty() && waitUntil([this] { return !running(); });
}

bool parse_maildir(BackgroundPython& server) {
  const auto parts = server.folder() / "parts";
  std::filesystem::create_directories(parts);
  const std::string command = "/usr/bin/python3 '" + kTestData + "/read_maildir.py' '" +
                              (server.folder() / "maildir").string() + "' '" + parts.string() +
                              "' >'" + (server.folder() / "parsed").string() + "' 2>&1";
  return std::system(command.c_str()) == 0;
}

}  // namespace email
