#include <errno.h>
#include <poll.h>

#include "io/poll.h"
#include "io/system_error.h"

namespace io {

namespace {

short poll_events(unsigned events) {
  short out = 0;
  if (events & kWaitRead) out |= POLLIN;
  if (events & kWaitWrite) out |= POLLOUT;
  return out;
}

}  // namespace

int poll_handles(const std::vector<WaitHandle>& handles, int timeout_ms) {
  std::vector<pollfd> fds(handles.size());
  for (size_t i = 0; i < handles.size(); ++i) {
    const WaitHandle& h = handles[i];
    // A negative descriptor is ignored by poll(): nothing is wanted of it now.
    fds[i].fd = h.events == kWaitNone || !h.valid() ? -1 : h.fd;
    fds[i].events = poll_events(h.events);
  }
  int n = ::poll(fds.data(), fds.size(), timeout_ms);
  if (n < 0) {
    if (errno == EINTR) return kPollInterrupted;
    raise_system_error("WaitForMultipleEvents returned error", errno);
  }
  if (n == 0) return kPollTimedOut;
  for (size_t i = 0; i < fds.size(); ++i)
    if (fds[i].revents != 0) return static_cast<int>(i);
  return kPollTimedOut;
}

}  // namespace io
