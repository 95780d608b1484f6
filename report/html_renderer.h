// The HTML form of a report: one HTML 4.01 document, written to a stream as
// the read model is walked, folder by folder. It knows neither the database
// nor how pictures reach the reader; it asks an ImageGenerator for the HTML
// of each picture. All line ends are CR LF. The style sheet of the resource
// files styles it through the class names of its spans and tables.
#pragma once

#include <ostream>
#include <string>

#include "base/zone.h"
#include "report/html_image_generator.h"
#include "report/read_model.h"

namespace report {

// Writes the whole document for `instance` to `out`: the head with
// `style_block` (ready-made HTML, possibly empty), the header block with the
// report's period and logo, then its folders and texts. All times are shown
// in `zone`.
//
// Items of unknown kinds, and folders and log entries of unknown types, are
// written as "Unknown ..." texts in their place; a free text whose markup
// doesn't parse shows the parse error instead. Exceptions of the read model
// and of `images` pass through and leave the document unfinished;
// error::ESystemError comes from a time that can't be converted.
void render_report_html(std::ostream& out, ReportInstance& instance, const std::string& style_block,
                        html::ImageGenerator& images, zone_t zone);

// Writes one folder with all that is in it, sub-sections and child folders
// included. Exceptions as for render_report_html.
void render_folder(ReportFolder& folder, std::ostream& out, html::ImageGenerator& images,
                   zone_t zone);

}  // namespace report
