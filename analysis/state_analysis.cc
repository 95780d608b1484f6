// Data types 2 (uptime) and 3 (enum).
#include <string>

#include "analysis/check_analysis.h"
#include "analysis/classify.h"
#include "base/fatal.h"
#include "base/log.h"
#include "tql/decode.h"
#include "tql/schema.h"

namespace {

// stateAction0 .. stateAction31 of the check. Raises errors::tql for a null
// property or one of another enumeration.
StateTable loadStateTable(const tql::patch_t& check) {
  StateTable table;
  for (uint32_t n = 0; n < 32; ++n) {
    const tql::property_t* p = check.find_property(schema::kStateAction0 + static_cast<int32_t>(n));
    if (p == nullptr) continue;
    uint32_t action = 0;
    tql::decode_enum(*p, schema::kStateActionEnum, action);
    const uint32_t bit = 1u << n;
    uint32_t* masks[] = {&table.ok, &table.warn, &table.alert};
    if (action < 3) {
      *masks[action] |= bit;
      table.unknown &= ~bit;
    }
  }
  return table;
}

template <class Sample>
SampleList<Sample> stateFilter(SampleList<Sample> samples, const Interval& interval,
                               const char* kind, const char* lowerKind) {
  TAVREL_ASSERT(!samples.empty(),
                std::string(kind) + " data analysis routine given empty data set");
  const SampleList<Sample> list = filterSamples(interval, samples);
  if (list.empty() && log_tracing()) {
    log(std::string("After filtering, ") + lowerKind + " data set was empty", kLogTrace);
  }
  return list;
}

}  // namespace

bool CheckAnalysis::stateHead(const char* kind, uint32_t& delta) {
  const Frequency f = checkFrequency(check_);
  if (!f.present) {
    log(std::string(kind) + " check did not have a check frequency");
    return false;
  }
  if (f.null) {
    log(std::string(kind) + " check had a null check frequency");
    return false;
  }
  delta = 2u * f.seconds;
  return true;
}

int64_t CheckAnalysis::analyseUptime(SampleList<ContinuousSample> samples,
                                     const Interval& interval) {
  const SampleList<ContinuousSample> list = stateFilter(samples, interval, "Uptime", "uptime");
  if (list.empty()) return 0;
  thresholds_ = loadThresholds(check_);
  WalkSettings settings{0, fromStart_};
  if (!stateHead("Uptime", settings.deltaSetUnknown)) return 0;
  const Thresholds& t = thresholds_;
  return walkSamples(list, interval, settings, stats_,
                     [&t](const ContinuousSample& s, int64_t span, Sums& into) {
                       classifyWhole(t, s, span, into);
                     });
}

int64_t CheckAnalysis::analyseEnum(SampleList<EnumSample> samples, const Interval& interval) {
  const SampleList<EnumSample> list = stateFilter(samples, interval, "Enum", "enum");
  if (list.empty()) return 0;
  WalkSettings settings{0, fromStart_};
  if (!stateHead("Enum", settings.deltaSetUnknown)) return 0;
  // The table is the same for every sample of the walk: read once here,
  // which raises for a damaged stateActionN as reading it per sample would.
  const StateTable table = loadStateTable(check_);
  return walkSamples(list, interval, settings, stats_,
                     [&table](const EnumSample& s, int64_t span, Sums& into) {
                       classifyEnum(table, s, span, into);
                     });
}
