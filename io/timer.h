// A selectable that becomes ready at a point in time.
#pragma once

#include <string>

#include "io/clock.h"
#include "io/selectable.h"

namespace io {

class Timer : public Selectable {
 public:
  explicit Timer(TimePoint deadline) : deadline_(deadline) {}
  // A timer due `span` from now.
  static TimePoint due_in(Duration span);

  void name(std::string& out) const override { out = "Timer"; }
  // True when now is at or past the deadline.
  bool is_ready() const override;
  // Always true, with the deadline.
  bool deadline(TimePoint& when) const override;

  TimePoint when() const { return deadline_; }
  // Moves the deadline. Not while the timer is on a selector.
  void set_when(TimePoint deadline) { deadline_ = deadline; }

 private:
  TimePoint deadline_;
};

}  // namespace io
