#include "base/crash.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
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

Outcome run_probe(const char* how) {
  std::string cmd = std::string(CRASH_PROBE) + " " + how + " 2>&1";
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
  std::string dump = dump_path_for(CRASH_PROBE);
  std::remove(dump.c_str());
  Outcome o = run_probe(GetParam());
  EXPECT_TRUE(WIFEXITED(o.status) == false || WEXITSTATUS(o.status) != 0);
  std::string expected = "An application error has been detected. Please report this error and "
                         "submit the dump file in '" + dump + "' along with your error report";
  EXPECT_NE(std::string::npos, o.err.find(expected)) << o.err;
  std::string body = slurp(dump);
  EXPECT_EQ(0u, body.find("signal 11 (SEGV)")) << body.substr(0, 200);
  EXPECT_NE(std::string::npos, body.find("backtrace:"));
  EXPECT_NE(std::string::npos, body.find("[stack]"));  // from /proc/self/maps
  std::remove(dump.c_str());
}

INSTANTIATE_TEST_SUITE_P(SegvAndTerminate, CrashProbe, testing::Values("segv", "terminate"));

TEST(CrashProbeAbort, FatalAssertionLeavesNoDump) {
  std::string dump = dump_path_for(CRASH_PROBE);
  std::remove(dump.c_str());
  Outcome o = run_probe("abort");
  EXPECT_EQ(0u, o.err.find("Assertion failed: probe\n")) << o.err;  // the shell adds "Aborted"
  EXPECT_FALSE(std::ifstream(dump).good());
}

}  // namespace
