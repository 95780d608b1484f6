#include "report/text_renderer.h"

#include <string>

#include "base/error.h"
#include "report/report_times.h"
#include "tavml/tavml.h"
#include "tql/schema.h"

namespace report {
namespace {

class TextWriter {
 public:
  TextWriter(std::ostream& out, zone_t zone) : out_(out), zone_(zone) {}

  void folder(ReportFolder& folder, int level);
  void text(ReportText& text, int level);

 private:
  void indent(int level) { out_ << std::string(2 * level, ' '); }
  void comment_line(ReportFolderContent& item, int level);
  void item(ReportFolderContent& content, int level);
  void row(ReportRow& row, int level);
  void graph(ReportGraph& graph, int level);
  void log(ReportLog& log, int level);
  void entry(ReportLog& log, int level);

  std::ostream& out_;
  const zone_t zone_;
};

const char* folder_prefix(uint32_t type) {
  switch (type) {
    case schema::kFolderExplanation:
      return "<none>: ";
    case schema::kFolderNode:
      return "Node: ";
    case schema::kFolderDomain:
      return "Domain: ";
    default:
      return "";
  }
}

// The line under each item, written also for an empty comment.
void TextWriter::comment_line(ReportFolderContent& item, int level) {
  std::string comment;
  item.comment(comment);
  indent(level);
  out_ << comment << "\r\n";
}

// A sub-section doesn't indent what lies below it; other folders do.
void TextWriter::folder(ReportFolder& folder, int level) {
  uint32_t type = folder.folderType();
  indent(level);
  out_ << folder_prefix(type);
  if (type != schema::kFolderSubSection) ++level;
  std::string name;
  folder.name(name);
  out_ << name << "\r\n";
  comment_line(folder, level);
  ContentList items;
  folder.contents(items);
  for (auto& content : items) {
    item(*content, level);
    content.reset();
  }
  std::vector<std::unique_ptr<ReportFolder>> children;
  folder.subfolders(children);
  for (auto& child : children) {
    this->folder(*child, level);
    child.reset();
  }
}

// Items of a kind that a folder can't hold are left out.
void TextWriter::item(ReportFolderContent& content, int level) {
  if (auto* r = dynamic_cast<ReportRow*>(&content)) {
    row(*r, level);
  } else if (auto* g = dynamic_cast<ReportGraph*>(&content)) {
    graph(*g, level);
  } else if (auto* l = dynamic_cast<ReportLog*>(&content)) {
    log(*l, level);
  } else if (auto* f = dynamic_cast<ReportFolder*>(&content)) {
    folder(*f, level);
  }
}

void TextWriter::row(ReportRow& row, int level) {
  std::string label, value;
  row.label(label);
  row.value(value);
  indent(level);
  if (!label.empty()) out_ << label << ": ";
  out_ << value << "\r\n";
  comment_line(row, level);
}

void TextWriter::graph(ReportGraph& graph, int level) {
  std::string name;
  graph.name(name);
  indent(level);
  out_ << "Graph: " << name << "\r\n";
  comment_line(graph, level);
}

void TextWriter::log(ReportLog& log, int level) {
  std::string name;
  log.name(name);
  indent(level);
  out_ << "Log: " << name << "\r\n";
  while (log.next()) entry(log, level);
  comment_line(log, level);
}

// The markers are 7 characters wide, so that the times line up. An entry of
// another severity has neither indent nor marker.
void TextWriter::entry(ReportLog& log, int level) {
  const char* marker = nullptr;
  switch (log.severity()) {
    case kSeverityOk:
      marker = "   OK: ";
      break;
    case kSeverityWarning:
      marker = " Warn: ";
      break;
    case kSeverityAlert:
      marker = "Alert: ";
      break;
  }
  if (marker) {
    indent(level);
    out_ << marker;
  }
  out_ << entry_time(log.time(), zone_) << ": " << log.text() << "\r\n";
}

void TextWriter::text(ReportText& text, int level) {
  std::string comment, result;
  text.comment(comment);
  try {
    tavml::toText(result, comment);
  } catch (const error::EParseError& e) {
    result = "Parse error: " + e.text() + " in \"" + comment + "\"";
  }
  indent(level);
  out_ << result;
  // What follows starts a line of its own, also after a text that doesn't
  // end in a line break.
  if (!result.empty() && result.back() != '\n') out_ << "\r\n";
}

}  // namespace

void render_report_text(ReportInstance& instance, std::ostream& out, zone_t zone) {
  TextWriter writer(out, zone);
  ContentList items;
  instance.contents(items);
  for (auto& item : items) {
    if (auto* folder = dynamic_cast<ReportFolder*>(item.get())) {
      writer.folder(*folder, 0);
    } else if (auto* text = dynamic_cast<ReportText*>(item.get())) {
      writer.text(*text, 0);
    } else {
      out << "Unknown ReportInstanceContent";
    }
    item.reset();
  }
}

}  // namespace report
