// The file system as the resource files see it: the only place in resource/
// that talks to the operating system (file_posix.cc).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace resource {

// The files we take at most, so that a wrong file can't exhaust the memory
// of the process: pictures and a style sheet are a few kilobytes.
inline constexpr uint64_t kMaxResourceSize = 64 * 1024 * 1024;

// The whole contents of the regular file at `path`. Raises resource_error:
//   "Error loading resource \"" + path + "\": " + the reason, the reason being
//     "Error obtaining handle to read file size: " + system text, or
//     "Error getting file size: " + system text (also "Not a regular file"
//     and "File too large" past kMaxResourceSize);
//   "Error opening resource file " + path + ": " + system text;
//   "Error reading resource file: " + system text, or "File ended after N of
//     M bytes" when the file shrank meanwhile.
std::vector<uint8_t> read_resource_file(const std::string& path);

// The last write time of the file at `path`, in nanoseconds since 1970, or 0
// when it can't be read. Only compared for equality and against 0: a file
// whose time is exactly 0 gives 1. Never raises.
uint64_t file_time(const std::string& path);

}  // namespace resource
