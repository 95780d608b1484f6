#include "base/fatal.h"
#include "io/errors.h"
#include "io/selector.h"
#include "io/timer.h"

namespace io {

namespace {

constexpr int kTarget = 0;
constexpr int kTimer = 1;
constexpr int kGuard = 2;

Selectable* wait_guard = nullptr;

// Adds the guard to `selector`, unless the wait is for the guard itself.
void add_guard(Selector<int>& selector, Selectable& s) {
  if (wait_guard && wait_guard != &s) selector.add(*wait_guard, kGuard);
}

[[noreturn]] void guard_fired() {
  throw EEndOfStream(name_of(*wait_guard), "Parent process has ended");
}

void check_target(Selectable& got, Selectable& wanted) {
  if (&got != &wanted) assertion_failed("Got wrong selectable in waitReady: " + name_of(got));
}

}  // namespace

void set_wait_guard(Selectable* guard) { wait_guard = guard; }

void waitReady(Selectable& s) {
  if (s.is_ready()) return;
  Selector<int> selector;
  selector.add(s, kTarget);
  add_guard(selector, s);
  auto [got, which] = selector.poll();
  if (which == kGuard) guard_fired();
  check_target(*got, s);
}

void waitReady(Selectable& s, Duration timeout) {
  if (timeout == kInfinite) return waitReady(s);
  if (s.is_ready()) return;
  // Declared before the selector, so that it outlives it.
  Timer timer(Timer::due_in(timeout));
  Selector<int> selector;
  selector.add(s, kTarget);
  if (timeout <= Duration::zero()) {
    try {
      check_target(*selector.poll_nonblocking().first, s);
    } catch (const ENotReady&) {
      // A zero time-out that finds nothing ready has run out like any other.
      throw ETimeout(name_of(s));
    }
    return;
  }
  selector.add(timer, kTimer);
  add_guard(selector, s);
  auto [got, which] = selector.poll();
  if (which == kTimer) throw ETimeout(name_of(s));
  if (which == kGuard) guard_fired();
  check_target(*got, s);
}

}  // namespace io
