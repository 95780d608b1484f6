// Subcommands over times, zones and big numbers.
#include <iostream>

#include "base/bignum.h"
#include "base/error.h"
#include "base/time_text.h"
#include "base/zone.h"
#include "tools/commands.h"
#include "tools/hex.h"
#include "tools/zone_arg.h"

namespace tools {
namespace {

int64_t seconds_arg(Args& args) {
  const std::string text = args.positional("SECONDS");
  const int64_t t = Args::to_int(text);
  if (t < 0) throw error::EParseError("time before 1970: " + text);
  return t;
}

// SECONDS [--zone Z]: prints `text` of the time in the zone.
int print_in_zone(Args& args, std::string (*text)(int64_t t, zone_t zone)) {
  const zone_t zone = zone_arg(args);
  const int64_t t = seconds_arg(args);
  args.done();
  std::cout << text(t, zone) << "\n";
  return 0;
}

int time2str_command(Args& args) { return print_in_zone(args, time2str); }
int date2str_command(Args& args) { return print_in_zone(args, date2str); }

int add_month_command(Args& args) {
  return print_in_zone(args,
                       [](int64_t t, zone_t zone) { return std::to_string(add_month(t, zone)); });
}

int clock2str_command(Args& args) {
  const int64_t t = seconds_arg(args);
  args.done();
  std::cout << clock2str(t) << "\n";
  return 0;
}

int period2str_command(Args& args) {
  const std::string text = args.positional("V");
  const int64_t v = Args::to_int(text);
  args.done();
  if (!isPeriodValue(v)) throw error::EParseError("Unknown value (" + text + ") in period2str");
  std::cout << period2str(static_cast<int>(v)) << "\n";
  return 0;
}

int apply_zone_command(Args& args) {
  const std::string text = args.positional("Z");
  args.done();
  const int64_t v = Args::to_int(text);
  if (v < INT32_MIN || v > INT32_MAX) throw error::EParseError("zone out of range: " + text);
  const zone_t zone = timeZoneValue(static_cast<int32_t>(v));
  applyZone(zone);
  std::cout << zoneText(zone) << "\n";
  return 0;
}

int add_days_command(Args& args) {
  const zone_t zone = zone_arg(args);
  const int64_t t = seconds_arg(args);
  const int64_t n = Args::to_int(args.positional("N"));
  args.done();
  if (n < INT32_MIN || n > INT32_MAX) throw error::EParseError("too many days");
  std::cout << add_days(t, static_cast<int>(n), zone) << "\n";
  return 0;
}

int bignum_text(Args& args) {
  const std::vector<uint8_t> bytes = from_hex(args.positional("HEX_LE"));
  args.done();
  std::cout << BigNum::fromBytes(bytes).text() << "\n";
  return 0;
}

}  // namespace

std::vector<Command> time_commands() {
  return {
      {"time2str", "SECONDS [--zone Z]", time2str_command},
      {"date2str", "SECONDS [--zone Z]", date2str_command},
      {"clock2str", "SECONDS", clock2str_command},
      {"period2str", "V", period2str_command},
      {"apply-zone", "Z", apply_zone_command},
      {"add-days", "SECONDS N [--zone Z]", add_days_command},
      {"add-month", "SECONDS [--zone Z]", add_month_command},
      {"bignum-text", "HEX_LE", bignum_text},
  };
}

}  // namespace tools
