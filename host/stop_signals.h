// SIGINT, SIGTERM and SIGHUP as a selectable, so that tavrel-host stops in
// order on them: the reporter is ended and the FIFO directory removed, which
// the default action (ending the process at once) would leave behind.
#pragma once

#include <signal.h>

#include "io/selectable.h"

namespace host {

class StopSignals : public io::Selectable {
 public:
  // Blocks the three signals in this thread and takes them through a
  // signalfd. Raises error::ESystemError when the system refuses it.
  StopSignals();
  // Takes a signal still pending (the run is ending anyway), closes the
  // signalfd and gives back the previous signal mask.
  ~StopSignals() override;

  void name(std::string& out) const override { out = "StopSignals"; }
  io::WaitHandle wait_handle() const override;
  bool is_ready() const override { return received_ != 0; }
  // Reads the signal that arrived.
  bool absorbs_signal() override;

  // The first signal received; 0 while none came.
  int received() const { return received_; }

 private:
  int fd_ = -1;
  int received_ = 0;
  sigset_t previous_;
};

}  // namespace host
