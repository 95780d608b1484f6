// Black-box tests: runs the built tavrel-tool and compares what it prints.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

struct Run {
  int code = -1;
  std::string out;
  std::string err;
};

std::string slurp(const std::filesystem::path& path) {
  std::ifstream in(path);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

// Runs `env TAVREL_TOOL args` in a shell; `env` may set or unset
// variables ("TZ=Europe/Copenhagen", "env -u TZ").
Run tool(const std::string& args, const std::string& env = "") {
  const std::filesystem::path dir =
      std::filesystem::temp_directory_path() /
      ("tool_test." + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "." +
       ::testing::UnitTest::GetInstance()->current_test_info()->name());
  std::filesystem::create_directories(dir);
  const std::string command = env + " " TAVREL_TOOL " " + args + " >" + (dir / "out").string() +
                              " 2>" + (dir / "err").string() + "; echo $? >" +
                              (dir / "code").string();
  EXPECT_EQ(0, std::system(command.c_str()));
  Run r;
  r.out = slurp(dir / "out");
  r.err = slurp(dir / "err");
  r.code = std::stoi(slurp(dir / "code"));
  std::filesystem::remove_all(dir);
  return r;
}

// The one line that a successful run prints.
std::string line(const std::string& args, const std::string& env = "") {
  const Run r = tool(args, env);
  EXPECT_EQ(0, r.code) << args << ": " << r.err;
  EXPECT_EQ("", r.err) << args;
  return r.out;
}

// The error line of a failing run.
std::string failure(const std::string& args) {
  const Run r = tool(args);
  EXPECT_EQ(1, r.code) << args;
  EXPECT_EQ("", r.out) << args;
  return r.err;
}

TEST(ToolUnits, Labels) {
  EXPECT_EQ("KiB/s\n", line("unit-label --blob 11011109010921012102"));
  EXPECT_EQ("kB/s\n", line("unit-label --blob 11011109010921012102 --alternate --omit-one"));
  EXPECT_EQ("1/s\n", line("unit-label --text /s"));
  EXPECT_EQ("/s\n", line("unit-label --text /s --omit-one"));
  EXPECT_EQ("1%\n", line("unit-label --text pct --alternate"));
  EXPECT_EQ("\n", line("unit-label --blob 5002ffff"));
}

TEST(ToolUnits, Conversions) {
  EXPECT_EQ("1.5 KiB\n", line("unit-convert --from B --to B --auto-scale --to-binary 1536"));
  EXPECT_EQ("1.5 kW\n", line("unit-convert --from W --to W --auto-scale 1500"));
  EXPECT_EQ("500 ms\n", line("unit-convert --from s --to s --auto-scale 0.5"));
  EXPECT_EQ("5000 s\n", line("unit-convert --from s --to s --auto-scale 5000"));
  EXPECT_EQ("-5000 W\n", line("unit-convert --from kW --to W --auto-scale -5"));
  EXPECT_EQ("53 week\n", line("unit-convert --from year --to week 1"));
  EXPECT_EQ("300 B/min\n", line("unit-convert --from hex:110111092102 --to B/min 5"));
}

TEST(ToolUnits, Texts) {
  EXPECT_EQ("1 days, 1h 1m\n", line("value-text --from s --to s 90061"));
  EXPECT_EQ("1d 1h 1m\n", line("value-text --from s --to s --compact 90061"));
  EXPECT_EQ("60.0 s\n", line("value-text --from s --to s 60"));
  EXPECT_EQ("60m 0s\n", line("value-text --from s --to s 3600"));
  EXPECT_EQ("1.50 kW\n", line("value-text --from W --to W 1500"));
  EXPECT_EQ("3.142\n", line("number-text 3.14159 3 3"));
  EXPECT_EQ("3.141590\n", line("number-text 3.14159 -1 -1"));
  EXPECT_EQ("nan\n", line("number-text nan 3 3"));
}

TEST(ToolUnits, BadInput) {
  EXPECT_EQ("error: Error parsing blob, out of data\n", failure("unit-label --blob 2102"));
  EXPECT_EQ("error: entryFromBlob met eod\n", failure("unit-convert --from hex:33 --to s 1"));
  EXPECT_EQ("error: Unexpected unit type in entryFromBlob: 65\n",
            failure("unit-label --blob 4101"));
  EXPECT_EQ("error: not a hex byte string: zz\n", failure("unit-label --blob zz"));
  EXPECT_EQ("error: give exactly one of --blob and --text\n",
            failure("unit-label --blob 1101 --text s"));
  EXPECT_EQ("error: not a number: x\n", failure("value-text --from s --to s x"));
  EXPECT_EQ("error: Width or precision too large\n", failure("number-text 1 100000 3"));
}

TEST(ToolTime, Texts) {
  EXPECT_EQ("1970-01-01 00:00:00\n", line("time2str 0 --zone 0"));
  EXPECT_EQ("1970-01-01 01:01:01\n", line("time2str 0 --zone 3661"));
  EXPECT_EQ("2026-01-05 08:03:09\n", line("time2str 1767600189 --zone 0"));
  EXPECT_EQ("2026-1-5\n", line("date2str 1767600189 --zone 0"));
  EXPECT_EQ("01:01:01\n", line("clock2str 3661"));
  EXPECT_EQ("1 year\n", line("period2str 0"));
  EXPECT_EQ("1 hour\n", line("period2str 7"));
  EXPECT_EQ("340282366920938463463374607431768211456\n",
            line("bignum-text 0000000000000000000000000000000001"));
  EXPECT_EQ("0\n", line("bignum-text 00000000"));
  EXPECT_EQ("0\n", line("bignum-text ''"));
}

TEST(ToolTime, Zones) {
  EXPECT_EQ("GMT-0\n", line("apply-zone 0"));
  EXPECT_EQ("GMT-1\n", line("apply-zone 3600"));
  EXPECT_EQ("GMT1:30\n", line("apply-zone -5400"));
  EXPECT_EQ("GMT-1:01:01\n", line("apply-zone 3661"));
  EXPECT_EQ("\n", line("apply-zone 16777215", "env -u TZ"));
  EXPECT_EQ("Europe/Copenhagen\n", line("apply-zone 16777215", "TZ=Europe/Copenhagen"));
  EXPECT_EQ("1970-01-01 01:00:00\n", line("time2str 0", "TZ=Europe/Copenhagen"));
  EXPECT_EQ("1970-01-01 00:00:00\n", line("time2str 0", "env -u TZ"));
}

TEST(ToolTime, DaylightSavingStepsKeepTheClock) {
  const std::string cph = "TZ=Europe/Copenhagen";
  // 2026-03-28 12:00 CET; the next day has 23 hours.
  EXPECT_EQ("1774778400\n", line("add-days 1774695600 1", cph));
  EXPECT_EQ("2026-03-29 12:00:00\n", line("time2str 1774778400", cph));
  // 2026-10-24 12:00 CEST; the next day has 25 hours.
  EXPECT_EQ("1792926000\n", line("add-days 1792836000 1", cph));
  EXPECT_EQ("2026-10-25 12:00:00\n", line("time2str 1792926000", cph));
  // A fixed zone has no such steps.
  EXPECT_EQ("1774782000\n", line("add-days 1774695600 1 --zone 3600"));
  EXPECT_EQ("1772539200\n", line("add-month 1769860800 --zone 0"));  // 31 Jan -> 3 Mar
}

TEST(ToolTime, BadInput) {
  EXPECT_EQ("error: time before 1970: -1\n", failure("time2str -1"));
  EXPECT_EQ("error: Unknown value (8) in period2str\n", failure("period2str 8"));
  EXPECT_EQ("error: zone out of range: 4294967296\n", failure("apply-zone 4294967296"));
  EXPECT_EQ("error: odd number of hex digits: 123\n", failure("bignum-text 123"));
  EXPECT_EQ("error: Couldn't get localtime for time 9223372036854775807\n",
            failure("time2str 9223372036854775807 --zone 0"));
  EXPECT_EQ("error: missing SECONDS\n", failure("clock2str"));
}

}  // namespace
