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

// Labelled rows that follow each other share one two-column table inside a
// cell of the folder's table, so that their columns line up.
class InnerTable {
 public:
  explicit InnerTable(std::ostream& out) : out_(out) {}
  void open() {
    if (open_) return;
    out_ << "<tr><td>";
    table(out_, "", "");
    open_ = true;
  }
  void close() {
    if (!open_) return;
    end_table(out_);
    out_ << "</td></tr>\r\n";
    open_ = false;
  }

 private:
  std::ostream& out_;
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

void write_contents(std::ostream& out, ReportFolder& folder, ImageGenerator& images, zone_t zone) {
  ContentList items;
  folder.contents(items);
  InnerTable inner(out);
  for (auto& item : items) {
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
void write_subfolders(std::ostream& out, ReportFolder& folder, uint32_t type,
                      ImageGenerator& images, zone_t zone) {
  std::vector<std::unique_ptr<ReportFolder>> children;
  folder.subfolders(children);
  if (children.empty()) return;
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
  table(out, "", "");
  write_contents(out, folder, images, zone);
  write_subfolders(out, folder, type, images, zone);
  end_table(out);
}

}  // namespace report
