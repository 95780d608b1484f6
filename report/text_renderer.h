// The plain-text form of a report, the alternative part of a report mail: an
// outline indented two blanks a level, with no header and no pictures. Every
// line ends with CR LF, except what a free text's markup gives, which stands
// unchanged.
#pragma once

#include <ostream>

#include "base/zone.h"
#include "report/read_model.h"

namespace report {

// Writes the folders and texts of `instance` to `out`, times in `zone`.
// Items of unknown kinds show as "Unknown ReportInstanceContent"; a free text
// whose markup doesn't parse shows the parse error instead. Exceptions of the
// read model pass through and leave the text unfinished; error::ESystemError
// comes from a time that can't be converted.
void render_report_text(ReportInstance& instance, std::ostream& out, zone_t zone);

}  // namespace report
