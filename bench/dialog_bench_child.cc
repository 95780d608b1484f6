// The child of dialog_bench: joins as sibling 12 and runs N delete dialogs
// with the database, then writes "N SECONDS" to the file OUT and exits:
//   dialog_bench_child N OUT
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "base/error.h"
#include "io/sibling_messenger.h"
#include "queues/childqueue.h"
#include "queues/qdialog.h"

int main(int argc, char** argv) try {
  int n = argc > 1 ? std::atoi(argv[1]) : 10000;
  io::SiblingMessenger messenger(12, "smem");
  queues::childqueue queue(messenger);
  queues::QueueDatabase db(queue);
  dbms::Tql_Delete_Data request;
  request.id = tql::id_t{0, 1, 5};
  db.remove(request);  // The first one waits for the areas; not timed.
  auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < n; ++i) db.remove(request);
  std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
  FILE* out = argc > 2 ? std::fopen(argv[2], "w") : nullptr;
  if (!out) return 1;
  std::fprintf(out, "%d %.6f\n", n, spent.count());
  return std::fclose(out) == 0 ? 0 : 1;
} catch (const error::Exception& e) {
  std::fprintf(stderr, "Caught: %s\n", e.text().c_str());
  return 1;
}
