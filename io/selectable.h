// A thing that can become ready, and the descriptor behind it.
//
// All waiting in the process goes through selectables and selectors
// (selector.h). A selectable is backed by a descriptor (wait_handle), by a
// deadline, or by other selectables (stacked.h). Single-threaded: a
// selectable and its selectors belong to one thread.
#pragma once

#include <string>
#include <vector>

#include "io/clock.h"

namespace io {

class SelectorBase;

// What a descriptor is waited on for; bits.
inline constexpr unsigned kWaitNone = 0;
inline constexpr unsigned kWaitRead = 1;
inline constexpr unsigned kWaitWrite = 2;

// The operating-system object of a selectable: a descriptor and what to wait
// for on it now. `fd` is -1 for none. The selectors ask for it afresh on each
// round, so both may change while the selectable is on a selector (kWaitNone:
// nothing wanted in this round, the descriptor is skipped).
struct WaitHandle {
  int fd = -1;
  unsigned events = kWaitNone;
  bool valid() const { return fd >= 0; }
};

class Selectable {
 public:
  Selectable() = default;
  Selectable(const Selectable&) = delete;
  Selectable& operator=(const Selectable&) = delete;

  // Takes itself off every selector it is still on.
  virtual ~Selectable();
  // Sets `out` to a name for messages ("Timer", "SomeSibling", ...).
  virtual void name(std::string& out) const = 0;
  // The descriptor to wait on; the default is none.
  virtual WaitHandle wait_handle() const;
  // True when an operation would not block now.
  virtual bool is_ready() const = 0;
  // Asked after the descriptor was signalled; this is where a stream
  // completes its transfer. True means: nothing for the caller yet, wait on.
  // The default is false.
  virtual bool absorbs_signal();
  // Called on each round before the process sleeps; a stream states here
  // which transfer it wants. It must not add selectables to or remove them
  // from the selector that calls it. The default does nothing.
  virtual void before_wait();
  // True, and `when` set, when the selectable becomes ready at a point in
  // time. The default is false.
  virtual bool deadline(TimePoint& when) const;
  // Notes `selector`; if is_ready(), tells it at once (selectable_ready).
  virtual void addSelector(SelectorBase& selector);
  // Forgets `selector`. One that isn't noted is the fatal assertion
  // "Unable to remove selector in: " + name.
  virtual void removeSelector(SelectorBase& selector);

 protected:
  // Takes this selectable off every selector. The destructor does it; a
  // class whose removal depends on its own type (a stacked front) calls it
  // from its own destructor, while that type is still intact.
  void leaveSelectors();

 private:
  std::vector<SelectorBase*> selectors_;  // The selectors it is on.
};

// The name of `s` as a string.
std::string name_of(const Selectable& s);

}  // namespace io
