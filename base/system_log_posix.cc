// The system log entry, written as one datagram to the local syslog socket
// so that it is safe inside a signal handler (syslog(3) takes a lock).
#include <string.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "base/log.h"

void log_system_event(const char* text) {
  // Priority: facility user (1) * 8 + severity error (3).
  static const char kPrefix[] = "<11>Tavrel: ";
  char line[1024];
  size_t n = sizeof(kPrefix) - 1;
  memcpy(line, kPrefix, n);
  size_t len = strlen(text);
  if (len > sizeof(line) - n) len = sizeof(line) - n;
  memcpy(line + n, text, len);
  n += len;

  int fd = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (fd < 0) return;
  sockaddr_un addr{};
  addr.sun_family = AF_UNIX;
  strcpy(addr.sun_path, "/dev/log");
  sendto(fd, line, n, MSG_NOSIGNAL, reinterpret_cast<sockaddr*>(&addr), sizeof(addr));
  close(fd);
}
