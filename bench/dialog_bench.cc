// Dialogs between a child and the host's database endpoint, next to a bare
// FIFO ping-pong of 8-byte records between two processes, in the same run:
//   dialog_bench CHILD [N]
// prints dialogs per second and the mean round trip of both, and their ratio
// (the goal: a dialog costs at most 3 times the bare round trip).
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "host/child_process.h"
#include "host/database_service.h"
#include "host/parent_messenger.h"
#include "host/temp_dir.h"
#include "io/selector.h"

namespace {

// Runs N dialogs of the child against the database endpoint; returns seconds.
double dialogs(const std::string& child_path, int n) {
  host::TempDir dir("dialog-bench");
  auto parent = host::ParentMessenger::create(dir.path() + "/tavrelsmem", 16 << 20, 1 << 20);
  io::SiblingMessenger dbms(queues::dbms, parent->configuration());
  queues::childqueue dbms_queue(dbms);
  queues::childqueue parent_queue(*parent);
  host::Database db;
  host::DatabaseService service(db, 1.0);
  std::string out = dir.path() + "/out";
  host::ChildProcess child({child_path, std::to_string(n), out}, parent->child_environment(),
                           parent->pool_descriptor());
  while (!child.exited()) {
    io::Selector<int> selector;
    selector.add(parent_queue.in_front(), 0);
    selector.add(dbms_queue.in_front(), 2);
    selector.add(child, 12);
    int who = selector.poll().second;
    if (who == 0) parent_queue.next_event();
    if (who == 2) {
      std::unique_ptr<queues::event> e = dbms_queue.next_event();
      if (e) service.handle(*e, dbms_queue, 0);
    }
  }
  FILE* f = std::fopen(out.c_str(), "r");
  int done = 0;
  double seconds = 0;
  if (!f || std::fscanf(f, "%d %lf", &done, &seconds) != 2 || done != n) {
    std::fprintf(stderr, "dialog child failed (exit %d)\n", child.exit_code());
    std::exit(1);
  }
  std::fclose(f);
  return seconds;
}

// N round trips of an 8-byte record over two FIFOs between two processes.
double fifo_ping_pong(int n) {
  host::TempDir dir("fifo-bench");
  std::string a = dir.path() + "/a", b = dir.path() + "/b";
  mkfifo(a.c_str(), 0600);
  mkfifo(b.c_str(), 0600);
  pid_t pid = fork();
  if (pid == 0) {
    int in = open(a.c_str(), O_RDONLY), out = open(b.c_str(), O_WRONLY);
    char record[8];
    for (int i = 0; i < n; ++i) {
      if (read(in, record, 8) != 8 || write(out, record, 8) != 8) _exit(1);
    }
    _exit(0);
  }
  int out = open(a.c_str(), O_WRONLY), in = open(b.c_str(), O_RDONLY);
  char record[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < n; ++i) {
    if (write(out, record, 8) != 8 || read(in, record, 8) != 8) std::exit(1);
  }
  std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
  waitpid(pid, nullptr, 0);
  close(out);
  close(in);
  return spent.count();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: dialog_bench CHILD [N]\n");
    return 2;
  }
  int n = argc > 2 ? std::atoi(argv[2]) : 20000;
  double dialog = dialogs(argv[1], n);
  double bare = fifo_ping_pong(n);
  std::printf("%-28s %12s %14s\n", "", "per second", "mean round trip");
  std::printf("%-28s %12.0f %12.1f us\n", "dialog (TQL_DELETE)", n / dialog, dialog / n * 1e6);
  std::printf("%-28s %12.0f %12.1f us\n", "bare FIFO ping-pong (8 B)", n / bare, bare / n * 1e6);
  std::printf("ratio dialog / bare: %.2f (goal: at most 3)\n", dialog / bare);
  return 0;
}
