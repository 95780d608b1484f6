// A small palette picture on libgd, for the build-time generator of the
// default resource files.
#pragma once

#include <gd.h>

#include <string>
#include <vector>

namespace resources {

struct Rgb {
  int r, g, b;
};

// Owns one gd image. Its background is transparent, or opaque white when
// `on_white` is set. Failures (gd out of memory, a file that can't be
// written) raise std::runtime_error; the generator then stops the build.
class Picture {
 public:
  Picture(int width, int height, bool on_white = false);
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  ~Picture() { gdImageDestroy(im_); }

  // The palette entry of `c`, allocated at the first use.
  int color(Rgb c);
  gdImagePtr image() const { return im_; }

  void disc(int cx, int cy, int diameter, Rgb fill);
  void ring(int cx, int cy, int diameter, Rgb line);
  void rect(int x1, int y1, int x2, int y2, Rgb fill);
  void line(int x1, int y1, int x2, int y2, Rgb c);
  void polygon(const std::vector<gdPoint>& points, Rgb fill);

  // Writes the picture as PNG or GIF, by the extension of `path`.
  void save(const std::string& path) const;

 private:
  gdImagePtr im_;
};

}  // namespace resources
