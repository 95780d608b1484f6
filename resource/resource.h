// One resource file (a picture or the style sheet), held in memory and
// reloaded when the file changes on disk.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "resource/resource_error.h"
#include "resource/resource_type.h"

namespace resource {

// The present time in seconds since 1970. Injected so that tests can set it.
using Clock = std::function<int64_t()>;
// The wall clock.
int64_t wall_clock_seconds();

// How long a load stays trusted before update() looks at the file again.
inline constexpr int64_t kUpdateInterval = 60;

// Not thread-safe: only the main thread uses resources. Movable, not
// copyable; the object owns its bytes.
class resource_t {
 public:
  // Derives the type from `path`, then loads the file. Raises resource_error
  // (texts in resource_type.h and file.h, plus "Error retrieving timestamp
  // for file: " + path).
  explicit resource_t(std::string path, Clock clock = wall_clock_seconds);
  resource_t(resource_t&&) = default;
  resource_t& operator=(resource_t&&) = default;

  // "image/png", "image/gif" or "text/css" (see mime_type_of).
  const char* mime_type() const { return mime_type_of(type_); }
  // The contents; valid until the next load (update() may replace them).
  std::span<const uint8_t> data() const { return data_; }
  // A copy of the contents as a string, for the style sheet.
  std::string text() const { return std::string(data_.begin(), data_.end()); }

  // Does nothing within kUpdateInterval seconds of the last load. After
  // that, reloads when the file's last write time differs from the one of
  // the last load; an equal time changes nothing, so the time is read again
  // at each later call. Raises resource_error: "Error retrieving timestamp
  // for file: " + path when the time can't be read, or a load's fault. On a
  // fault the old contents stay unless the new ones were in place already
  // (a time stamp fault after the read).
  void update();

  resource_type type() const { return type_; }
  uint64_t size() const { return data_.size(); }
  const std::string& name() const { return name_; }
  uint64_t mtime() const { return mtime_; }
  int64_t checked_at() const { return checked_at_; }

 private:
  void load();

  // Constant after construction.
  resource_type type_;
  std::string name_;  // The path that was opened.
  Clock clock_;

  // Replaced by each load.
  std::vector<uint8_t> data_;
  uint64_t mtime_ = 0;      // File time of the last load (file.h); 0: none.
  int64_t checked_at_ = 0;  // Seconds since 1970 of the last load.
};

}  // namespace resource
