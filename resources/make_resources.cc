// Draws the default pictures of the numbered resource files into the
// directory given as the only argument: lamps, the logo, the small icons
// and the 1x1 transparent spacer. Run at build time; the style sheet is a
// plain file copied beside them.
#include <gdfontg.h>
#include <gdfonts.h>

#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include "resource/collection.h"
#include "resources/picture.h"

namespace resources {
namespace {

using PicturePtr = std::unique_ptr<Picture>;

constexpr Rgb kBlue{30, 70, 140};
constexpr Rgb kDark{50, 50, 50};

// The colours of one lamp state: fill, edge, highlight.
struct LampColors {
  Rgb fill, edge, light;
};

const std::map<std::string, LampColors> kLampStates = {
    {"ok", {{40, 170, 60}, {20, 100, 30}, {160, 235, 170}}},
    {"warning", {{240, 200, 30}, {160, 120, 0}, {255, 240, 160}}},
    {"error", {{210, 40, 40}, {130, 20, 20}, {250, 160, 160}}},
    {"unknown", {{150, 150, 150}, {90, 90, 90}, {215, 215, 215}}},
};

// A lamp name is [w][down|depend]STATE_lamp_small.png. "w" draws it on an
// opaque white ground, "down" (scheduled downtime) adds a blue ring,
// "depend" (caused by a dependency) a dark dot; "blank" is an empty ring.
struct LampKind {
  bool on_white = false;
  bool down = false;
  bool depend = false;
  std::string state;
};

bool starts_with(const std::string& s, const std::string& prefix) {
  return s.rfind(prefix, 0) == 0;
}

// The stem is the name without "_lamp_small.png". "warning" is a state of
// its own, so the "w" is a prefix only when the rest is a lamp without it.
LampKind lamp_kind(std::string stem) {
  LampKind kind;
  auto is_state = [](const std::string& s) { return s == "blank" || kLampStates.count(s) > 0; };
  auto strip_marker = [&kind](std::string& s) {
    kind.down = starts_with(s, "down");
    kind.depend = starts_with(s, "depend");
    s.erase(0, kind.down ? 4 : kind.depend ? 6 : 0);
  };
  std::string rest = stem;
  strip_marker(rest);
  if (!is_state(rest) && starts_with(stem, "w")) {
    kind.on_white = true;
    rest = stem.substr(1);
    strip_marker(rest);
  }
  if (!is_state(rest)) throw std::runtime_error("no lamp state in " + stem);
  kind.state = rest;
  return kind;
}

PicturePtr lamp(const LampKind& kind) {
  auto pic = std::make_unique<Picture>(13, 13, kind.on_white);
  if (kind.state == "blank") {
    pic->ring(6, 6, 11, {190, 190, 190});
    return pic;
  }
  const LampColors& c = kLampStates.at(kind.state);
  pic->disc(6, 6, 12, c.fill);
  pic->ring(6, 6, 12, c.edge);
  pic->disc(4, 4, 3, c.light);
  if (kind.down) {
    pic->ring(6, 6, 12, {40, 80, 210});
    pic->ring(6, 6, 11, {40, 80, 210});
  }
  if (kind.depend) pic->disc(6, 6, 4, kDark);
  return pic;
}

PicturePtr graph() {
  auto pic = std::make_unique<Picture>(16, 16);
  pic->rect(3, 8, 5, 14, {40, 170, 60});
  pic->rect(7, 3, 9, 14, kBlue);
  pic->rect(11, 10, 13, 14, {210, 40, 40});
  pic->line(1, 1, 1, 15, kDark);
  pic->line(1, 15, 15, 15, kDark);
  return pic;
}

// A vertical fade for header backgrounds, from light blue to white.
PicturePtr fade() {
  constexpr int kHeight = 32;
  auto pic = std::make_unique<Picture>(1, kHeight, true);
  for (int y = 0; y < kHeight; ++y) {
    const int t = 255 * y / (kHeight - 1);
    pic->rect(0, y, 0, y, {190 + (65 * t) / 255, 210 + (45 * t) / 255, 235 + (20 * t) / 255});
  }
  return pic;
}

PicturePtr link_icon() {
  auto pic = std::make_unique<Picture>(12, 12);
  pic->line(1, 3, 1, 10, kBlue);
  pic->line(1, 10, 8, 10, kBlue);
  pic->line(8, 10, 8, 7, kBlue);
  pic->line(1, 3, 4, 3, kBlue);
  pic->line(5, 6, 10, 1, kBlue);
  pic->polygon({{6, 1}, {10, 1}, {10, 5}}, kBlue);
  return pic;
}

PicturePtr note() {
  auto pic = std::make_unique<Picture>(12, 14);
  pic->polygon({{1, 0}, {8, 0}, {10, 2}, {10, 13}, {1, 13}}, {180, 160, 60});
  pic->polygon({{2, 1}, {8, 1}, {9, 3}, {9, 12}, {2, 12}}, {255, 240, 140});
  for (int y = 4; y <= 10; y += 3) pic->line(3, y, 8, y, {150, 140, 100});
  return pic;
}

PicturePtr arrow() {
  auto pic = std::make_unique<Picture>(7, 9);
  pic->polygon({{1, 0}, {6, 4}, {1, 8}}, kBlue);
  return pic;
}

PicturePtr hammer() {
  auto pic = std::make_unique<Picture>(14, 14);
  gdImageSetThickness(pic->image(), 2);
  pic->line(2, 12, 9, 5, {140, 90, 40});
  gdImageSetThickness(pic->image(), 1);
  pic->polygon({{6, 3}, {8, 1}, {13, 6}, {11, 8}}, {110, 110, 120});
  return pic;
}

// The product's name on a blue band, with three small lamps.
PicturePtr logo() {
  auto pic = std::make_unique<Picture>(150, 40, true);
  pic->rect(0, 4, 149, 35, kBlue);
  gdImageString(pic->image(), gdFontGetGiant(), 10, 6, (unsigned char*)"Tavrel",
                pic->color({255, 255, 255}));
  gdImageString(pic->image(), gdFontGetSmall(), 10, 21, (unsigned char*)"Monitoring Report",
                pic->color({200, 215, 240}));
  pic->disc(122, 20, 8, kLampStates.at("ok").fill);
  pic->disc(132, 20, 8, kLampStates.at("warning").fill);
  pic->disc(142, 20, 8, kLampStates.at("error").fill);
  return pic;
}

PicturePtr spacer() { return std::make_unique<Picture>(1, 1); }

PicturePtr draw(const std::string& name) {
  static const std::map<std::string, std::function<PicturePtr()>> kOthers = {
      {"graph.png", graph},         {"fadeheaderbg.png", fade}, {"link_small.gif", link_icon},
      {"note_small.png", note},     {"smallarrow.png", arrow},  {"report_logo.png", logo},
      {"hammer_small.png", hammer}, {"spacer.gif", spacer},
  };
  auto it = kOthers.find(name);
  if (it != kOthers.end()) return it->second();
  const std::string suffix = "_lamp_small.png";
  if (name.size() > suffix.size() &&
      name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0) {
    return lamp(lamp_kind(name.substr(0, name.size() - suffix.size())));
  }
  throw std::runtime_error("no drawing for " + name);
}

}  // namespace
}  // namespace resources

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_resources OUTPUT-DIRECTORY\n";
    return 1;
  }
  try {
    // Number 0 is the style sheet, which is not drawn.
    for (int32_t n = 1; n < resource::kResourceCount; ++n) {
      const std::string name = resource::resource_file_name(n);
      resources::draw(name)->save(std::string(argv[1]) + "/" + name);
    }
  } catch (const std::exception& e) {
    std::cerr << "make_resources: " << e.what() << "\n";
    return 1;
  }
  return 0;
}
