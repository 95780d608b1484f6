#include "base/crash.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

TEST(DumpPath, ReplacesFromLastDotOfFileName) {
  EXPECT_EQ("/opt/tavrel/report.dmp", dump_path_for("/opt/tavrel/report.exe"));
  EXPECT_EQ("/opt/tavrel/a.b.dmp", dump_path_for("/opt/tavrel/a.b.c"));
  EXPECT_EQ("/opt/tavrel-1.2/tavrel-report.dmp", dump_path_for("/opt/tavrel-1.2/tavrel-report"));
  EXPECT_EQ("prog.dmp", dump_path_for("prog"));
  EXPECT_EQ("lumenara.dmp", dump_path_for(""));
}

struct Outcome {
  int status;
  std::string err;
};

// ctest runs these cases in parallel and the dump lands beside the program, so
// each case runs its own copy of the probe in a directory of its own.
class ProbeCopy {
 public:
  ProbeCopy() {
    // Under $TMPDIR (the system's temporary folder without it).
    std::string pattern = (std::filesystem::temp_directory_path() / "crash_probe.XXXXXX").string();
    dir_ = mkdtemp(pattern.data());
    program_ = dir_ + "/crash_probe";
    std::filesystem::copy_file(CRASH_PROBE, program_);
  }
  ~ProbeCopy() { std::filesystem::remove_all(dir_); }
  const std::string& program() const { return program_; }

 private:
  std::string dir_;
  std::string program_;
};

Outcome run_probe(const std::string& program, const char* how) {
  std::string cmd = program + " " + how + " 2>&1";
  FILE* p = popen(cmd.c_str(), "r");
  std::string out;
  std::array<char, 512> buf;
  while (size_t n = fread(buf.data(), 1, buf.size(), p)) out.append(buf.data(), n);
  int status = pclose(p);
  return {status, out};
}

std::string slurp(const std::string& path) {
  std::ifstream in(path);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

class CrashProbe : public testing::TestWithParam<const char*> {};

TEST_P(CrashProbe, LeavesDumpAndTellsWhere) {
  ProbeCopy probe;
  std::string dump = dump_path_for(probe.program());
  Outcome o = run_probe(probe.program(), GetParam());
  EXPECT_TRUE(WIFEXITED(o.status) == false || WEXITSTATUS(o.status) != 0);
  std::string expected =
      "An application error has been detected. Please report this error and "
      "submit the dump file in '" +
      dump + "' along with your error report";
  EXPECT_NE(std::string::npos, o.err.find(expected)) << o.err;
  std::string body = slurp(dump);
  EXPECT_EQ(0u, body.find("signal 11 (SEGV)")) << body.substr(0, 200);
  EXPECT_NE(std::string::npos, body.find("backtrace:"));
  EXPECT_NE(std::string::npos, body.find("[stack]"));  // from /proc/self/maps
}

INSTANTIATE_TEST_SUITE_P(SegvAndTerminate, CrashProbe, testing::Values("segv", "terminate"));

TEST(CrashProbeAbort, FatalAssertionLeavesNoDump) {
  ProbeCopy probe;
  std::string dump = dump_path_for(probe.program());
  Outcome o = run_probe(probe.program(), "abort");
  EXPECT_EQ(0u, o.err.find("Assertion failed: probe\n")) << o.err;  // the shell adds "Aborted"
  EXPECT_FALSE(std::ifstream(dump).good());
}

}  // namespace
