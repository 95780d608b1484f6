// tavrel-report-reader: reads a stored report through the read model, as
// sibling 12 of a stand-in host, and writes it to standard output. The host
// (tavrel-tool report-tree and render run it in-process) holds the database;
// this program talks to it over the real messenger and queue, as the report
// process does.
//
//   tavrel-report-reader tree INSTANCE
//   tavrel-report-reader text INSTANCE ZONE
//   tavrel-report-reader html INSTANCE ZONE IMAGE_DIR [RESOURCE_DIR]
//
// INSTANCE is an id in text form ("0.1.40"), ZONE a zone value. Without
// RESOURCE_DIR the resources come from the configuration's
// resource_directory. Exit code 0, or 1 after "error: " and the text on
// standard error; either way the program leaves through the messenger's
// shutdown.
#include <iostream>
#include <string>
#include <vector>

#include "base/args.h"
#include "base/error.h"
#include "base/log.h"
#include "base/meter.h"
#include "base/utf8.h"
#include "base/zone.h"
#include "host/world_names.h"
#include "io/sibling_messenger.h"
#include "queues/childqueue.h"
#include "queues/qdialog.h"
#include "report/html_renderer.h"
#include "report/html_resources.h"
#include "report/server_instance.h"
#include "report/server_items.h"
#include "report/text_renderer.h"
#include "resource/collection.h"
#include "resource/resource_error.h"
#include "tools/reader/image_files.h"
#include "tools/reader/outline.h"

namespace {

// The graph line of the outline: the stored series' data type and size.
std::string samples_of(report::ReportGraph& graph) {
  auto* stored = dynamic_cast<ServerReportGraph*>(&graph);
  if (stored == nullptr) return "";
  dbms::Return_TSDB_Get_Data_Data series = stored->read_samples();
  return "data type " + std::to_string(series.data_type) + ", " +
         std::to_string(series.data.size()) + " samples";
}

std::string style_block() {
  try {
    return report::html::style_block(resource::resources().get(resource::kStyleSheet));
  } catch (const resource::resource_error& e) {
    log(e.text());
    return "";
  }
}

void read(queues::childqueue& queue, const std::vector<std::string>& args) {
  if (args.size() < 2) throw error::EParseError("usage: tavrel-report-reader MODE INSTANCE ...");
  const std::string& mode = args[0];
  queues::QueueDatabase db(queue);
  ServerReportInstance instance(db, host::parse_id(args[1], "instance"));
  if (mode == "tree") {
    tools::print_outline(instance, std::cout, samples_of);
    return;
  }
  if (args.size() < 3) throw error::EParseError("no zone given");
  zone_t zone = timeZoneValue(static_cast<int32_t>(cli::Args::to_int(args[2])));
  // The renderings go out as UTF-8, as the HTML declares and as the mail
  // sends them: stored bytes that are no valid UTF-8 are read as ISO-8859-1.
  text::Utf8Streambuf utf8(*std::cout.rdbuf());
  std::ostream out(&utf8);
  if (mode == "text") {
    report::render_report_text(instance, out, zone);
    return;
  }
  if (mode != "html") throw error::EParseError("unknown mode " + mode);
  if (args.size() < 4) throw error::EParseError("no image directory given");
  resource::resources().set_directory(
      args.size() > 4 ? args[4] : queues::server_configuration(queue).resource_directory);
  tools::FileImageGenerator images(args[3], instance.start(),
                                   instance.start() + instance.duration(), zone);
  report::render_report_html(out, instance, style_block(), images, zone);
}

// Ends the messenger's life in order: the shutdown towards the parent, then
// the events until the parent's end of stream. That end may have been read
// already, by a dialog that the parent's death ended; waiting for it again
// would wait for ever. A parent that went away never acknowledged the
// shutdown, and there is nothing to complete then.
void leave(queues::childqueue& queue, io::SiblingMessenger& messenger) {
  queue.shutdown();
  while (!queue.is_at_end(queues::main)) queue.next_event();
  if (messenger.shutdown_acknowledged()) messenger.completeShutdown();
}

}  // namespace

int main(int argc, char** argv) {
  meter::open_registry();
  int code = 0;
  try {
    io::SiblingMessenger messenger(12, "smem");
    queues::childqueue queue(messenger);
    try {
      read(queue, std::vector<std::string>(argv + 1, argv + argc));
    } catch (const error::Exception& e) {
      std::cout.flush();
      std::cerr << "error: " << e.text() << "\n";
      code = 1;
    }
    std::cout.flush();
    leave(queue, messenger);
  } catch (const error::Exception& e) {
    std::cerr << "error: " << e.text() << "\n";
    return 1;
  }
  return code;
}
