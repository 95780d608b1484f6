#include "report/html_items.h"

#include "base/error.h"
#include "report/html_blocks.h"
#include "report/report_times.h"
#include "tavml/tavml.h"

namespace report::html {
namespace {

std::string linked(const std::string& text, const std::string& origin) {
  if (origin.empty()) return text;
  return "<a href='#" + origin + "'>" + text + "</a>";
}

void write_comment_line(std::ostream& out, ReportFolderContent& item, std::string_view extra) {
  std::string comment;
  item.comment(comment);
  comment_line(out, comment, extra);
}

// The lamp of an entry's severity.
void write_lamp(std::ostream& out, uint32_t severity, ImageGenerator& images) {
  int which;
  switch (severity) {
    case kSeverityOk:
      which = kPictureOkLamp;
      break;
    case kSeverityWarning:
      which = kPictureWarningLamp;
      break;
    case kSeverityAlert:
      which = kPictureAlertLamp;
      break;
    default:
      out << "Unknown severity";
      return;
  }
  std::string lamp;
  images.picture(lamp, which);
  out << lamp;
}

void write_entry(std::ostream& out, ReportLog& log, ImageGenerator& images, zone_t zone) {
  row(out, "0%", "");
  write_lamp(out, log.severity(), images);
  next_cell(out, "", kNoWrap);
  out << entry_time(log.time(), zone);
  next_cell(out, "", "");
  out << escape(log.text());  // a stored text, like the labels of rows
  end_row(out);
}

}  // namespace

void write_row(std::ostream& out, ReportRow& item, const std::string& label) {
  std::string value, origin;
  item.value(value);
  item.origin(origin);
  // Labels and values are plain text that may hold stored names ("Worst
  // check availability is <no name>"): escaped, so that the reader sees
  // them whole and the page stays valid HTML.
  if (label.empty()) {
    row(out, "", kColspan2);
    out << linked(escape(value), origin);
  } else {
    row(out, "", "");
    out << linked(escape(label), origin);
    next_cell(out, "", kAlignRight);
    out << escape(value);
  }
  end_row(out);
  write_comment_line(out, item, kColspan2);
}

void write_graph(std::ostream& out, ReportGraph& graph, ImageGenerator& images) {
  row(out, "", "");
  std::string chart;
  images.chart(chart, graph);
  out << chart;
  end_row(out);
  write_comment_line(out, graph, "");
}

void write_log(std::ostream& out, ReportLog& log, ImageGenerator& images, zone_t zone) {
  std::string name;
  log.name(name);
  row(out, "", "");
  out << escape(name);
  end_row(out);
  row(out, "", "");
  table(out, "", "reportincidentlog");
  if (!log.next()) {
    row(out, "", "");
    out << "No events in period";
    end_row(out);
  } else {
    do {
      write_entry(out, log, images, zone);
    } while (log.next());
  }
  end_table(out);
  end_row(out);
  write_comment_line(out, log, kColspan2);
}

void write_text(std::ostream& out, ReportText& text) {
  std::string comment, result;
  text.comment(comment);
  try {
    tavml::toHtml(result, comment, "");
  } catch (const error::EParseError& e) {
    result = "Parse error: " + escape(e.text()) + " in \"" + escape(comment) + "\"";
  }
  out << "<div class='reporttext'>" << result << "</div>\r\n";
}

}  // namespace report::html
