#include "tools/reader/image_files.h"

#include <fstream>

#include "base/error.h"
#include "base/log.h"
#include "grapher/check_image.h"
#include "report/html_resources.h"
#include "resource/collection.h"
#include "resource/resource_error.h"

namespace tools {

FileImageGenerator::FileImageGenerator(std::string directory, int64_t start, int64_t end,
                                       zone_t zone)
    : directory_(std::move(directory)), start_(start), end_(end), zone_(zone) {}

void FileImageGenerator::picture(std::string& out, int which) {
  const report::html::PictureFile& file = report::html::picture_file(which);
  copy_resource(file.resource, file.file_name);
  out = report::html::picture_tag(file.file_name, file);
}

void FileImageGenerator::spacer(std::string& out, int width, int height) {
  copy_resource(report::html::kSpacerFile.resource, report::html::kSpacerFile.file_name);
  out = report::html::spacer_tag(report::html::kSpacerFile.file_name, width, height);
}

void FileImageGenerator::chart(std::string& out, const report::ReportGraph& graph) {
  const std::string name = "chart" + std::to_string(next_chart_++) + ".png";
  std::unique_ptr<report::ReportGraph> own = graph.clone();
  std::vector<uint8_t> png;
  try {
    grapher::Graph chart(own->tabular() ? grapher::kTabular : grapher::kPlot, start_, end_);
    own->generate_check_image(chart);
    png = grapher::chartPng(chart, zone_);
  } catch (const error::Exception& e) {
    log("Cannot draw chart " + name + ": " + e.text());
    png = grapher::errorPicture(e.text());
  }
  write_file(name, png.data(), png.size());
  std::string title;
  own->name(title);
  out = report::html::chart_tag(name, title);
}

void FileImageGenerator::copy_resource(int32_t number, const std::string& file_name) {
  if (written_.count(file_name)) return;
  try {
    const resource::resource_t& r = resource::resources().get(number);
    write_file(file_name, r.data().data(), r.data().size());
  } catch (const resource::resource_error& e) {
    log(e.text());
  }
}

void FileImageGenerator::write_file(const std::string& file_name, const uint8_t* data,
                                    size_t size) {
  const std::string path = directory_ + "/" + file_name;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  file.close();
  if (!file) throw error::ESystemError("Cannot write picture " + path);
  written_.insert(file_name);
  files_.push_back(file_name);
}

}  // namespace tools
