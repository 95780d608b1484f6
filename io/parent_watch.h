// The parent process, seen from a child: a selectable that becomes ready
// when the parent has ended, and a guard that ends a child that outlives its
// parent for too long.
//
// A child's own FIFO is kept open for writing by the child itself, so the
// parent's death never shows as the end of a stream; the messenger watches
// the parent through this selectable instead (a pidfd, readable once the
// process has ended). Waits that don't involve the messenger (a mail server
// that doesn't answer) are ended by the wait guard (wait_guard.h).
#pragma once

#include <string>

#include "io/selectable.h"

namespace io {

class ParentWatch : public Selectable {
 public:
  // Watches the process's parent. When the parent is gone already (the
  // process was handed to a reaper before the watch was open) the watch is
  // ready at once. Where the system can't watch a process, it never becomes
  // ready.
  ParentWatch();
  ~ParentWatch() override;

  void name(std::string& out) const override { out = "ParentWatch"; }
  // The pidfd, for reading, until the parent was seen gone.
  WaitHandle wait_handle() const override;
  // The parent was seen gone.
  bool is_ready() const override { return gone_; }
  // The pidfd was signalled: the parent has ended.
  bool absorbs_signal() override;

 private:
  int pidfd_ = -1;
  bool gone_ = false;
};

// Arms the guard of a child against outliving its parent: when the parent
// ends, the process gets a signal (PR_SET_PDEATHSIG) that starts a clock of
// `grace_seconds`; if the process still runs then, SIGALRM ends it. The
// orderly end (the messenger's end of stream) has that long to finish. Once
// per process, at start; a parent that is already gone starts the clock at
// once.
void guard_parent_death(unsigned grace_seconds);

}  // namespace io
