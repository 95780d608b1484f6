// A folder of the HTML report: heading, comment, a table of its contents and,
// indented below them, its child folders.
#include "report/html_blocks.h"
#include "report/html_items.h"
#include "report/html_renderer.h"
#include "tql/schema.h"

namespace report {
namespace {

using namespace html;

void write_heading(std::ostream& out, ReportFolder& folder, uint32_t type) {
  std::string name, anchor;
  folder.name(name);
  if (type != schema::kFolderSubSection) folder.anchor(anchor);
  switch (type) {
    case schema::kFolderExplanation:
      span(out, name, "reportdomain", anchor);
      break;
    case schema::kFolderNode:
      span(out, "Node: " + name, "reportnode", anchor);
      break;
    case schema::kFolderDomain:
      span(out, "Domain: " + name, "reportdomain", anchor);
      break;
    case schema::kFolderCheck:
      span(out, name, "reportcheck", anchor);
      break;
    case schema::kFolderSubSection:
      span(out, name, "reportgrouping", "");
      break;
    default:
      out << "Unknown folder type!";
      break;
  }
}

// A table that is written only once something goes into it, so that no
// empty <table> is ever written; `before` and `after` surround it.
class DeferredTable {
 public:
  DeferredTable(std::ostream& out, const char* before, const char* after)
      : out_(out), before_(before), after_(after) {}
  void open() {
    if (open_) return;
    out_ << before_;
    table(out_, "", "");
    open_ = true;
  }
  void close() {
    if (!open_) return;
    end_table(out_);
    out_ << after_;
    open_ = false;
  }

 private:
  std::ostream& out_;
  const char* before_;
  const char* after_;
  bool open_ = false;
};

void write_item(std::ostream& out, ReportFolderContent& item, ImageGenerator& images, zone_t zone) {
  if (auto* row = dynamic_cast<ReportRow*>(&item)) {
    write_row(out, *row, "");
  } else if (auto* graph = dynamic_cast<ReportGraph*>(&item)) {
    write_graph(out, *graph, images);
  } else if (auto* log = dynamic_cast<ReportLog*>(&item)) {
    write_log(out, *log, images, zone);
  } else if (auto* section = dynamic_cast<ReportFolder*>(&item)) {
    out << "<tr><td>";
    render_folder(*section, out, images, zone);
    out << "</td></tr>";
  } else {
    out << "Unknown folder content!";
  }
}

// Labelled rows that follow each other share one two-column table inside a
// cell of the folder's table, so that their columns line up.
void write_contents(std::ostream& out, ReportFolder& folder, DeferredTable& outer,
                    ImageGenerator& images, zone_t zone) {
  ContentList items;
  folder.contents(items);
  DeferredTable inner(out, "<tr><td>", "</td></tr>\r\n");
  for (auto& item : items) {
    outer.open();
    auto* row = dynamic_cast<ReportRow*>(item.get());
    std::string label;
    if (row) row->label(label);
    if (!label.empty()) {
      inner.open();
      write_row(out, *row, label);
    } else {
      inner.close();
      write_item(out, *item, images, zone);
    }
    item.reset();
  }
  inner.close();
}

// Child folders in a nested table, behind a narrow spacer column that indents
// them; a node's children are headed "Checks".
void write_subfolders(std::ostream& out, ReportFolder& folder, uint32_t type, DeferredTable& outer,
                      ImageGenerator& images, zone_t zone) {
  std::vector<std::unique_ptr<ReportFolder>> children;
  folder.subfolders(children);
  if (children.empty()) return;
  outer.open();
  row(out, "", "");
  table(out, "", "");
  if (type == schema::kFolderNode) {
    row(out, "", kColspan2);
    span(out, "Checks", "reportcheckh", "");
    end_row(out);
  }
  row(out, "0%", "");
  std::string spacer;
  images.spacer(spacer, 10, 1);
  out << spacer;
  next_cell(out, "", "");
  for (auto& child : children) {
    render_folder(*child, out, images, zone);
    child.reset();
  }
  end_row(out);
  end_table(out);
  end_row(out);
}

}  // namespace

void render_folder(ReportFolder& folder, std::ostream& out, ImageGenerator& images, zone_t zone) {
  uint32_t type = folder.folderType();
  write_heading(out, folder, type);
  std::string comment;
  folder.comment(comment);
  if (!comment.empty()) span(out, comment, "reportcomment", "");
  // The folder's table, left out when the folder holds nothing.
  DeferredTable outer(out, "", "");
  write_contents(out, folder, outer, images, zone);
  write_subfolders(out, folder, type, outer, images, zone);
  outer.close();
}

}  // namespace report
