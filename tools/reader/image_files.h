// An ImageGenerator for a report page on disk: every picture becomes a file
// in one directory, and the HTML refers to it by its bare file name, so the
// page opens in a browser when it is saved in that directory too. Lamps, logo
// and spacer are copies of the resource files; charts are drawn at once
// through the grapher, as PNG files "chart0.png", "chart1.png", ...
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "base/zone.h"
#include "report/html_image_generator.h"

namespace tools {

class FileImageGenerator : public report::html::ImageGenerator {
 public:
  // Charts cover `start` to `end` (seconds) and show their times in `zone`.
  // The directory must exist.
  FileImageGenerator(std::string directory, int64_t start, int64_t end, zone_t zone);

  // A resource that can't be loaded is logged and left out; its <img>
  // stays. A file that can't be written raises error::ESystemError.
  void picture(std::string& out, int which) override;
  void spacer(std::string& out, int width, int height) override;
  // A chart whose data can't be read (error::Exception from the read model
  // or the grapher) is written as the error picture of that text, so the
  // page shows the failure where the chart should stand.
  void chart(std::string& out, const report::ReportGraph& graph) override;

  // The files written so far, in order.
  const std::vector<std::string>& files() const { return files_; }

 private:
  void copy_resource(int32_t number, const std::string& file_name);
  void write_file(const std::string& file_name, const uint8_t* data, size_t size);

  std::string directory_;
  int64_t start_;
  int64_t end_;
  zone_t zone_;
  int next_chart_ = 0;
  std::set<std::string> written_;
  std::vector<std::string> files_;
};

}  // namespace tools
