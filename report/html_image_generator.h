// How the HTML renderer gets its pictures. The renderer asks for the HTML
// that shows a picture and writes it as it comes back; what lies behind it
// (an attached part of a mail, a file, a URL) is the implementation's.
#pragma once

#include <string>

#include "report/read_model.h"

namespace report::html {

// The named pictures, by their `which` number.
inline constexpr int kPictureOkLamp = 0;
inline constexpr int kPictureWarningLamp = 1;
inline constexpr int kPictureAlertLamp = 2;
inline constexpr int kPictureLogo = 3;

class ImageGenerator {
 public:
  virtual ~ImageGenerator() = default;
  // Sets `out` to the HTML of the named picture `which` (a kPicture value).
  // Another value raises error::EFatal "Unknown picture!".
  virtual void picture(std::string& out, int which) = 0;
  // Sets `out` to the HTML of a blank image of the given size in pixels.
  virtual void spacer(std::string& out, int width, int height) = 0;
  // Sets `out` to the HTML of the chart of `graph`. An implementation that
  // draws it later keeps graph.clone(); `graph` itself is gone after the call.
  virtual void chart(std::string& out, const ReportGraph& graph) = 0;
};

}  // namespace report::html
