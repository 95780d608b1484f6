// The fixed 64-entry palette of every chart, and the names of the entries the
// parts use. Entry 0 is allocated first, so it is the background of every
// picture.
#pragma once

#include <array>
#include <cstdint>

namespace grapher {

struct Rgb {
  uint8_t red;
  uint8_t green;
  uint8_t blue;
};

inline constexpr int kPaletteSize = 64;

// The palette, in allocation order.
extern const std::array<Rgb, kPaletteSize> kPalette;

// Palette entries by use.
inline constexpr int kBackground = 0;
inline constexpr int kWarnBand = 1;
inline constexpr int kAlertBand = 2;
inline constexpr int kGrid = 3;
inline constexpr int kPlotArea = 4;
inline constexpr int kAxis = 5;
inline constexpr int kText = 6;
inline constexpr int kRed = 8;
inline constexpr int kYellow = 9;
inline constexpr int kGreen = 10;
inline constexpr int kNoResponse = 12;
inline constexpr int kMinMaxShade = 13;
inline constexpr int kFirstLineColour = 14;
inline constexpr int kFirstStateColour = 22;
// The last entry with a colour of its own; 54 to 63 are spare (black).
inline constexpr int kLastColour = 53;

// Colour of line number k of a chart: 14 + k. Charts with more lines than
// there are coloured entries (40) start again at 14, so that an index never
// leaves the palette.
int lineColour(int k);

// Colour of the n-th state colour handed out by an enum part (n from 0): 22 +
// n, starting again at 22 after entry 53.
int stateColourAt(int n);

}  // namespace grapher
