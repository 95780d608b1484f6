// Fuzzes the unit text parser: any text gives a unit, which labels and
// converts without fault.
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/unit.h"
#include "base/value_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const Unit unit(text);
  getLabel(unit, false, false);
  getLabel(unit, true, true);
  const double value = size * 1234.5 - 3;
  convert(unit, value, unit, true);
  convert(unit, 1.0 / (size + 1), Unit("s"), true);
  convert(Unit("kB"), value, unit, false);
  valueText(unit, value, unit);
  ValueFormatter(unit, 0, value).text(value / 2);
  return 0;
}
