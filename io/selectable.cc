#include "io/selectable.h"

#include <algorithm>

#include "base/fatal.h"
#include "io/selector.h"

namespace io {

Selectable::~Selectable() { leaveSelectors(); }

void Selectable::leaveSelectors() {
  // Each remove calls back into removeSelector, which shortens the list.
  while (!selectors_.empty()) selectors_.back()->remove(*this);
}

WaitHandle Selectable::wait_handle() const { return {}; }

bool Selectable::absorbs_signal() { return false; }

void Selectable::before_wait() {}

bool Selectable::deadline(TimePoint&) const { return false; }

void Selectable::addSelector(SelectorBase& selector) {
  selectors_.push_back(&selector);
  if (is_ready()) selector.selectable_ready(*this);
}

void Selectable::removeSelector(SelectorBase& selector) {
  auto it = std::find(selectors_.begin(), selectors_.end(), &selector);
  if (it == selectors_.end()) assertion_failed("Unable to remove selector in: " + name_of(*this));
  selectors_.erase(it);
}

std::string name_of(const Selectable& s) {
  std::string out;
  s.name(out);
  return out;
}

}  // namespace io
