// Subcommands over units and value texts.
#include <cstdio>
#include <iostream>

#include "base/error.h"
#include "base/unit.h"
#include "base/value_format.h"
#include "tools/commands.h"
#include "tools/hex.h"

namespace tools {
namespace {

// A text unit, or "hex:" and a blob.
Unit unit_arg(const std::string& text) {
  const std::string hex = "hex:";
  if (text.starts_with(hex)) return Unit(from_hex(text.substr(hex.size())));
  return Unit(text);
}

int to_int32(const std::string& text) {
  const int64_t v = Args::to_int(text);
  if (v < INT32_MIN || v > INT32_MAX) throw error::EParseError("out of range: " + text);
  return static_cast<int>(v);
}

int unit_label(Args& args) {
  const auto blob = args.option("--blob");
  const auto text = args.option("--text");
  if (blob.has_value() == text.has_value()) {
    throw error::EParseError("give exactly one of --blob and --text");
  }
  const bool alternate = args.flag("--alternate");
  const bool omit_one = args.flag("--omit-one");
  args.done();
  const Unit unit = blob ? Unit(from_hex(*blob)) : Unit(*text);
  std::cout << getLabel(unit, alternate, omit_one) << "\n";
  return 0;
}

int unit_convert(Args& args) {
  const Unit from = unit_arg(args.required("--from"));
  Unit to = unit_arg(args.required("--to"));
  const bool auto_scale = args.flag("--auto-scale");
  if (args.flag("--to-binary")) to.setBinary(true);
  const double value = Args::to_double(args.positional("VALUE"));
  args.done();
  const auto [v, unit] = convert(from, value, to, auto_scale);
  char number[64];
  std::snprintf(number, sizeof number, "%.17g", v);
  std::cout << number << " " << getLabel(unit, false, true) << "\n";
  return 0;
}

int value_text(Args& args) {
  Unit from = unit_arg(args.required("--from"));
  const Unit to = unit_arg(args.required("--to"));
  if (args.flag("--compact")) from.setCompact(true);
  const double value = Args::to_double(args.positional("VALUE"));
  args.done();
  std::cout << valueText(from, value, to) << "\n";
  return 0;
}

int number_text(Args& args) {
  const double value = Args::to_double(args.positional("VALUE"));
  const int width = to_int32(args.positional("WIDTH"));
  const int precision = to_int32(args.positional("PRECISION"));
  args.done();
  std::cout << numberText(value, width, precision) << "\n";
  return 0;
}

}  // namespace

std::vector<Command> units_commands() {
  return {
      {"unit-label", "(--blob HEX | --text TEXT) [--alternate] [--omit-one]", unit_label},
      {"unit-convert", "--from UNIT --to UNIT [--auto-scale] [--to-binary] VALUE", unit_convert},
      {"value-text", "--from UNIT --to UNIT [--compact] VALUE", value_text},
      {"number-text", "VALUE WIDTH PRECISION", number_text},
  };
}

}  // namespace tools
