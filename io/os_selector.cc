#include <algorithm>
#include <climits>

#include "base/fatal.h"
#include "io/errors.h"
#include "io/poll.h"
#include "io/selector.h"
#include "io/stacked.h"

namespace io {

void OsSelector::add(Selectable& s) {
  TAVREL_ASSERT(dynamic_cast<StackedSelectableFront*>(&s) == nullptr,
                "Tried to add StackedSelectableFront to OsSelector");
  if (!os_avail_.insert(&s).second)
    assertion_failed("Selectable allready added to selector: " + name_of(s));
  // Every selectable gets a slot, also one without a descriptor now: a
  // stream may get its descriptor later (PipeOStream::set_handle), and the
  // slots are asked afresh each round.
  index_[&s] = owners_.size();
  owners_.push_back(&s);
  handles_.push_back(s.wait_handle());
}

void OsSelector::remove(Selectable& s) {
  TAVREL_ASSERT(os_avail_.erase(&s) == 1, "Selectable to remove not on selector");
  pending_.erase(std::remove(pending_.begin(), pending_.end(), &s), pending_.end());
  auto it = index_.find(&s);
  // The last entry fills the hole; the vectors keep no order.
  size_t slot = it->second;
  index_.erase(it);
  if (slot + 1 != owners_.size()) {
    owners_[slot] = owners_.back();
    handles_[slot] = handles_.back();
    index_[owners_[slot]] = slot;
  }
  owners_.pop_back();
  handles_.pop_back();
}

void OsSelector::make_pending(Selectable& s) {
  if (os_avail_.count(&s) == 0) assertion_failed(name_of(s) + " not found on os_avail!");
  if (std::find(pending_.begin(), pending_.end(), &s) == pending_.end()) pending_.push_back(&s);
}

Selectable* OsSelector::take_pending(TimePoint now) {
  while (!pending_.empty()) {
    Selectable* s = pending_.front();
    pending_.erase(pending_.begin());
    TimePoint when;
    bool has_deadline = s->deadline(when);
    bool due = has_deadline && when <= now;
    if (!s->is_ready() && !s->wait_handle().valid() && !due) continue;
    // One with a deadline is taken by the time-out path instead.
    if (!has_deadline) return s;
  }
  return nullptr;
}

TimePoint OsSelector::prepare_round(Selectable*& earliest_owner) {
  TimePoint earliest = kNoDeadline;
  earliest_owner = nullptr;
  for (Selectable* s : os_avail_) {
    TimePoint when;
    if (s->deadline(when)) {
      if (when < earliest) {
        earliest = when;
        earliest_owner = s;
      }
      s->before_wait();
    } else {
      s->before_wait();
      if (s->is_ready()) make_pending(*s);
    }
  }
  return earliest;
}

int OsSelector::wait_milliseconds(TimePoint earliest, TimePoint now) const {
  if (earliest == kNoDeadline) return -1;
  if (earliest <= now) return 0;
  // Rounded up, so that a wake-up never comes before the deadline.
  int64_t ms = ((earliest - now).count() + 999) / 1000;
  return static_cast<int>(std::min<int64_t>(ms, INT_MAX));
}

bool OsSelector::refresh_handles() {
  bool any = false;
  for (size_t i = 0; i < owners_.size(); ++i) {
    handles_[i] = owners_[i]->wait_handle();
    any = any || (handles_[i].valid() && handles_[i].events != kWaitNone);
  }
  return any;
}

std::string OsSelector::waited_names() const { return joined_names(os_avail_); }

std::string OsSelector::joined_names(const std::set<Selectable*>& selectables) {
  std::vector<std::string> names;
  for (Selectable* s : selectables) names.push_back(name_of(*s));
  std::sort(names.begin(), names.end());
  std::string out;
  for (const std::string& name : names) out += (out.empty() ? "" : ", ") + name;
  return out;
}

Selectable& OsSelector::wait(bool nonblocking) {
  for (;;) {
    TimePoint now = MonotonicClock::now();
    if (Selectable* s = take_pending(now)) return *s;
    Selectable* earliest_owner = nullptr;
    TimePoint earliest = prepare_round(earliest_owner);
    if (!pending_.empty()) continue;

    int ms = wait_milliseconds(earliest, now);
    bool only_looking = nonblocking && ms != 0;
    if (only_looking) ms = 0;
    bool any_handle = refresh_handles();
    TAVREL_ASSERT(any_handle || ms >= 0, "Wait without descriptor or deadline would never end");

    int outcome = poll_handles(handles_, ms);
    if (outcome == kPollInterrupted) continue;
    if (outcome == kPollTimedOut) {
      if (only_looking) throw ENotReady(waited_names());
      if (earliest_owner != nullptr && earliest_owner->is_ready()) return *earliest_owner;
      continue;
    }
    Selectable* s = owners_[outcome];
    if (!s->absorbs_signal()) return *s;
  }
}

}  // namespace io
