#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

#include "host/child_process.h"
#include "io/system_error.h"

namespace host {

ChildProcess::ChildProcess(const std::vector<std::string>& argv,
                           const std::map<std::string, std::string>& extra_env, int inherit_fd)
    : program_(argv.at(0)) {
  // Build everything the child needs before fork: after it only
  // async-signal-safe calls are allowed.
  std::vector<std::string> env_text;
  for (char** e = environ; *e; ++e) {
    std::string entry(*e);
    std::string key = entry.substr(0, entry.find('='));
    if (!extra_env.count(key)) env_text.push_back(entry);
  }
  for (const auto& [key, value] : extra_env) env_text.push_back(key + "=" + value);
  std::vector<char*> env_ptrs, arg_ptrs;
  for (std::string& s : env_text) env_ptrs.push_back(s.data());
  env_ptrs.push_back(nullptr);
  std::vector<std::string> args = argv;
  for (std::string& s : args) arg_ptrs.push_back(s.data());
  arg_ptrs.push_back(nullptr);

  // The child starts with no signal blocked: a blocked signal (the host
  // takes its stop signals through a signalfd) would stay blocked after exec.
  sigset_t no_signals;
  sigemptyset(&no_signals);

  int report[2];  // The child writes errno here when exec fails.
  if (pipe2(report, O_CLOEXEC) != 0) io::raise_last_error("Cannot start " + program_);
  pid_ = fork();
  if (pid_ < 0) {
    int code = errno;
    close(report[0]);
    close(report[1]);
    io::raise_system_error("Cannot start " + program_, code);
  }
  if (pid_ == 0) {
    if (inherit_fd >= 0) fcntl(inherit_fd, F_SETFD, 0);
    sigprocmask(SIG_SETMASK, &no_signals, nullptr);
    execve(arg_ptrs[0], arg_ptrs.data(), env_ptrs.data());
    int code = errno;
    (void)!write(report[1], &code, sizeof(code));
    _exit(127);
  }
  close(report[1]);
  int code = 0;
  ssize_t n = read(report[0], &code, sizeof(code));
  close(report[0]);
  if (n == sizeof(code)) {
    waitpid(pid_, nullptr, 0);
    pid_ = -1;
    io::raise_system_error("Cannot start " + program_, code);
  }
  pidfd_ = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
  if (pidfd_ < 0) io::raise_last_error("Cannot watch " + program_);
}

ChildProcess::~ChildProcess() {
  leaveSelectors();
  if (pid_ > 0 && !exited_) {
    kill(pid_, SIGKILL);
    reap(true);
  }
  if (pidfd_ >= 0) close(pidfd_);
}

void ChildProcess::name(std::string& out) const {
  out = "ChildProcess(" + program_ + ":" + std::to_string(pid_) + ")";
}

io::WaitHandle ChildProcess::wait_handle() const {
  return {pidfd_, exited_ ? io::kWaitNone : io::kWaitRead};
}

bool ChildProcess::absorbs_signal() { return !reap(false); }

bool ChildProcess::reap(bool block) {
  if (exited_) return true;
  int status = 0;
  pid_t r;
  do {
    r = waitpid(pid_, &status, block ? 0 : WNOHANG);
  } while (r < 0 && errno == EINTR);
  if (r != pid_) return false;
  exited_ = true;
  exit_code_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return true;
}

void ChildProcess::send_signal(int signo) const {
  if (pid_ > 0 && !exited_) kill(pid_, signo);
}

int ChildProcess::wait() {
  reap(true);
  return exit_code_;
}

}  // namespace host
