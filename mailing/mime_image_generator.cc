#include "mailing/mime_image_generator.h"

#include <memory>

#include "base/error.h"
#include "base/log.h"
#include "mailing/picture_mime_body.h"
#include "mailing/report_bodies.h"
#include "resource/resource_error.h"

namespace {

struct NamedPicture {
  int32_t resource;
  const char* contentId;
  const char* fileName;
};

// By `which`: the lamps of a log entry's severity and the report's logo.
constexpr NamedPicture kNamedPictures[] = {
    {resource::kOkLamp, "ok_lamp", "ok_lamp.png"},
    {resource::kWarningLamp, "warn_lamp", "warning_lamp.png"},
    {resource::kErrorLamp, "alert_lamp", "alert_lamp.png"},
    {resource::kReportLogo, "report_logo", "report_logo.png"},
};

}  // namespace

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
  if (which < report::html::kPictureOkLamp || which > report::html::kPictureLogo) {
    throw error::EFatal("Unknown picture!");
  }
  const NamedPicture& named = kNamedPictures[which];
  if (attached_.insert(which).second) attach(named.resource, named.contentId, named.fileName);
  out = std::string("<img src=\"cid:") + named.contentId + "\" border='0'>";
}

void MimeImageGenerator::spacer(std::string& out, int width, int height) {
  if (!spacer_attached_) spacer_attached_ = attach(resource::kSpacer, "spacer", "spacer.gif");
  out = "<img src=\"cid:spacer\" border='0' width='" + std::to_string(width) + "' height='" +
        std::to_string(height) + "'>";
}

void MimeImageGenerator::chart(std::string& out, const report::ReportGraph& graph) {
  const std::string name = "chart" + std::to_string(next_chart_++);
  related_->addPart(std::make_unique<ReportGraphMimeBody>(*instance_, graph.clone(), name, zone_));
  out = "<img src=\"cid:" + name + "\">";
}
