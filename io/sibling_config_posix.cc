#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/error.h"
#include "io/sibling_config.h"
#include "io/system_error.h"

namespace io {
namespace {

std::string required_variable(const std::string& name, const char* missing) {
  const char* value = getenv(name.c_str());
  if (!value) throw error::ESystemError(missing);
  return value;
}

uint64_t parse_number(const std::string& text) {
  if (text.empty() || text.size() > 19 ||
      text.find_first_not_of("0123456789") != std::string::npos) {
    throw error::EParseError("Error parsing: \"" + text + "\"");
  }
  return std::stoull(text);
}

}  // namespace

siblingmessenger_conf_t siblingmessenger_conf_t::from_environment(const std::string& prefix) {
  siblingmessenger_conf_t conf;
  std::string mapfile = required_variable(prefix + "::mapfile", "No mapfile passed in environment");
  conf.fifoprefix =
      required_variable(prefix + "::fifoprefix", "No FIFO prefix passed in environment");
  std::string mapsize = required_variable(prefix + "::mapsize", "No mapsize passed in environment");
  uint64_t fd = parse_number(mapfile);
  if (fd > 1u << 30) throw error::EParseError("Error parsing: \"" + mapfile + "\"");
  conf.mapfile = static_cast<int>(fd);
  conf.mapsize = parse_number(mapsize);
  return conf;
}

std::string fifo_path(const std::string& fifoprefix, int id) {
  return fifoprefix + "." + std::to_string(id);
}

SharedMemory::SharedMemory(int fd, uint64_t size) : size_(size) {
  void* p = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
  if (p == MAP_FAILED) raise_last_error("Cannot map view for sibling messenger");
  base_ = static_cast<uint8_t*>(p);
}

SharedMemory::~SharedMemory() { munmap(base_, size_); }

int create_pool_descriptor(uint64_t size) {
  int fd = memfd_create("tavrelsmem", 0);
  if (fd < 0) raise_last_error("Cannot create shared memory pool");
  if (ftruncate(fd, static_cast<off_t>(size)) != 0) {
    int code = errno;
    close(fd);
    raise_system_error("Cannot size shared memory pool", code);
  }
  return fd;
}

OwnFifo::OwnFifo(std::string path) : path_(std::move(path)) {
  unlink(path_.c_str());
  if (mkfifo(path_.c_str(), 0600) != 0) raise_last_error("Cannot create anonymous pipe");
  reader_ = open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (reader_ < 0) {
    int code = errno;
    unlink(path_.c_str());
    raise_system_error("Cannot create anonymous pipe", code);
  }
  keeper_ = open(path_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  if (keeper_ < 0) {
    int code = errno;
    close(reader_);
    unlink(path_.c_str());
    raise_system_error("Pipe not connected", code);
  }
}

OwnFifo::~OwnFifo() {
  if (reader_ >= 0) close(reader_);
  if (keeper_ >= 0) close(keeper_);
  unlink(path_.c_str());
}

int OwnFifo::take_reader() {
  int fd = reader_;
  reader_ = -1;
  return fd;
}

int open_fifo_for_writing(const std::string& path) {
  int fd = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  return fd >= 0 ? fd : -errno;
}

void remove_path(const std::string& path) { unlink(path.c_str()); }

}  // namespace io

namespace io {
void close_pool_descriptor(int fd) {
  if (fd >= 0) close(fd);
}
}  // namespace io
