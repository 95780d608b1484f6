// Subcommands over the reporter's calendar: when a report is next due and
// which period a generation covers.
#include <iostream>
#include <limits>
#include <string>

#include "base/error.h"
#include "reporter/report_period.h"
#include "reporter/schedule.h"
#include "tools/commands.h"
#include "tools/zone_arg.h"
#include "tql/schema.h"

namespace tools {
namespace {

int32_t int32_arg(const std::string& name, const std::string& text) {
  const int64_t v = Args::to_int(text);
  if (v < std::numeric_limits<int32_t>::min() || v > std::numeric_limits<int32_t>::max()) {
    throw error::EParseError(name + " out of range: " + text);
  }
  return static_cast<int32_t>(v);
}

// --last T --date D --time S --frequency F [--zone Z]: the next time.
int next_generation_command(Args& args) {
  const zone_t zone = zone_arg(args);
  const int64_t last = Args::to_int(args.required("--last"));
  const int32_t date = int32_arg("--date", args.required("--date"));
  const int64_t time = Args::to_int(args.required("--time"));
  const int32_t frequency = int32_arg("--frequency", args.required("--frequency"));
  args.done();
  std::cout << calc_next_generation_time(last, date, time, frequency, zone) << "\n";
  return 0;
}

// A Report of type 1 with the period the arguments name: --period P, or
// --fixed START DURATION (a null period), or none.
tql::patch_t periodReport(Args& args) {
  tql::patch_t report;
  report.class_ = 5;
  report.set_property(tql::make_property<tql::kind::kEnum>(
      schema::kType, tql::enum_value_t{schema::kReportTypeEnum, 1}));
  if (const auto period = args.option("--period")) {
    const uint32_t value = static_cast<uint32_t>(Args::to_uint(*period));
    report.set_property(tql::make_property<tql::kind::kEnum>(
        schema::kPeriod, tql::enum_value_t{schema::kPeriodEnum, value}));
  } else if (const auto start = args.option("--fixed")) {
    auto null = tql::make_property(25);
    null->name = schema::kPeriod;
    null->is_null = true;
    report.set_property(std::move(null));
    report.set_property(
        tql::make_property<tql::kind::kDate>(schema::kStartTime, Args::to_int(*start)));
    report.set_property(tql::make_property<tql::kind::kDate>(
        schema::kDuration, Args::to_int(args.positional("DURATION"))));
  }
  return report;
}

// --when T [--period P | --fixed START DURATION] [--zone Z]: "start duration".
int resolve_period_command(Args& args) {
  const zone_t zone = zone_arg(args);
  const int64_t when = Args::to_int(args.required("--when"));
  const tql::patch_t report = periodReport(args);
  args.done();
  ResolvedIssue issue;
  Report::resolveIssue(report, when, issue, zone);
  std::cout << issue.start << " " << issue.duration << "\n";
  return 0;
}

}  // namespace

std::vector<Command> reporter_commands() {
  return {
      {"next-generation", "--last T --date D --time S --frequency F [--zone Z]",
       next_generation_command},
      {"resolve-period", "--when T [--period P | --fixed START DURATION] [--zone Z]",
       resolve_period_command},
  };
}

}  // namespace tools
