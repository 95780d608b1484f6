#include <errno.h>
#include <execinfo.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <string.h>
#include <unistd.h>

#include <exception>

#include "base/crash.h"
#include "base/log.h"

namespace {

constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE};
constexpr size_t kTextMax = 520 + PATH_MAX;

CrashNotify g_notify = nullptr;
char g_dump_path[PATH_MAX + 8];
char g_alt_stack[64 * 1024];

// A fixed buffer that is filled with async-signal-safe appends only.
struct Text {
  char buf[kTextMax];
  size_t len = 0;

  void add(const char* s) {
    while (*s && len + 1 < sizeof(buf)) buf[len++] = *s++;
    buf[len] = 0;
  }
  void add(long v) {
    char digits[24];
    int n = 0;
    bool negative = v < 0;
    unsigned long u =
        negative ? 0ul - static_cast<unsigned long>(v) : static_cast<unsigned long>(v);
    do {
      digits[n++] = static_cast<char>('0' + u % 10);
      u /= 10;
    } while (u);
    if (negative) digits[n++] = '-';
    while (n) {
      char one[2] = {digits[--n], 0};
      add(one);
    }
  }
};

bool write_all(int fd, const char* p, size_t n) {
  while (n) {
    ssize_t w = write(fd, p, n);
    if (w < 0 && errno == EINTR) continue;
    if (w <= 0) return false;
    p += w;
    n -= static_cast<size_t>(w);
  }
  return true;
}

bool copy_file(int to, const char* from) {
  int in = open(from, O_RDONLY | O_CLOEXEC);
  if (in < 0) return false;
  char chunk[4096];
  bool ok = true;
  for (;;) {
    ssize_t r = read(in, chunk, sizeof(chunk));
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) break;
    if (!write_all(to, chunk, static_cast<size_t>(r))) {
      ok = false;
      break;
    }
  }
  close(in);
  return ok;
}

// Writes the dump; returns 0 or the errno of the failing write.
int write_dump(int fd, int signo) {
  Text head;
  head.add("signal ");
  head.add(static_cast<long>(signo));
  head.add(" (");
  head.add(sigabbrev_np(signo) ? sigabbrev_np(signo) : "?");
  head.add(")\npid ");
  head.add(static_cast<long>(getpid()));
  head.add("\n\nbacktrace:\n");
  if (!write_all(fd, head.buf, head.len)) return errno;
  void* frames[64];
  int n = backtrace(frames, 64);
  backtrace_symbols_fd(frames, n, fd);
  static const char kMaps[] = "\nmaps:\n";
  if (!write_all(fd, kMaps, sizeof(kMaps) - 1)) return errno;
  if (!copy_file(fd, "/proc/self/maps")) return errno ? errno : EIO;
  return 0;
}

void on_crash(int signo) {
  Text text;
  int fd = open(g_dump_path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd < 0) {
    text.add("Failed to create dump file '");
    text.add(g_dump_path);
    text.add("' (error ");
    text.add(static_cast<long>(errno));
    text.add(")");
  } else {
    int code = write_dump(fd, signo);
    close(fd);
    if (code == 0) {
      text.add(
          "An application error has been detected. Please report this error and submit the dump "
          "file in '");
      text.add(g_dump_path);
      text.add("' along with your error report");
    } else {
      text.add("Failed to save dump file to '");
      text.add(g_dump_path);
      text.add("' (error ");
      text.add(static_cast<long>(code));
      text.add(")");
    }
  }
  if (g_notify) g_notify(text.buf);
  text.add("\n");
  write_all(STDERR_FILENO, text.buf, text.len);

  // Let the signal end the process in the ordinary way.
  signal(signo, SIG_DFL);
  raise(signo);
}

void on_terminate() {
  signal(SIGSEGV, SIG_DFL);
  on_crash(SIGSEGV);
  _exit(128 + SIGSEGV);
}

}  // namespace

std::string dump_path_for(const std::string& program_path) {
  if (program_path.empty()) return "lumenara.dmp";
  size_t slash = program_path.rfind('/');
  size_t dot = program_path.rfind('.');
  if (dot != std::string::npos && (slash == std::string::npos || dot > slash)) {
    return program_path.substr(0, dot) + ".dmp";
  }
  return program_path + ".dmp";
}

void install_crash_handler(CrashNotify notify) {
  g_notify = notify;
  char exe[PATH_MAX];
  ssize_t n = readlink("/proc/self/exe", exe, sizeof(exe) - 1);
  std::string path = dump_path_for(n > 0 ? std::string(exe, static_cast<size_t>(n)) : "");
  strncpy(g_dump_path, path.c_str(), sizeof(g_dump_path) - 1);

  // backtrace() loads its unwinder on first use; do that now, not in the handler.
  void* warm[1];
  backtrace(warm, 1);

  stack_t alt{};
  alt.ss_sp = g_alt_stack;
  alt.ss_size = sizeof(g_alt_stack);
  sigaltstack(&alt, nullptr);

  struct sigaction action {};
  action.sa_handler = on_crash;
  action.sa_flags = SA_ONSTACK | SA_RESETHAND;
  sigemptyset(&action.sa_mask);
  for (int signo : kSignals) sigaction(signo, &action, nullptr);
  // Pure virtual calls end in std::terminate, so this routes both.
  std::set_terminate(on_terminate);
}

CrashHandlerAtStart::CrashHandlerAtStart() { install_crash_handler(log_system_event); }
