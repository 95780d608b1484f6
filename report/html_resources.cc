#include "report/html_resources.h"

#include "base/error.h"
#include "report/html_image_generator.h"

namespace report::html {

const PictureFile& picture_file(int which) {
  static const PictureFile kFiles[] = {
      {1, "ok_lamp.png", "ok_lamp"},
      {2, "warning_lamp.png", "warn_lamp"},
      {3, "alert_lamp.png", "alert_lamp"},
      {32, "report_logo.png", "report_logo"},
  };
  static_assert(kPictureOkLamp == 0 && kPictureLogo == 3, "the table follows the numbers");
  if (which < kPictureOkLamp || which > kPictureLogo) throw error::EFatal("Unknown picture!");
  return kFiles[which];
}

std::string style_block(const resource::resource_t& sheet) {
  return std::string("<style type=\"") + sheet.mime_type() + "\">\r\n<!--\r\n" + sheet.text() +
         "-->\r\n</style>\r\n";
}

}  // namespace report::html
