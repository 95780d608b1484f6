#include "base/fatal.h"
#include "io/errors.h"
#include "io/selector.h"
#include "io/timer.h"

namespace io {

namespace {

constexpr int kTarget = 0;
constexpr int kTimer = 1;

void check_target(Selectable& got, Selectable& wanted) {
  if (&got != &wanted)
    assertion_failed("Got wrong selectable in waitReady: " + name_of(got));
}

}  // namespace

void waitReady(Selectable& s) {
  if (s.is_ready()) return;
  Selector<int> selector;
  selector.add(s, kTarget);
  check_target(*selector.poll().first, s);
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
  auto [got, which] = selector.poll();
  if (which == kTimer) throw ETimeout(name_of(s));
  check_target(*got, s);
}

}  // namespace io
