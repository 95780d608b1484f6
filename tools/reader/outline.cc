#include "tools/reader/outline.h"

#include <cstdio>

#include "tql/schema.h"

namespace tools {
namespace {

const char* folder_word(uint32_t type) {
  switch (type) {
    case schema::kFolderExplanation:
      return "explanation";
    case schema::kFolderNode:
      return "node";
    case schema::kFolderDomain:
      return "domain";
    case schema::kFolderCheck:
      return "check";
    case schema::kFolderSubSection:
      return "section";
    default:
      return nullptr;
  }
}

const char* severity_word(uint32_t severity) {
  switch (severity) {
    case report::kSeverityOk:
      return "ok";
    case report::kSeverityWarning:
      return "warning";
    case report::kSeverityAlert:
      return "alert";
    default:
      return nullptr;
  }
}

class Outline {
 public:
  Outline(std::ostream& out, const GraphDetails& details) : out_(out), details_(details) {}

  void instance(report::ReportInstance& r) {
    std::string name, by;
    r.name(name);
    r.generatedBy(by);
    out_ << "instance " << quote_line(name) << " start " << r.start() << " duration "
         << r.duration() << " generated " << r.generated() << " by " << quote_line(by) << "\n";
    report::ContentList items;
    r.contents(items);
    for (auto& item : items) {
      content(*item, 1);
      item.reset();
    }
  }

 private:
  void indent(int level) { out_ << std::string(2 * level, ' '); }

  void comment(report::ReportFolderContent& item, int level) {
    std::string text;
    item.comment(text);
    if (text.empty()) return;
    indent(level);
    out_ << "comment " << quote_line(text) << "\n";
  }

  void content(report::ReportFolderContent& item, int level) {
    if (auto* f = dynamic_cast<report::ReportFolder*>(&item)) return folder(*f, level);
    if (auto* r = dynamic_cast<report::ReportRow*>(&item)) return row(*r, level);
    if (auto* g = dynamic_cast<report::ReportGraph*>(&item)) return graph(*g, level);
    if (auto* l = dynamic_cast<report::ReportLog*>(&item)) return log(*l, level);
    indent(level);
    if (dynamic_cast<report::ReportText*>(&item)) {
      std::string text;
      item.comment(text);
      out_ << "text " << quote_line(text) << "\n";
    } else {
      out_ << "unknown item\n";
    }
  }

  void folder(report::ReportFolder& f, int level) {
    std::string name, anchor;
    f.name(name);
    f.anchor(anchor);
    uint32_t type = f.folderType();
    indent(level);
    out_ << "folder ";
    if (const char* word = folder_word(type)) {
      out_ << word;
    } else {
      out_ << "type " << type;
    }
    out_ << " " << quote_line(name) << " anchor " << anchor << "\n";
    comment(f, level + 1);
    {
      report::ContentList items;
      f.contents(items);
      for (auto& item : items) {
        content(*item, level + 1);
        item.reset();
      }
    }
    std::vector<std::unique_ptr<report::ReportFolder>> children;
    f.subfolders(children);
    for (auto& child : children) {
      folder(*child, level + 1);
      child.reset();
    }
  }

  void row(report::ReportRow& r, int level) {
    std::string label, value, origin;
    r.label(label);
    r.value(value);
    r.origin(origin);
    indent(level);
    out_ << "row " << quote_line(label) << " " << quote_line(value);
    if (!origin.empty()) out_ << " origin " << origin;
    out_ << "\n";
    comment(r, level + 1);
  }

  void graph(report::ReportGraph& g, int level) {
    std::string name, anchor;
    g.name(name);
    g.anchor(anchor);
    indent(level);
    out_ << "graph " << quote_line(name) << " anchor " << anchor;
    if (details_) {
      std::string more = details_(g);
      if (!more.empty()) out_ << " " << more;
    }
    if (g.showMinMax()) out_ << " minmax";
    if (g.showNoResponse()) out_ << " noresponse";
    if (g.tabular()) out_ << " tabular";
    out_ << "\n";
    comment(g, level + 1);
  }

  void log(report::ReportLog& l, int level) {
    std::string name;
    l.name(name);
    indent(level);
    out_ << "log " << quote_line(name) << "\n";
    while (l.next()) {
      indent(level + 1);
      if (const char* word = severity_word(l.severity())) {
        out_ << word;
      } else {
        out_ << "severity " << l.severity();
      }
      out_ << " " << l.time() << " " << quote_line(l.text()) << "\n";
    }
    comment(l, level + 1);
  }

  std::ostream& out_;
  const GraphDetails& details_;
};

}  // namespace

void print_outline(report::ReportInstance& instance, std::ostream& out,
                   const GraphDetails& details) {
  Outline(out, details).instance(instance);
}

std::string quote_line(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    unsigned char u = static_cast<unsigned char>(c);
    switch (c) {
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      default:
        if (u < 0x20 || u == 0x7f) {
          char hex[8];
          std::snprintf(hex, sizeof hex, "\\x%02x", u);
          out += hex;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

}  // namespace tools
