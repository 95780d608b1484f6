#include "resource/resource.h"

#include <chrono>

#include "resource/file.h"

namespace resource {

int64_t wall_clock_seconds() {
  return std::chrono::duration_cast<std::chrono::seconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

resource_t::resource_t(std::string path, Clock clock)
    : type_(type_from_path(path)), name_(std::move(path)), clock_(std::move(clock)) {
  load();
}

void resource_t::load() {
  data_ = read_resource_file(name_);
  const uint64_t time = file_time(name_);
  if (time == 0) throw resource_error("Error retrieving timestamp for file: " + name_);
  mtime_ = time;
  checked_at_ = clock_();
}

void resource_t::update() {
  if (clock_() - checked_at_ <= kUpdateInterval) return;
  const uint64_t time = file_time(name_);
  if (time == 0) throw resource_error("Error retrieving timestamp for file: " + name_);
  if (time != mtime_) load();
}

}  // namespace resource
