// Selectors: wait until one of a set of selectables is ready and hand it out.
//
// OsSelector is the bottom layer: it waits on descriptors with poll() and on
// deadlines. SelectorBase adds the stacked selectables (stacked.h) and the
// ready list; Selector<H> hands back a value of the caller's with each
// selectable. Single-threaded.
//
// Lifetimes: a selector must outlive what it was given, or those must be
// removed first; a selectable that is destroyed takes itself off. The
// destructor of SelectorBase removes what is still on it.
//
// Misuse (adding twice, removing what isn't there) is a fatal assertion with
// the words given below; a failing poll() is error::ESystemError
// "WaitForMultipleEvents returned error: " + the system's text.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "io/clock.h"
#include "io/selectable.h"

namespace io {

class StackedSelectableBack;
class StackedSelectableFront;

class OsSelector {
 public:
  OsSelector() = default;
  OsSelector(const OsSelector&) = delete;
  OsSelector& operator=(const OsSelector&) = delete;
  virtual ~OsSelector() = default;

  // Enters `s` and gives it the next slot of the poll set. A
  // front is the fatal assertion "Tried to add StackedSelectableFront to
  // OsSelector"; a second add "Selectable allready added to selector: " +
  // name.
  void add(Selectable& s);
  // Takes `s` out; the last slot fills its place. One that isn't there is the
  // fatal assertion "Selectable to remove not on selector".
  void remove(Selectable& s);
  // Notes that `s` reported readiness without the operating system. One that
  // isn't known is the fatal assertion name + " not found on os_avail!".
  void make_pending(Selectable& s);
  // Yields one ready selectable: a pending one, one whose descriptor was
  // signalled and didn't absorb it, or the one with the earliest deadline
  // once that has passed. With `nonblocking` set, throws io::ENotReady when
  // nothing is ready now. A wait that nothing could ever end (no descriptor
  // wanted, no deadline) is the fatal assertion "Wait without descriptor or
  // deadline would never end".
  Selectable& wait(bool nonblocking);

 private:
  // Takes the first pending entry that may be returned now, or null.
  Selectable* take_pending(TimePoint now);
  // Runs before_wait() on every selectable; returns the earliest deadline
  // and sets `earliest_owner` to its selectable.
  TimePoint prepare_round(Selectable*& earliest_owner);
  // Milliseconds until `earliest`, rounded up; -1 for no deadline.
  int wait_milliseconds(TimePoint earliest, TimePoint now) const;
  // Asks every descriptor owner what it wants this round; true if any wants
  // something.
  bool refresh_handles();

 protected:
  // The names that an io::ENotReady of a non-blocking wait gives.
  virtual std::string waited_names() const;
  // The names of `selectables`, sorted, joined by ", ".
  static std::string joined_names(const std::set<Selectable*>& selectables);

 private:
  std::set<Selectable*> os_avail_;
  std::vector<Selectable*> pending_;  // In order of arrival, no duplicates.
  // Parallel: the descriptors of one round and their owners; no holes.
  std::vector<WaitHandle> handles_;
  std::vector<Selectable*> owners_;
  std::unordered_map<Selectable*, size_t> index_;
};

class SelectorBase : public OsSelector {
 public:
  // Removes what is still on it (fronts first); a selectable left over is the
  // fatal assertion "avail not empty in ~SelectorBase".
  ~SelectorBase() override;

  // Registers `s` with its `client` (the back whose underlying selectable it
  // is, or null). A second entry is the fatal assertion name + " added twice
  // to Selector". Ends with s.addSelector(*this).
  void add(Selectable& s, StackedSelectableBack* client);
  // Unregisters `s` and calls s.removeSelector(*this). An unknown one is the
  // fatal assertion "Unknown " + name + " removed twice from Selector".
  virtual void remove(Selectable& s);
  // `s` reports readiness outside a wait. It must be registered: otherwise
  // the fatal assertion name + " not found on avail map".
  void selectable_ready(Selectable& s);
  // Yields one ready selectable that has no client. With `nonblocking` set,
  // throws io::ENotReady when nothing is ready; the selector stays usable.
  Selectable& wait(bool nonblocking);

 private:
  bool ready_by_test(Selectable& s) const;
  void processReady(Selectable& s);
  Selectable* take_ready();
  void collect_ready_fronts();
  std::string waited_names() const override;

  std::map<Selectable*, StackedSelectableBack*> avail_;
  std::set<Selectable*> without_client_;
  std::set<Selectable*> fronts_;
  std::deque<Selectable*> ready_;  // In order of arrival.
};

class BareSelector : public SelectorBase {};

// The fatal assertion "Added selectable " + name + " twice".
[[noreturn]] void selector_added_twice(Selectable& s);
// The fatal assertion "pollImpl gave unknown selectable " + name.
[[noreturn]] void selector_unknown_result(Selectable& s);

template <typename H>
class Selector : public SelectorBase {
 public:
  // Adds `s`, handed back with `value` by poll.
  void add(Selectable& s, H value) {
    if (!values_.emplace(&s, value).second) selector_added_twice(s);
    SelectorBase::add(s, nullptr);
  }
  void remove(Selectable& s) override {
    values_.erase(&s);
    SelectorBase::remove(s);
  }
  // Waits for a ready selectable and returns it with its value.
  std::pair<Selectable*, H> poll() { return pollImpl(false); }
  // As poll, but throws io::ENotReady when nothing is ready now.
  std::pair<Selectable*, H> poll_nonblocking() { return pollImpl(true); }

 private:
  std::pair<Selectable*, H> pollImpl(bool nonblocking) {
    Selectable& s = wait(nonblocking);
    auto it = values_.find(&s);
    if (it == values_.end()) selector_unknown_result(s);
    return {&s, it->second};
  }

  std::map<Selectable*, H> values_;
};

// Returns when `s` is ready; waits in a temporary selector if it isn't.
void waitReady(Selectable& s);
// The same with an upper limit: kInfinite waits without one, a zero
// `timeout` only looks. Throws io::ETimeout ("Timeout waiting for " + name)
// when the time runs out, a zero time-out with nothing ready included.
void waitReady(Selectable& s, Duration timeout);

// A selectable that ends every waitReady when it becomes ready: the wait
// raises io::EEndOfStream (its name, "Parent process has ended"). A child
// sets its ParentWatch here, so that no wait outlives the parent; null (the
// default) sets none. The guard must not be a stacked selectable's
// underlying one, and must outlive the setting.
void set_wait_guard(Selectable* guard);

}  // namespace io
