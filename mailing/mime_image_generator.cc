#include "mailing/mime_image_generator.h"

#include <memory>

#include "base/error.h"
#include "base/log.h"
#include "mailing/picture_mime_body.h"
#include "mailing/report_bodies.h"
#include "report/html_resources.h"
#include "resource/resource_error.h"

MimeImageGenerator::MimeImageGenerator(report::ReportInstance& instance,
                                       email::MimeMultipart& related, zone_t zone,
                                       resource::resource_collection& resources)
    : instance_(&instance), related_(&related), zone_(zone), resources_(&resources) {}

bool MimeImageGenerator::attach(int32_t number, const std::string& contentId,
                                const std::string& fileName) {
  try {
    related_->addPart(
        std::make_unique<email::PictureMimeBody>(resources_->get(number), contentId, fileName));
    return true;
  } catch (const resource::resource_error& e) {
    log(e.text());
    return false;
  }
}

void MimeImageGenerator::picture(std::string& out, int which) {
  // Raises "Unknown picture!" for a `which` out of range.
  const report::html::PictureFile& named = report::html::picture_file(which);
  if (attached_.insert(which).second) attach(named.resource, named.content_id, named.file_name);
  out = report::html::picture_tag(std::string("cid:") + named.content_id, named);
}

void MimeImageGenerator::spacer(std::string& out, int width, int height) {
  const report::html::PictureFile& spacer = report::html::kSpacerFile;
  if (!spacer_attached_) {
    spacer_attached_ = attach(spacer.resource, spacer.content_id, spacer.file_name);
  }
  out = report::html::spacer_tag(std::string("cid:") + spacer.content_id, width, height);
}

void MimeImageGenerator::chart(std::string& out, const report::ReportGraph& graph) {
  const std::string name = "chart" + std::to_string(next_chart_++);
  std::unique_ptr<report::ReportGraph> own = graph.clone();
  std::string title;
  own->name(title);
  related_->addPart(std::make_unique<ReportGraphMimeBody>(*instance_, std::move(own), name, zone_));
  out = report::html::chart_tag("cid:" + name, title);
}
