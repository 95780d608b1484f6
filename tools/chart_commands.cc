// tavrel-tool chart: one chart from a JSON description of a stored graph
// object, drawn as the report mail would draw it.
#include <fstream>
#include <iostream>
#include <sstream>

#include "base/error.h"
#include "grapher/check_image.h"
#include "tools/chart_input.h"
#include "tools/commands.h"

namespace tools {
namespace {

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw error::EFileNotFoundError("Couldn't read " + path);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

void writeFile(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw error::ESystemError("Couldn't write " + path);
}

int32_t sizeArg(const std::string& text) {
  if (text == "small") return grapher::kSmall;
  if (text == "medium") return grapher::kMedium;
  if (text == "large") return grapher::kLarge;
  throw error::EParseError("--size is small, medium or large: " + text);
}

// Width and height from the PNG header.
std::string pictureSize(const std::vector<uint8_t>& png) {
  auto word = [&](size_t at) {
    return png[at] << 24 | png[at + 1] << 16 | png[at + 2] << 8 | png[at + 3];
  };
  if (png.size() < 24) return "?";
  return std::to_string(word(16)) + " x " + std::to_string(word(20));
}

int chart(Args& args) {
  const std::string in = args.required("--in");
  const std::string out = args.required("--out");
  const auto zone = args.option("--zone");
  const auto size = args.option("--size");
  args.done();
  const int64_t z = zone ? Args::to_int(*zone) : kEnvironmentZone;
  if (z < INT32_MIN || z > INT32_MAX) {
    throw error::EParseError("--zone out of range: " + *zone);
  }
  ChartInput input = parseChartInput(readFile(in));
  grapher::Graph graph(grapher::chartKind(input.graphObject), input.start, input.end);
  if (size) graph.size = sizeArg(*size);
  grapher::generate_check_image(graph, input.graphObject, input.dataType, input.records);
  const std::vector<uint8_t> png = grapher::chartPng(graph, timeZoneValue(static_cast<int32_t>(z)));
  writeFile(out, png);
  std::cout << out << ": " << pictureSize(png) << "\n";
  return 0;
}

}  // namespace

std::vector<Command> chart_commands() {
  return {{"chart", "--in FILE.json --out FILE.png [--zone Z] [--size small|medium|large]", chart}};
}

}  // namespace tools
