// The store of resource files: loaded by number at first use, kept for the
// life of the process, reloaded when a file changes.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "resource/resource.h"

namespace resource {

// The numbers run from 0 to kResourceCount - 1.
inline constexpr int32_t kResourceCount = 35;

// The numbers that the report and its mailing name directly.
inline constexpr int32_t kStyleSheet = 0;   // tavrel.css
inline constexpr int32_t kOkLamp = 1;       // ok_lamp_small.png
inline constexpr int32_t kWarningLamp = 2;  // warning_lamp_small.png
inline constexpr int32_t kErrorLamp = 3;    // error_lamp_small.png
inline constexpr int32_t kReportLogo = 32;  // report_logo.png
inline constexpr int32_t kSpacer = 34;      // spacer.gif

// The fixed file name of a resource number ("tavrel.css" for 0,
// "ok_lamp_small.png" for 1, ...), or nullptr for a number out of range.
const char* resource_file_name(int32_t number);

// Not thread-safe: only the main thread uses the store.
class resource_collection {
 public:
  explicit resource_collection(Clock clock = wall_clock_seconds) : clock_(std::move(clock)) {}
  resource_collection(const resource_collection&) = delete;
  resource_collection& operator=(const resource_collection&) = delete;

  // The directory of the files; empty means the working directory.
  void set_directory(std::string directory) { directory_ = std::move(directory); }
  const std::string& directory() const { return directory_; }

  // The resource of `number`. At the first call, loads the file (directory
  // + "/" + file name, or the bare name when the directory is empty); a
  // fault raises resource_error and nothing is kept, so the next call tries
  // again. Later calls run update(); a fault there is logged at level 0 as
  // "Error updating resource: " + text, and the copy in memory is returned.
  // A number out of range raises resource_error "Unknown resource number: "
  // + number. The reference stays valid as long as the store lives; its
  // data() may change at a later get().
  const resource_t& get(int32_t number);

 private:
  Clock clock_;  // Constant after construction.
  std::string directory_;
  std::map<int32_t, resource_t> resources_;  // Entries never leave.
};

// The process-wide store. Its directory is set at start from the server
// configuration's resource_directory.
resource_collection& resources();

}  // namespace resource
