// Stacked selectables: a layer that sits on lower selectables and shows
// ready states of its own.
//
// The back is the lower half: it owns the set of underlying selectables and
// is told through underlyingIsReady when one of them is ready. The fronts are
// what callers wait on; a selector never gives a front to the OsSelector, it
// asks is_ready() instead. Whenever a front is on a selector, the back's
// underlying selectables are on it too, with the back as their client.
//
// Lifetimes: fronts live no longer than their back. An underlying selectable
// must be taken out (set_underlying(s, false)) before it is destroyed while
// a front of the back is on a selector.
#pragma once

#include <map>
#include <set>

#include "io/selectable.h"

namespace io {

class StackedSelectableFront;

class StackedSelectableBack {
 public:
  StackedSelectableBack() = default;
  StackedSelectableBack(const StackedSelectableBack&) = delete;
  StackedSelectableBack& operator=(const StackedSelectableBack&) = delete;
  virtual ~StackedSelectableBack() = default;

  // One of the underlying selectables is ready. It may take that selectable
  // off the selectors (set_underlying(s, false)) while it is called.
  virtual void underlyingIsReady(Selectable& s) = 0;

  // `add` true enters `s` in the underlying set and adds it, with this back
  // as client, to every selector the back is on; false takes it out and
  // removes it from them. Doing the same twice does nothing. A null `s` is
  // the fatal assertion "StackedSelectableBack underlying pointer is null".
  void set_underlying(Selectable* s, bool add);
  // A front went on `selector`: counts the use; at the first one adds the
  // underlying selectables to it.
  void addSelector(SelectorBase& selector);
  // A front left `selector`: at the last use removes the underlying
  // selectables. An unknown selector is the fatal assertion
  // "StackedSelectableBack::removeSelector got unknown Selector".
  void removeSelector(SelectorBase& selector);

  const std::set<StackedSelectableFront*>& fronts() const { return fronts_; }

 private:
  friend class StackedSelectableFront;

  std::set<Selectable*> underlying_;
  std::set<StackedSelectableFront*> fronts_;
  std::map<SelectorBase*, int> selectors_;  // Selector -> count of fronts on it.
};

class StackedSelectableFront : public virtual Selectable {
 public:
  // Registers with `back`, which must outlive this front.
  explicit StackedSelectableFront(StackedSelectableBack& back);
  // Leaves every selector, then the back.
  ~StackedSelectableFront() override;

  // The Selectable work first, then the back's.
  void addSelector(SelectorBase& selector) override;
  // The back's work first, then the Selectable's.
  void removeSelector(SelectorBase& selector) override;

  StackedSelectableBack& back() const { return back_; }

 private:
  StackedSelectableBack& back_;
};

}  // namespace io
