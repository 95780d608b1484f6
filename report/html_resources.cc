#include "report/html_resources.h"

#include "base/error.h"
#include "report/html_image_generator.h"
#include "tavml/escape.h"

namespace report::html {

const PictureFile& picture_file(int which) {
  static const PictureFile kFiles[] = {
      {1, "ok_lamp.png", "ok_lamp", "OK"},
      {2, "warning_lamp.png", "warn_lamp", "Warning"},
      {3, "alert_lamp.png", "alert_lamp", "Alert"},
      {32, "report_logo.png", "report_logo", "Tavrel"},
  };
  static_assert(kPictureOkLamp == 0 && kPictureLogo == 3, "the table follows the numbers");
  if (which < kPictureOkLamp || which > kPictureLogo) throw error::EFatal("Unknown picture!");
  return kFiles[which];
}

std::string picture_tag(const std::string& src, const PictureFile& picture) {
  return "<img src=\"" + src + "\" border='0' alt=" + tavml::quoted(picture.alt) + ">";
}

std::string spacer_tag(const std::string& src, int width, int height) {
  return "<img src=\"" + src + "\" border='0' width='" + std::to_string(width) + "' height='" +
         std::to_string(height) + "' alt=\"\">";
}

std::string chart_tag(const std::string& src, const std::string& name) {
  return "<img src=\"" + src + "\" alt=" + tavml::quoted(name.empty() ? "Chart" : name) + ">";
}

std::string style_block(const resource::resource_t& sheet) {
  return std::string("<style type=\"") + sheet.mime_type() + "\">\r\n<!--\r\n" + sheet.text() +
         "-->\r\n</style>\r\n";
}

}  // namespace report::html
