// tavrel-tool report-tree and render: a stored report read through the read
// model. The tool loads the world (or a host's dump) into the stand-in
// database and plays the host in-process; the reading is done by its child
// tavrel-report-reader (tools/reader/), over the real messenger and queue,
// which prints the outline or the rendered report to standard output.
#include <filesystem>
#include <iostream>

#include "base/error.h"
#include "base/program_path.h"
#include "host/host_runner.h"
#include "host/world_names.h"
#include "tools/commands.h"
#include "tools/zone_arg.h"

namespace tools {
namespace {

// --world FILE or its synonym --dump FILE (a dump is a world file).
std::string world_file(Args& args) {
  std::optional<std::string> world = args.option("--world");
  std::optional<std::string> dump = args.option("--dump");
  if (world && dump) throw error::EParseError("give --world or --dump, not both");
  if (!world && !dump) throw error::EParseError("missing --world FILE (or --dump FILE)");
  return world ? *world : *dump;
}

// The instance id, checked here so that a typo doesn't start a host.
std::string instance_arg(Args& args) {
  std::string id = args.required("--instance");
  host::parse_id(id, "--instance");
  return id;
}

// Runs the reader under a host over `world`; its output is ours. Returns its
// exit code (it has written its own "error: " line).
int run_reader(const std::string& world, std::vector<std::string> reader_args) {
  host::HostOptions options;
  options.world = world;
  options.reporter = paths::companion_program("tavrel-report-reader", ".");
  options.reporter_args = std::move(reader_args);
  options.log = "/dev/null";
  std::cout.flush();
  return host::run_host(options);
}

int run_report_tree(Args& args) {
  std::string world = world_file(args);
  std::string id = instance_arg(args);
  args.done();
  return run_reader(world, {"tree", id});
}

int run_render(Args& args) {
  std::string world = world_file(args);
  std::string id = instance_arg(args);
  std::string format = args.required("--format");
  std::string zone = std::to_string(zone_arg(args).value());
  std::optional<std::string> images = args.option("--images");
  std::optional<std::string> resources = args.option("--resources");
  args.done();
  if (format == "text") {
    if (images || resources) throw error::EParseError("--images and --resources are for html");
    return run_reader(world, {"text", id, zone});
  }
  if (format != "html") throw error::EParseError("--format must be html or text: " + format);
  if (!images) throw error::EParseError("--format html needs --images DIR");
  std::error_code failed;
  std::filesystem::create_directories(*images, failed);
  if (failed) {
    throw error::ESystemError("Cannot make the directory " + *images + ": " + failed.message());
  }
  std::vector<std::string> reader{"html", id, zone, *images};
  if (resources) reader.push_back(*resources);
  return run_reader(world, reader);
}

}  // namespace

std::vector<Command> report_commands() {
  return {{"report-tree",
           "--world FILE --instance ID  (a stored report as an outline; FILE may be a host dump)",
           run_report_tree},
          {"render",
           "--dump FILE --instance ID --format html|text [--zone Z] [--images DIR] "
           "[--resources DIR]  (a stored report rendered; html writes its pictures into DIR)",
           run_render}};
}

}  // namespace tools
