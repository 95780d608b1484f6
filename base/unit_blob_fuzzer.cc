// Fuzzes the `unit` blob reader: any byte string either decodes or raises
// error::EParseError; a decoded unit writes back to an equal blob, and
// labels and converts without fault.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/error.h"
#include "base/unit.h"
#include "base/value_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  try {
    const Unit unit(std::vector<uint8_t>(data, data + size));
    // What was read writes back to a blob that reads as the same unit.
    if (!(Unit(unitBlob(unit)) == unit)) __builtin_trap();
    getLabel(unit, false, false);
    getLabel(unit, true, true);
    getLabel(unit, false, true);
    const double value = size * 37.5 - 100;
    convert(unit, value, unit, true);
    convert(Unit("kB/s"), value, unit, true);
    convert(unit, value, Unit("W"), true);
    valueText(unit, value, unit);
    ValueFormatter(unit, -value, value).text(value);
  } catch (const error::EParseError&) {
  }
  return 0;
}
