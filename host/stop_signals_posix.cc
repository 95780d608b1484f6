#include <sys/signalfd.h>
#include <unistd.h>

#include "host/stop_signals.h"
#include "io/system_error.h"

namespace host {

StopSignals::StopSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (int signo : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&set, signo);
  if (pthread_sigmask(SIG_BLOCK, &set, &previous_) != 0) {
    io::raise_last_error("Cannot block the stop signals");
  }
  fd_ = signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
  if (fd_ < 0) {
    pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
    io::raise_last_error("Cannot watch the stop signals");
  }
}

StopSignals::~StopSignals() {
  leaveSelectors();
  // A signal that came after the last wait is taken here: unblocked, it would
  // end the process in the middle of its clean-up.
  absorbs_signal();
  close(fd_);
  pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
}

io::WaitHandle StopSignals::wait_handle() const { return {fd_, io::kWaitRead}; }

bool StopSignals::absorbs_signal() {
  signalfd_siginfo info;
  while (read(fd_, &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
    if (received_ == 0) received_ = static_cast<int>(info.ssi_signo);
  }
  return received_ == 0;
}

}  // namespace host
