// The outline of a report for people and tests: every item of the read model
// on a line of its own, indented two blanks a level, with its kind, its texts
// in double quotes and what the renderers don't show (anchors, origins, the
// flags of a chart). Unlike the text renderer, everything inside a
// sub-section stands one level deeper than the sub-section.
#pragma once

#include <functional>
#include <ostream>
#include <string>

#include "report/read_model.h"

namespace tools {

// What the outline adds to a graph's line, such as its stored samples;
// empty adds nothing.
using GraphDetails = std::function<std::string(report::ReportGraph&)>;

// Writes the outline of `instance` to `out`. Exceptions of the read model
// pass through.
void print_outline(report::ReportInstance& instance, std::ostream& out,
                   const GraphDetails& details);

// `text` in double quotes, with \n, \r, \t, \", \\ and other control bytes
// (\xNN) escaped, so that each item stays on one line.
// (Not named `quoted`: where <iomanip> is in sight, argument-dependent lookup
// would prefer std::quoted's overload for non-const strings.)
std::string quote_line(const std::string& text);

}  // namespace tools
