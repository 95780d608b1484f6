// A child process of the host, and a selectable that becomes ready when it
// has exited.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "io/selectable.h"

namespace host {

class ChildProcess : public io::Selectable {
 public:
  // Starts `argv[0]` (a path) with `argv`, the host's environment plus
  // `extra_env`, and `inherit_fd` open in the child (the pool's descriptor;
  // -1 for none). Raises error::ESystemError when the program can't start.
  ChildProcess(const std::vector<std::string>& argv,
               const std::map<std::string, std::string>& extra_env, int inherit_fd);
  // Kills a child that still runs and reaps it.
  ~ChildProcess() override;

  void name(std::string& out) const override;
  io::WaitHandle wait_handle() const override;
  // True once the child has exited and was reaped.
  bool is_ready() const override { return exited_; }
  // Reaps the child when its descriptor says it has ended.
  bool absorbs_signal() override;

  int pid() const { return pid_; }
  bool exited() const { return exited_; }
  // The exit code, or 128 + the signal that ended it.
  int exit_code() const { return exit_code_; }
  // Sends a signal (SIGKILL to end it hard, SIGTERM, ...).
  void send_signal(int signo) const;
  // Blocks until the child has ended; returns the exit code.
  int wait();

 private:
  bool reap(bool block);

  std::string program_;
  int pid_ = -1;
  int pidfd_ = -1;
  bool exited_ = false;
  int exit_code_ = 0;
};

}  // namespace host
