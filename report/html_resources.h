// The resource files behind the HTML report's pictures and style, shared by
// every ImageGenerator (the mail's attached parts, files beside a page): which
// resource a named picture is, the file name and content id it goes by, and
// the style block of the document head made from the style sheet.
#pragma once

#include <cstdint>
#include <string>

#include "resource/resource.h"

namespace report::html {

struct PictureFile {
  int32_t resource;        // The resource number (resource/collection.h).
  const char* file_name;   // The name the picture goes by: "ok_lamp.png", ...
  const char* content_id;  // Its content id in a mail: "ok_lamp", ...
  const char* alt;         // The text in its place for readers without pictures.
};

// The named picture `which` (a kPicture value of html_image_generator.h).
// Raises error::EFatal "Unknown picture!" for another value.
const PictureFile& picture_file(int which);

// The blank picture of spacers.
inline constexpr PictureFile kSpacerFile{34, "spacer.gif", "spacer", ""};

// The <img> tags of the generators, all with alt text (empty for a spacer,
// which shows nothing): a named picture at `src`; a spacer of the given
// size; a chart, whose alt text is the graph's name, or "Chart" without one.
std::string picture_tag(const std::string& src, const PictureFile& picture);
std::string spacer_tag(const std::string& src, int width, int height);
std::string chart_tag(const std::string& src, const std::string& name);

// The style block for the document head: "<style type=\"", the sheet's MIME
// type, "\">\r\n<!--\r\n", its contents, "-->\r\n</style>\r\n".
std::string style_block(const resource::resource_t& sheet);

}  // namespace report::html
