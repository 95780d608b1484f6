// Command-line arguments of a program or of one of its subcommands (used by
// tavrel-tool and tavrel-host). Options are taken out as they are asked for;
// whatever is left at the end is an error, so a typo never passes in
// silence. Failures raise error::EParseError, which the programs print as
// "error: " and the text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cli {

class Args {
 public:
  explicit Args(std::vector<std::string> words) : words_(std::move(words)) {}

  // True if the flag was given (and takes it out).
  bool flag(const std::string& name);
  // The value after `name`, if given.
  std::optional<std::string> option(const std::string& name);
  // The value after `name`; raises when missing.
  std::string required(const std::string& name);
  // The next positional word; raises with `what` when none is left.
  std::string positional(const std::string& what);
  // Raises if anything was not taken.
  void done() const;

  static double to_double(const std::string& text);
  static int64_t to_int(const std::string& text);
  static uint64_t to_uint(const std::string& text);

 private:
  std::vector<std::string> words_;
};

}  // namespace cli
