#include "mailing/report_bodies.h"

#include <cstdint>
#include <vector>

#include "base/log.h"
#include "email/encoding.h"
#include "grapher/check_image.h"
#include "grapher/graph.h"
#include "report/html_renderer.h"
#include "report/html_resources.h"
#include "report/text_renderer.h"
#include "resource/resource_error.h"

ReportTextMimeBody::ReportTextMimeBody(report::ReportInstance& instance, zone_t zone)
    : UnstructuredMimeBody("text/plain", email::quoted_printable_encoding()),
      instance_(&instance),
      zone_(zone) {}

void ReportTextMimeBody::writeContent(std::ostream& out) {
  report::render_report_text(*instance_, out, zone_);
}

ReportHtmlMimeBody::ReportHtmlMimeBody(report::ReportInstance& instance,
                                       report::html::ImageGenerator& images, zone_t zone,
                                       resource::resource_collection& resources)
    : UnstructuredMimeBody("text/html", email::quoted_printable_encoding()),
      instance_(&instance),
      images_(&images),
      zone_(zone),
      resources_(&resources) {}

std::string ReportHtmlMimeBody::styleBlock(resource::resource_collection& resources) {
  try {
    return report::html::style_block(resources.get(resource::kStyleSheet));
  } catch (const resource::resource_error& e) {
    log(e.text());
    return {};
  }
}

void ReportHtmlMimeBody::writeContent(std::ostream& out) {
  report::render_report_html(out, *instance_, styleBlock(*resources_), *images_, zone_);
}

ReportGraphMimeBody::ReportGraphMimeBody(report::ReportInstance& instance,
                                         std::unique_ptr<report::ReportGraph> graph,
                                         std::string contentId, zone_t zone)
    : UnstructuredMimeBody("image/png", email::base64_encoding(),
                           email::inline_disposition(contentId + ".png")),
      instance_(&instance),
      graph_(std::move(graph)),
      zone_(zone) {
  setContentId(std::move(contentId));
}

void ReportGraphMimeBody::writeContent(std::ostream& out) {
  const int32_t kind = graph_->tabular() ? grapher::kTabular : grapher::kPlot;
  const int64_t start = instance_->start();
  grapher::Graph chart(kind, start, start + instance_->duration());
  graph_->generate_check_image(chart);
  // chartPng draws and, when drawing fails, gives the error picture instead.
  const std::vector<uint8_t> png = grapher::chartPng(chart, zone_);
  out.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
}
