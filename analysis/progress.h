// Progress: the step counter that the walk advances, one step per node it
// has completed. What a step means to the outside is the implementer's
// (reporter/ReportProgress writes a percentage).
#pragma once

#include <cstdint>

class Progress {
 public:
  virtual ~Progress() = default;
  // `steps` more steps are done. Implementations don't raise errors::tql.
  virtual void advance(uint32_t steps) = 0;
};
