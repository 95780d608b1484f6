#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "io/parent_watch.h"

namespace io {

ParentWatch::ParentWatch() {
  pid_t parent = getppid();
  pidfd_ = static_cast<int>(syscall(SYS_pidfd_open, parent, 0));
  // A parent that ended before the pidfd was open has handed this process to
  // a reaper: the pidfd (if any) is the reaper's, and the parent is gone.
  if (getppid() != parent) gone_ = true;
}

ParentWatch::~ParentWatch() {
  leaveSelectors();
  if (pidfd_ >= 0) close(pidfd_);
}

WaitHandle ParentWatch::wait_handle() const { return {pidfd_, gone_ ? kWaitNone : kWaitRead}; }

bool ParentWatch::absorbs_signal() {
  gone_ = true;
  return false;
}

namespace {

// Written before the handler is installed, read in it.
volatile unsigned grace = 0;
volatile pid_t first_parent = 0;

// The parent-death signal comes when the thread that started the process
// ends; only a change of parent means that the parent process has gone.
void on_parent_death(int) {
  if (getppid() != first_parent) alarm(grace);
}

}  // namespace

void guard_parent_death(unsigned grace_seconds) {
  grace = grace_seconds;
  first_parent = getppid();
  struct sigaction action {};
  action.sa_handler = on_parent_death;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGUSR2, &action, nullptr);
  signal(SIGALRM, SIG_DFL);
  prctl(PR_SET_PDEATHSIG, SIGUSR2);
  // The parent may have gone before the signal was asked for.
  if (getppid() != first_parent) alarm(grace_seconds);
}

}  // namespace io
