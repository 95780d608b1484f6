// ReportProgress: the walk's steps as a percentage in the `progress` of the
// Report and of its ReportInstance while a generation runs.
#pragma once

#include <cstdint>
#include <functional>

#include "analysis/progress.h"
#include "tql/id.h"

class ReportProgress : public Progress {
 public:
  // Sets `progress` to `value` on the object `id` of class `classNumber`:
  // fetches it and updates it with the version just fetched; does nothing
  // when the object doesn't exist. May raise errors::tql (lost update,
  // deleted object), which advance() logs; other exceptions pass through.
  using Writer = std::function<void(const tql::id_t& id, int32_t classNumber, uint32_t value)>;

  // `totalSteps` is the number of nodes of the report's tree.
  ReportProgress(tql::id_t report_id, tql::id_t instance_id, uint32_t totalSteps, Writer writer);

  // Adds `steps` and writes 1 + the done share of 98 rounded to the nearest
  // whole number (32-bit unsigned arithmetic), so 2 to 99: to the Report,
  // then to the instance. Every call writes, changed or not. An
  // errors::tql from a write is logged ("Failed updating report generation
  // progress for template ", the report's id, ": ", the text) and the rest
  // of the call skipped. With no steps at all (a tree without nodes) it
  // writes nothing.
  void advance(uint32_t steps) override;

  uint32_t done_steps() const { return done_steps_; }

 private:
  // Constant after construction.
  const tql::id_t report_id_;
  const tql::id_t instance_id_;
  const uint32_t total_steps_;
  const Writer writer_;

  uint32_t done_steps_ = 0;
};
