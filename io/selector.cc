#include "io/selector.h"

#include <algorithm>
#include <vector>

#include "base/fatal.h"
#include "io/errors.h"
#include "io/stacked.h"

namespace io {

SelectorBase::~SelectorBase() {
  // What the callers added first (no client): removing a front takes its
  // underlying selectables along, through as many layers as are stacked. A
  // front that is itself underlying another layer goes with that layer.
  while (!without_client_.empty()) remove(**without_client_.begin());
  while (!fronts_.empty()) remove(**fronts_.begin());
  TAVREL_ASSERT(avail_.empty(), "avail not empty in ~SelectorBase");
}

void SelectorBase::add(Selectable& s, StackedSelectableBack* client) {
  if (!avail_.emplace(&s, client).second) assertion_failed(name_of(s) + " added twice to Selector");
  if (client == nullptr) without_client_.insert(&s);
  if (dynamic_cast<StackedSelectableFront*>(&s) != nullptr)
    fronts_.insert(&s);
  else
    OsSelector::add(s);
  s.addSelector(*this);
}

void SelectorBase::remove(Selectable& s) {
  auto it = avail_.find(&s);
  if (it == avail_.end())
    assertion_failed("Unknown " + name_of(s) + " removed twice from Selector");
  avail_.erase(it);
  without_client_.erase(&s);
  ready_.erase(std::remove(ready_.begin(), ready_.end(), &s), ready_.end());
  bool front = fronts_.erase(&s) == 1;
  s.removeSelector(*this);
  if (!front) OsSelector::remove(s);
}

void SelectorBase::selectable_ready(Selectable& s) {
  if (avail_.count(&s) != 1) assertion_failed(name_of(s) + " not found on avail map");
  if (fronts_.count(&s) == 1)
    ready_.push_back(&s);
  else
    make_pending(s);
}

bool SelectorBase::ready_by_test(Selectable& s) const {
  if (s.is_ready() || s.wait_handle().valid()) return true;
  TimePoint when;
  return s.deadline(when) && when <= MonotonicClock::now();
}

void SelectorBase::processReady(Selectable& s) {
  auto it = avail_.find(&s);
  if (it == avail_.end())
    assertion_failed("SelectorBase::processReady got unknown Selectable " + name_of(s));
  StackedSelectableBack* client = it->second;
  if (client == nullptr) {
    ready_.push_back(&s);
    return;
  }
  // The client may take `s` off this selector; its fronts are looked at
  // anyway.
  client->underlyingIsReady(s);
  std::vector<StackedSelectableFront*> fronts(client->fronts().begin(), client->fronts().end());
  for (StackedSelectableFront* front : fronts)
    if (front->is_ready() && avail_.count(front) == 1) processReady(*front);
}

Selectable* SelectorBase::take_ready() {
  while (!ready_.empty()) {
    Selectable* s = ready_.front();
    ready_.pop_front();
    auto it = avail_.find(s);
    if (it != avail_.end() && it->second == nullptr && ready_by_test(*s)) return s;
  }
  return nullptr;
}

void SelectorBase::collect_ready_fronts() {
  std::vector<Selectable*> ready;
  for (Selectable* front : fronts_)
    if (ready_by_test(*front)) ready.push_back(front);
  for (Selectable* front : ready)
    if (avail_.count(front) == 1) processReady(*front);
}

Selectable& SelectorBase::wait(bool nonblocking) {
  for (;;) {
    if (Selectable* s = take_ready()) return *s;
    collect_ready_fronts();
    if (!ready_.empty()) continue;
    processReady(OsSelector::wait(nonblocking));
  }
}

std::string SelectorBase::waited_names() const { return joined_names(without_client_); }

void selector_added_twice(Selectable& s) {
  assertion_failed("Added selectable " + name_of(s) + " twice");
}

void selector_unknown_result(Selectable& s) {
  assertion_failed("pollImpl gave unknown selectable " + name_of(s));
}

}  // namespace io
