// The leaves of a report mail that render the stored report while the SMTP
// client writes the message: its plain text, its HTML and each chart. None
// of them holds rendered text; each reads the report through the read model
// when its turn comes.
//
// The instance (and the image generator) are not owned and must outlive the
// bodies. Used on one thread.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "base/zone.h"
#include "email/mime_body.h"
#include "report/html_image_generator.h"
#include "report/read_model.h"
#include "resource/collection.h"

// The plain-text alternative: "text/plain", quoted-printable. Raises what
// the text renderer raises (the read model's failures).
class ReportTextMimeBody : public email::UnstructuredMimeBody {
 public:
  ReportTextMimeBody(report::ReportInstance& instance, zone_t zone);

 protected:
  void writeContent(std::ostream& out) override;

 private:
  report::ReportInstance* instance_;  // not owned
  zone_t zone_;
};

// The HTML alternative: "text/html", quoted-printable, styled by resource 0
// of `resources`. A style sheet that can't be read is logged and the report
// goes out unstyled. Raises what the HTML renderer and `images` raise.
class ReportHtmlMimeBody : public email::UnstructuredMimeBody {
 public:
  ReportHtmlMimeBody(report::ReportInstance& instance, report::html::ImageGenerator& images,
                     zone_t zone, resource::resource_collection& resources);

  // The <style> block of the style sheet in `resources`; empty (and the
  // error logged) when the sheet can't be read.
  static std::string styleBlock(resource::resource_collection& resources);

 protected:
  void writeContent(std::ostream& out) override;

 private:
  report::ReportInstance* instance_;      // not owned
  report::html::ImageGenerator* images_;  // not owned
  zone_t zone_;
  resource::resource_collection* resources_;  // not owned
};

// One chart: "image/png", base64, with the chart's name as its content id.
// The chart is drawn over the period of the instance when the part is
// written; a chart that can't be drawn comes out as a picture of the error
// text. A failure to fill the chart (the graph's stored data can't be read)
// passes out of the write.
class ReportGraphMimeBody : public email::UnstructuredMimeBody {
 public:
  ReportGraphMimeBody(report::ReportInstance& instance, std::unique_ptr<report::ReportGraph> graph,
                      std::string contentId, zone_t zone);

 protected:
  void writeContent(std::ostream& out) override;

 private:
  report::ReportInstance* instance_;            // not owned
  std::unique_ptr<report::ReportGraph> graph_;  // owned
  zone_t zone_;
};
