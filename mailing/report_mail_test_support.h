// Shared pieces of the report mailing tests: a sample report, a folder of resource files
// (style sheet, lamps, logo, spacer) and a capture of the process log.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "report/fake_report.h"
#include "resource/collection.h"

constexpr int64_t kStart = 1767225600;  // 2026-01-01 00:00 GMT
constexpr int64_t kDay = 86400;

// A report of one day from kStart with a node that holds a row, a log (all
// three lamps, the first twice), a chart, and a check with a chart of its
// own (so that the HTML asks for a spacer too).
report::fake::Instance sampleReport();

// A fresh folder with the resource files that a report mail uses, and a
// store over it. The pictures are real PNG and GIF files.
class ResourceFolder {
 public:
  ResourceFolder();
  ~ResourceFolder();
  ResourceFolder(const ResourceFolder&) = delete;
  ResourceFolder& operator=(const ResourceFolder&) = delete;

  // Writes (or replaces) one file of the folder.
  void write(const std::string& name, const std::string& content);
  void remove(const std::string& name);
  resource::resource_collection& store() { return store_; }

  static const std::string kStyleSheet;  // the content of tavrel.css

 private:
  std::filesystem::path dir_;
  resource::resource_collection store_;
};

// Records every message of the process log while it lives, with tracing
// on: level 0 messages in `lines`, trace messages in `traces`.
class LogCapture {
 public:
  LogCapture();
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  std::vector<std::string> lines;
  std::vector<std::string> traces;

 private:
  uint32_t mask_;  // the mask before, restored at the end
};
