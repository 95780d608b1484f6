#include "io/stacked.h"

#include "base/fatal.h"
#include "io/selector.h"

namespace io {

void StackedSelectableBack::set_underlying(Selectable* s, bool add) {
  TAVREL_ASSERT(s != nullptr, "StackedSelectableBack underlying pointer is null");
  if (add) {
    if (!underlying_.insert(s).second) return;
    for (auto& [selector, count] : selectors_) selector->add(*s, this);
  } else {
    if (underlying_.erase(s) == 0) return;
    for (auto& [selector, count] : selectors_) selector->remove(*s);
  }
}

void StackedSelectableBack::addSelector(SelectorBase& selector) {
  if (selectors_[&selector]++ > 0) return;
  for (Selectable* s : underlying_) selector.add(*s, this);
}

void StackedSelectableBack::removeSelector(SelectorBase& selector) {
  auto it = selectors_.find(&selector);
  if (it == selectors_.end())
    assertion_failed("StackedSelectableBack::removeSelector got unknown Selector");
  if (--it->second > 0) return;
  selectors_.erase(it);
  for (Selectable* s : underlying_) selector.remove(*s);
}

StackedSelectableFront::StackedSelectableFront(StackedSelectableBack& back) : back_(back) {
  back_.fronts_.insert(this);
}

StackedSelectableFront::~StackedSelectableFront() {
  // While this is still a front, so that the selectors treat it as one.
  leaveSelectors();
  back_.fronts_.erase(this);
}

void StackedSelectableFront::addSelector(SelectorBase& selector) {
  Selectable::addSelector(selector);
  back_.addSelector(selector);
}

void StackedSelectableFront::removeSelector(SelectorBase& selector) {
  back_.removeSelector(selector);
  Selectable::removeSelector(selector);
}

}  // namespace io
