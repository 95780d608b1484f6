#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "resource/file.h"
#include "resource/resource_error.h"

namespace resource {
namespace {

std::string system_text(int code) { return std::strerror(code); }

// Closes the descriptor when it goes out of scope.
class Fd {
 public:
  explicit Fd(int fd) : fd_(fd) {}
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  ~Fd() {
    if (fd_ >= 0) ::close(fd_);
  }
  int get() const { return fd_; }

 private:
  int fd_;
};

// Step one: the size, through a handle of its own. O_NONBLOCK keeps a FIFO
// from blocking us; it is refused as not regular anyway.
uint64_t file_size(const std::string& path) {
  const std::string prefix = "Error loading resource \"" + path + "\": ";
  Fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (fd.get() < 0) {
    throw resource_error(prefix +
                         "Error obtaining handle to read file size: " + system_text(errno));
  }
  struct stat st;
  if (::fstat(fd.get(), &st) != 0) {
    throw resource_error(prefix + "Error getting file size: " + system_text(errno));
  }
  if (!S_ISREG(st.st_mode))
    throw resource_error(prefix + "Error getting file size: Not a regular file");
  const uint64_t size = static_cast<uint64_t>(st.st_size);
  if (size > kMaxResourceSize)
    throw resource_error(prefix + "Error getting file size: File too large");
  return size;
}

}  // namespace

std::vector<uint8_t> read_resource_file(const std::string& path) {
  std::vector<uint8_t> buffer(file_size(path));
  Fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (fd.get() < 0) {
    throw resource_error("Error opening resource file " + path + ": " + system_text(errno));
  }
  // One read as a rule; the loop only covers a signal or a partial read.
  size_t done = 0;
  while (done < buffer.size()) {
    const ssize_t n = ::read(fd.get(), buffer.data() + done, buffer.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) throw resource_error("Error reading resource file: " + system_text(errno));
    if (n == 0) {
      throw resource_error("Error reading resource file: File ended after " + std::to_string(done) +
                           " of " + std::to_string(buffer.size()) + " bytes");
    }
    done += static_cast<size_t>(n);
  }
  return buffer;
}

uint64_t file_time(const std::string& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return 0;
  const uint64_t t = static_cast<uint64_t>(st.st_mtim.tv_sec) * 1000000000u +
                     static_cast<uint64_t>(st.st_mtim.tv_nsec);
  return t == 0 ? 1 : t;
}

}  // namespace resource
