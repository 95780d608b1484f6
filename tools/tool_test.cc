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

// Arguments and the line that the tool prints for them (without "\n"),
// or the error text after "error: " for the failure checks.
struct Case {
  const char* args;
  const char* expected;
};

void expectLines(std::initializer_list<Case> cases, const std::string& env = "") {
  for (const Case& c : cases)
    EXPECT_EQ(std::string(c.expected) + "\n", line(c.args, env)) << c.args;
}

void expectFailures(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    EXPECT_EQ("error: " + std::string(c.expected) + "\n", failure(c.args)) << c.args;
  }
}

TEST(ToolUnits, Labels) {
  expectLines({
      {"unit-label --blob 11011109010921012102", "KiB/s"},
      {"unit-label --blob 11011109010921012102 --alternate --omit-one", "kB/s"},
      {"unit-label --text /s", "1/s"},
      {"unit-label --text /s --omit-one", "/s"},
      {"unit-label --text pct --alternate", "1%"},
      {"unit-label --blob 5002ffff", ""},
  });
}

TEST(ToolUnits, Conversions) {
  expectLines({
      {"unit-convert --from B --to B --auto-scale --to-binary 1536", "1.5 KiB"},
      {"unit-convert --from W --to W --auto-scale 1500", "1.5 kW"},
      {"unit-convert --from s --to s --auto-scale 0.5", "500 ms"},
      {"unit-convert --from s --to s --auto-scale 5000", "5000 s"},
      {"unit-convert --from kW --to W --auto-scale -5", "-5000 W"},
      {"unit-convert --from year --to week 1", "53 week"},
      {"unit-convert --from hex:110111092102 --to B/min 5", "300 B/min"},
  });
}

TEST(ToolUnits, Texts) {
  expectLines({
      {"value-text --from s --to s 90061", "1 days, 1h 1m"},
      {"value-text --from s --to s --compact 90061", "1d 1h 1m"},
      {"value-text --from s --to s 60", "60.0 s"},
      {"value-text --from s --to s 3600", "60m 0s"},
      {"value-text --from W --to W 1500", "1.50 kW"},
      {"number-text 3.14159 3 3", "3.142"},
      {"number-text 3.14159 -1 -1", "3.141590"},
      {"number-text nan 3 3", "nan"},
  });
}

TEST(ToolUnits, BadInput) {
  expectFailures({
      {"unit-label --blob 2102", "Error parsing blob, out of data"},
      {"unit-convert --from hex:33 --to s 1", "entryFromBlob met eod"},
      {"unit-label --blob 4101", "Unexpected unit type in entryFromBlob: 65"},
      {"unit-label --blob zz", "not a hex byte string: zz"},
      {"unit-label --blob 1101 --text s", "give exactly one of --blob and --text"},
      {"value-text --from s --to s x", "not a number: x"},
      {"number-text 1 100000 3", "Width or precision too large"},
  });
}

TEST(ToolTime, Texts) {
  expectLines({
      {"time2str 0 --zone 0", "1970-01-01 00:00:00"},
      {"time2str 0 --zone 3661", "1970-01-01 01:01:01"},
      {"time2str 1767600189 --zone 0", "2026-01-05 08:03:09"},
      {"date2str 1767600189 --zone 0", "2026-1-5"},
      {"clock2str 3661", "01:01:01"},
      {"period2str 0", "1 year"},
      {"period2str 7", "1 hour"},
      {"bignum-text 0000000000000000000000000000000001", "340282366920938463463374607431768211456"},
      {"bignum-text 00000000", "0"},
      {"bignum-text ''", "0"},
  });
}

TEST(ToolTime, Zones) {
  expectLines({
      {"apply-zone 0", "GMT-0"},
      {"apply-zone 3600", "GMT-1"},
      {"apply-zone -5400", "GMT1:30"},
      {"apply-zone 3661", "GMT-1:01:01"},
  });
  expectLines({{"apply-zone 16777215", ""}, {"time2str 0", "1970-01-01 00:00:00"}}, "env -u TZ");
  expectLines({{"apply-zone 16777215", "Europe/Copenhagen"}, {"time2str 0", "1970-01-01 01:00:00"}},
              "TZ=Europe/Copenhagen");
}

TEST(ToolTime, DaylightSavingStepsKeepTheClock) {
  expectLines(
      {
          // 2026-03-28 12:00 CET; the next day has 23 hours.
          {"add-days 1774695600 1", "1774778400"},
          {"time2str 1774778400", "2026-03-29 12:00:00"},
          // 2026-10-24 12:00 CEST; the next day has 25 hours.
          {"add-days 1792836000 1", "1792926000"},
          {"time2str 1792926000", "2026-10-25 12:00:00"},
      },
      "TZ=Europe/Copenhagen");
  expectLines({
      {"add-days 1774695600 1 --zone 3600", "1774782000"},  // a fixed zone: 24 hours
      {"add-month 1769860800 --zone 0", "1772539200"},      // 31 Jan -> 3 Mar
  });
}

TEST(ToolTime, BadInput) {
  expectFailures({
      {"time2str -1", "time before 1970: -1"},
      {"period2str 8", "Unknown value (8) in period2str"},
      {"apply-zone 4294967296", "zone out of range: 4294967296"},
      {"bignum-text 123", "odd number of hex digits: 123"},
      {"time2str 9223372036854775807 --zone 0",
       "Couldn't get localtime for time 9223372036854775807"},
      {"clock2str", "missing SECONDS"},
  });
}

TEST(ToolReporter, NextGenerationAndPeriods) {
  expectLines(
      {
          // Daily at 10:00, last 09:59 on 5 January 2026: today; at 10:00: tomorrow.
          {"next-generation --last 1767603540 --date 1 --time 36000 --frequency 0", "1767603600"},
          {"next-generation --last 1767603600 --date 1 --time 36000 --frequency 0", "1767690000"},
          {"next-generation --last 1767603600 --date 0 --time 36000 --frequency 0", "0"},
          // Period 3 in January: December 2025, 31 days.
          {"resolve-period --when 1768474800 --period 3", "1764543600 2678400"},
          // Period 1 on 30 March: from midnight CET, 24 hours whatever the clock did.
          {"resolve-period --when 1774864800 --period 1", "1774738800 86400"},
      },
      "TZ=Europe/Copenhagen");
  expectLines({
      // Monthly on the 1st, from 1 January 1970 00:00 GMT: 1 February.
      {"next-generation --last 0 --date 3 --time 0 --frequency 1 --zone 0", "2678400"},
      {"resolve-period --when 100 --fixed 5 3600 --zone 0", "5 3600"},
      {"resolve-period --when 100 --period 5 --zone 0", "0 100"},
      {"resolve-period --when 100 --zone 0", "0 0"},
  });
  expectFailures({
      {"next-generation --last 5 --date 9 --time 0 --frequency 0", "Unknown schedule kind 9"},
      {"resolve-period --when 100 --period 7", "Error got unknown period in Report::resolveIssue"},
      {"next-generation --last 5 --date 1 --time 0", "missing option --frequency"},
  });
}

}  // namespace
