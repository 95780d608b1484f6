// tavrel-tool tavml: converts a tavml text from stdin to HTML or plain text.
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "base/error.h"
#include "tavml/tavml.h"
#include "tools/commands.h"

namespace tools {
namespace {

// Writes the whole conversion only when it succeeded, so that a fault leaves
// stdout empty and the caller sees just "error: " and the fault text.
int run_tavml(Args& args) {
  const bool html = args.flag("--html");
  const bool text = args.flag("--text");
  const std::optional<std::string> target = args.option("--target");
  args.done();
  if (html == text) throw error::EParseError("give one of --html and --text");
  if (target && !html) throw error::EParseError("--target goes with --html only");
  const std::string input((std::istreambuf_iterator<char>(std::cin)),
                          std::istreambuf_iterator<char>());
  std::string output;
  if (html) {
    tavml::toHtml(output, input, target.value_or(""));
  } else {
    tavml::toText(output, input);
  }
  std::cout << output;
  return 0;
}

}  // namespace

std::vector<Command> tavml_commands() {
  return {{"tavml", "--html [--target T] | --text  (tavml text on stdin)", run_tavml}};
}

}  // namespace tools
