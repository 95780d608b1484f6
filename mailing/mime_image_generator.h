// The pictures of a report mail: the HTML renderer asks for a picture, a
// spacer or a chart, and gets back an <img> tag that refers by "cid:" to a
// part that this generator appends to the mail's multipart/related.
//
// A named picture and the spacer are attached once per mail, however often
// they are asked for. Each chart gets a part of its own, named "chart0",
// "chart1", ... in the order asked, counted from 0 for each generator (so
// for each mail); the chart is drawn only when its part is written, after
// the HTML is complete.
//
// A resource file that can't be read is logged at level 0 and left out of
// the mail; its <img> tag is still returned. A named picture is not tried
// again in the same mail; the spacer is tried again at its next use.
//
// The instance, the multipart and the resource store are not owned and must
// outlive the generator. Used on one thread.
#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "base/zone.h"
#include "email/mime_multipart.h"
#include "report/html_image_generator.h"
#include "report/read_model.h"
#include "resource/collection.h"

class MimeImageGenerator : public report::html::ImageGenerator {
 public:
  // Charts are drawn in `zone`.
  MimeImageGenerator(report::ReportInstance& instance, email::MimeMultipart& related, zone_t zone,
                     resource::resource_collection& resources);

  // `which` is a report::html::kPicture value; another raises error::EFatal
  // "Unknown picture!".
  void picture(std::string& out, int which) override;
  void spacer(std::string& out, int width, int height) override;
  void chart(std::string& out, const report::ReportGraph& graph) override;

 private:
  // Appends resource `number` as a picture part; false (and logged) when it
  // can't be read.
  bool attach(int32_t number, const std::string& contentId, const std::string& fileName);

  std::set<int> attached_;  // the `which` values asked for so far
  bool spacer_attached_ = false;
  report::ReportInstance* instance_;  // not owned
  email::MimeMultipart* related_;     // not owned
  uint32_t next_chart_ = 0;
  zone_t zone_;
  resource::resource_collection* resources_;  // not owned
};
