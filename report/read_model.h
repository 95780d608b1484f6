// The read model of a finished report: abstract classes over the stored tree
// below a ReportInstance. The renderers are written against these classes
// alone and know nothing of the database; the implementations over stored
// objects read each level when it is asked for, so that a report of any size
// is never in memory at once.
//
// Ownership: every operation that fills a vector of items appends objects on
// the heap that the caller owns from then on; the renderers drop each item
// right after it is written, so only the path from the instance to the
// current item is alive.
//
// Failures: the read operations of the database-backed implementations raise
// the database's exceptions, which pass through the renderers to their
// callers. Operations without a note raise nothing of their own.
//
// Not thread-safe; the process has one thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace grapher {
class Graph;
}

namespace report {

// Severities of a log entry.
inline constexpr uint32_t kSeverityOk = 1;
inline constexpr uint32_t kSeverityWarning = 2;
inline constexpr uint32_t kSeverityAlert = 4;

// What can stand in a report: a folder, row, graph, log or free text.
class ReportFolderContent {
 public:
  virtual ~ReportFolderContent() = default;
  // Sets `out` to the free text shown under the item; empty when the item has
  // none. For a ReportText it is the whole content, in the markup of tavml/.
  virtual void comment(std::string& out) = 0;
};

using ContentList = std::vector<std::unique_ptr<ReportFolderContent>>;

// One line of a folder: a label and a value, or a value alone.
class ReportRow : public ReportFolderContent {
 public:
  // Sets `out` to the label; empty for a row that is a single text.
  virtual void label(std::string& out) = 0;
  // Sets `out` to the value. Label and value are ready-made HTML.
  virtual void value(std::string& out) = 0;
  // Sets `out` to the anchor name of the folder the row refers to, empty when
  // it refers to none.
  virtual void origin(std::string& out) = 0;
};

// A chart; its data is read only when the picture is drawn.
class ReportGraph : public ReportFolderContent {
 public:
  // A new, independent graph over the same stored item, owned by the caller.
  // It may outlive this object (a mail draws its charts after the HTML).
  virtual std::unique_ptr<ReportGraph> clone() const = 0;
  // Sets `out` to the heading.
  virtual void name(std::string& out) = 0;
  // Sets `out` to the anchor name of this item.
  virtual void anchor(std::string& out) = 0;
  virtual bool showMinMax() = 0;
  virtual bool showNoResponse() = 0;
  // Whether the chart is drawn in tabular form.
  virtual bool tabular() = 0;
  // Fills `graph` with the options and the stored samples.
  virtual void generate_check_image(grapher::Graph& graph) = 0;
};

// A list of incidents, read one entry at a time.
class ReportLog : public ReportFolderContent {
 public:
  // Sets `out` to the heading.
  virtual void name(std::string& out) = 0;
  // Steps to the next entry, the first call to the first one. False at the
  // end; false at once for a log without entries.
  virtual bool next() = 0;
  // The current entry; only after a next() that returned true. The reference
  // stays good until the next call of next().
  virtual uint32_t severity() = 0;
  virtual const std::string& text() = 0;
  // Seconds since 1970.
  virtual int64_t time() = 0;
};

// A section of a report: an explanation, domain, node, check or sub-section.
class ReportFolder : public ReportFolderContent {
 public:
  // One of the schema::kFolder values (tql/schema.h); another number is
  // shown as unknown.
  virtual uint32_t folderType() = 0;
  // Sets `out` to the heading.
  virtual void name(std::string& out) = 0;
  // Appends rows, graphs, logs and sub-sections (folders of type
  // schema::kFolderSubSection), in display order.
  virtual void contents(ContentList& out) = 0;
  // Appends the child folders that are no sub-sections, in the order of
  // folder_before (sort_order.h).
  virtual void subfolders(std::vector<std::unique_ptr<ReportFolder>>& out) = 0;
  // Sets `out` to the anchor name of this item, by which rows link to it.
  virtual void anchor(std::string& out) = 0;
};

// A free text of the report, before or after its folders.
class ReportText : public ReportFolderContent {};

// The root of a report. Not a ReportFolderContent.
class ReportInstance {
 public:
  virtual ~ReportInstance() = default;
  // Start of the period in seconds since 1970; 0 where the report has none.
  // The three times are never negative and lie in the 32-bit range of the
  // stored values.
  virtual int64_t start() = 0;
  // Length of the period in seconds.
  virtual int64_t duration() = 0;
  // When generation ended, seconds since 1970; 0 while it runs.
  virtual int64_t generated() = 0;
  // Sets `out` to the report's name.
  virtual void name(std::string& out) = 0;
  // Sets `out` to the name of the product that generated the report.
  virtual void generatedBy(std::string& out) = 0;
  // Appends folders and texts in display order.
  virtual void contents(ContentList& out) = 0;
};

}  // namespace report
