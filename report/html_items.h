// The items inside the HTML report, one function each; used by the document
// and folder writers. Exceptions as for render_report_html.
#pragma once

#include <ostream>
#include <string>

#include "base/zone.h"
#include "report/html_image_generator.h"
#include "report/read_model.h"

namespace report::html {

// A row of the folder's table: label and right-aligned value, or, when
// `label` is empty, the value across both columns; then its comment. The
// first cell links to the row's origin when it has one.
void write_row(std::ostream& out, ReportRow& item, const std::string& label);
void write_graph(std::ostream& out, ReportGraph& graph, ImageGenerator& images);
// The heading, then a table of entries with a lamp, the time and the text.
void write_log(std::ostream& out, ReportLog& log, ImageGenerator& images, zone_t zone);
// The free text converted from its markup, or the parse error in its place.
void write_text(std::ostream& out, ReportText& text);

}  // namespace report::html
