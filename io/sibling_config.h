// What a child finds in its environment to join its siblings, and the
// operating-system pieces of the messenger: the pool mapping and the FIFOs.
//
// Variables, with the program's prefix (the string "smem"):
//   prefix + "::mapfile"     decimal number of the inherited descriptor of the
//                            pool (a memfd)
//   prefix + "::mapsize"     decimal size of the pool in bytes
//   prefix + "::fifoprefix"  path prefix of the FIFOs: a sibling's FIFO is
//                            fifoprefix + "." + its id
#pragma once

#include <cstdint>
#include <string>

namespace io {

struct siblingmessenger_conf_t {
  int mapfile = -1;
  std::string fifoprefix;
  uint64_t mapsize = 0;

  // Reads the three variables. A missing one raises error::ESystemError
  // ("No mapfile passed in environment", "No FIFO prefix passed in
  // environment", "No mapsize passed in environment"); a number that doesn't
  // parse wholly raises error::EParseError "Error parsing: " + quoted text.
  static siblingmessenger_conf_t from_environment(const std::string& prefix);
};

// The FIFO path of sibling `id`.
std::string fifo_path(const std::string& fifoprefix, int id);

// Maps the pool read and write. Raises error::ESystemError "Cannot map view
// for sibling messenger: " + the system's text. The mapping ends with the
// object.
class SharedMemory {
 public:
  SharedMemory(int fd, uint64_t size);
  ~SharedMemory();
  SharedMemory(const SharedMemory&) = delete;
  SharedMemory& operator=(const SharedMemory&) = delete;

  uint8_t* base() const { return base_; }
  uint64_t size() const { return size_; }

 private:
  uint8_t* base_;
  uint64_t size_;
};

// A new pool: an anonymous memfd of `size` bytes, zeroed, inherited by
// children (no close-on-exec). Raises error::ESystemError.
int create_pool_descriptor(uint64_t size);

// This process's own FIFO: created at `path` (an old file there is replaced),
// opened for reading without blocking, and kept open for writing too, so that
// the reader never sees the end of the stream when peers come and go. The
// destructor closes the keeper and removes the path; the reading descriptor
// is handed to a stream, which owns it.
class OwnFifo {
 public:
  // Raises error::ESystemError "Cannot create anonymous pipe: " + text.
  explicit OwnFifo(std::string path);
  ~OwnFifo();
  OwnFifo(const OwnFifo&) = delete;
  OwnFifo& operator=(const OwnFifo&) = delete;

  // The reading descriptor; the caller owns it from now on.
  int take_reader();
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  int reader_ = -1;
  int keeper_ = -1;
};

// Opens a peer's FIFO for writing without blocking; returns the descriptor,
// or minus the system's code when the FIFO isn't there or has no reader yet.
int open_fifo_for_writing(const std::string& path);

// Removes a file, ignoring errors (cleanup of FIFOs left by dead peers).
void remove_path(const std::string& path);

}  // namespace io

namespace io {
// Closes the pool's descriptor (the parent's, at its end).
void close_pool_descriptor(int fd);
}  // namespace io
