// A read model held in memory, for tests of the renderers and of whatever
// else consumes a report (the mail bodies). A report is described by a tree
// of Item values; each operation that fills a vector makes fresh objects from
// the descriptions, so callers own and delete them as they would objects of
// the database-backed model. A counter of live objects lets tests check that
// a renderer keeps only the path to the current item alive.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "report/html_image_generator.h"
#include "report/read_model.h"
#include "tql/schema.h"

namespace report::fake {

struct Entry {
  uint32_t severity = kSeverityOk;
  std::string text;
  int64_t time = 0;
};

// The description of one item of a report.
struct Item {
  enum class Kind { kRow, kGraph, kLog, kFolder, kText, kStranger };
  Kind kind = Kind::kRow;
  std::string label{}, value{}, origin{};  // rows
  std::string name{};                      // graphs, logs, folders
  std::string comment{};                   // all
  uint32_t folder_type = schema::kFolderExplanation;
  std::vector<Entry> entries{};    // logs
  std::vector<Item> contents{};    // folders: rows, graphs, logs, sub-sections
  std::vector<Item> subfolders{};  // folders: child folders, given in display order
  bool fail_contents = false;      // folders: contents() raises, as a database read can
};

Item row(std::string label, std::string value, std::string origin = "");
Item graph(std::string name);
Item log(std::string name, std::vector<Entry> entries);
// The anchor of a folder or graph is "id." and its name.
Item folder(uint32_t type, std::string name, std::vector<Item> contents = {},
            std::vector<Item> subfolders = {});
Item text(std::string markup);
// An item of a kind that no renderer knows.
Item stranger();
Item commented(Item item, std::string comment);

// The text of the error that fail_contents raises (error::ESystemError).
inline constexpr const char* kReadFailure = "read failed";

// Objects of the fake model alive now, and the most that were alive at once
// since the last reset. The model has one thread, as the process.
int alive();
int peak_alive();
void reset_peak();

class Instance : public ReportInstance {
 public:
  explicit Instance(std::vector<Item> items) : items_(std::move(items)) {}

  int64_t start() override { return start_; }
  int64_t duration() override { return duration_; }
  int64_t generated() override { return generated_; }
  void name(std::string& out) override { out = name_; }
  void generatedBy(std::string& out) override { out = generated_by_; }
  void contents(ContentList& out) override;

  int64_t start_ = 0;
  int64_t duration_ = 0;
  int64_t generated_ = 0;
  std::string name_ = "Weekly";
  std::string generated_by_ = "Tavrel 5.2";

 private:
  std::vector<Item> items_;
};

// Shows each picture as a bracketed word: "[picture N]", "[spacer WxH]",
// "[chart NAME]" (the name read from a clone of the graph).
class Images : public html::ImageGenerator {
 public:
  void picture(std::string& out, int which) override;
  void spacer(std::string& out, int width, int height) override;
  void chart(std::string& out, const ReportGraph& graph) override;
};

}  // namespace report::fake
