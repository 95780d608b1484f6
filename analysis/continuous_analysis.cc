// Data types 5 and 6, and what all four routines share.
#include <string>

#include "analysis/check_analysis.h"
#include "analysis/classify.h"
#include "base/fatal.h"
#include "base/log.h"

void logSpanWithoutGood() { log("Got timespan when no ngood!"); }

CheckAnalysis::CheckAnalysis(const tql::patch_t& check, bool fromStartOfMonitoring,
                             IssueStats& stats)
    : check_(check), fromStart_(fromStartOfMonitoring), stats_(stats) {}

namespace {

// Filters, logs the counts, and returns the filtered list (maybe empty).
SampleList<ContinuousSample> numericHead(SampleList<ContinuousSample> samples,
                                         const Interval& interval, const char* kind) {
  TAVREL_ASSERT(!samples.empty(),
                std::string(kind) + " data analysis routine given empty data set");
  const SampleList<ContinuousSample> list = filterSamples(interval, samples);
  if (log_tracing()) {
    log("Before: " + std::to_string(samples.size()) + ", after: " + std::to_string(list.size()),
        kLogTrace);
    if (list.empty()) log("After filtering, data set was empty", kLogTrace);
  }
  return list;
}

}  // namespace

template <CheckAnalysis::NumericClassifier Classify>
int64_t CheckAnalysis::analyseNumeric(SampleList<ContinuousSample> samples,
                                      const Interval& interval, const char* kind) {
  const SampleList<ContinuousSample> list = numericHead(samples, interval, kind);
  if (list.empty()) return 0;
  thresholds_ = loadThresholds(check_);
  const WalkSettings settings{deltaSetUnknown(check_, thresholds_.alertAbove), fromStart_};
  const Thresholds& t = thresholds_;
  return walkSamples(
      list, interval, settings, stats_,
      [&t](const ContinuousSample& s, int64_t span, Sums& into) { Classify(t, s, span, into); });
}

int64_t CheckAnalysis::analyseContinuous(SampleList<ContinuousSample> samples,
                                         const Interval& interval) {
  return analyseNumeric<classifyContinuous>(samples, interval, "Continuous");
}

int64_t CheckAnalysis::analyseAccumulation(SampleList<ContinuousSample> samples,
                                           const Interval& interval) {
  return analyseNumeric<classifyWhole>(samples, interval, "Accumulation");
}
