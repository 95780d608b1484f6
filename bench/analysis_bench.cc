// The analysis of each data type over 10 million in-memory samples, one
// interval covering them all. Reports samples per second; the goal for
// continuous samples is at least 50 million per second on one core.
//
//   build/bench/analysis_bench
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "analysis/check_analysis.h"
#include "tql/property.h"
#include "tql/schema.h"

namespace {

constexpr size_t kSamples = 10'000'000;
constexpr int64_t kFirst = 1'000'000'000;
constexpr int64_t kStep = 60;

// A deterministic stream of numbers for the sample values.
class Numbers {
 public:
  uint32_t next() {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<uint32_t>(state_ >> 33);
  }

 private:
  uint64_t state_ = 42;
};

tql::patch_t benchCheck() {
  tql::patch_t check;
  check.class_ = 1;
  check.set_property(tql::make_property<tql::kind::kUint>(schema::kFrequency, 30u));
  check.set_property(tql::make_property<tql::kind::kReal>(schema::kWarnIfAbove, 70.0));
  check.set_property(tql::make_property<tql::kind::kReal>(schema::kAlertIfAbove, 90.0));
  for (int32_t n = 0; n < 4; ++n) {
    check.set_property(tql::make_property<tql::kind::kEnum>(
        schema::kStateAction0 + n,
        tql::enum_value_t{schema::kStateActionEnum, static_cast<uint32_t>(n)}));
  }
  return check;
}

// kSamples records of 60 s from kFirst; `fill(record, r, t)` sets the rest
// from the random number `r` and may move the running time `t` on first.
template <class Sample, class Fill>
std::vector<Sample> records(Fill fill) {
  std::vector<Sample> out(kSamples);
  Numbers numbers;
  int64_t t = kFirst;
  for (Sample& s : out) {
    fill(s, numbers.next(), t);
    s.start = t;
    s.end = t += kStep;
  }
  return out;
}

// Most back to back, one in 50 after a gap of 61 to 120 s; values from 0
// to 99, one in 20 with a failed measurement.
std::vector<ContinuousSample> continuousRecords() {
  return records<ContinuousSample>([](ContinuousSample& s, uint32_t r, int64_t& t) {
    if (r % 50 == 0) t += 61 + r % 60;
    s.min = static_cast<float>(r % 100);
    s.avg = s.max = s.min + 5;
    s.ngood = 1 + r % 3;
    s.nbad = r % 20 == 0 ? 1 : 0;
  });
}

// Back to back, up to five states each (some with none).
std::vector<EnumSample> enumRecords() {
  return records<EnumSample>([](EnumSample& s, uint32_t r, int64_t&) { s.mask = r & 0x1f; });
}

template <class Sample>
std::vector<Sample*> pointers(std::vector<Sample>& records) {
  std::vector<Sample*> out;
  out.reserve(records.size());
  for (Sample& s : records) out.push_back(&s);
  return out;
}

template <class Sample, class Analyse>
void run(benchmark::State& state, std::vector<Sample> records, Analyse analyse) {
  std::vector<Sample*> list = pointers(records);
  const Interval all{static_cast<int32_t>(records.front().start),
                     static_cast<int32_t>(records.back().end)};
  const tql::patch_t check = benchCheck();
  IssueStats stats;
  CheckAnalysis analysis(check, false, stats);
  for (auto _ : state) {
    benchmark::DoNotOptimize(analyse(analysis, SampleList<Sample>(list), all));
    benchmark::ClobberMemory();
  }
  state.counters["samples/s"] =
      benchmark::Counter(static_cast<double>(kSamples) * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
}

void BM_Continuous(benchmark::State& state) {
  run(state, continuousRecords(),
      [](CheckAnalysis& a, auto list, const Interval& i) { return a.analyseContinuous(list, i); });
}

void BM_Accumulation(benchmark::State& state) {
  run(state, continuousRecords(), [](CheckAnalysis& a, auto list, const Interval& i) {
    return a.analyseAccumulation(list, i);
  });
}

void BM_Uptime(benchmark::State& state) {
  run(state, continuousRecords(),
      [](CheckAnalysis& a, auto list, const Interval& i) { return a.analyseUptime(list, i); });
}

void BM_Enum(benchmark::State& state) {
  run(state, enumRecords(),
      [](CheckAnalysis& a, auto list, const Interval& i) { return a.analyseEnum(list, i); });
}

BENCHMARK(BM_Continuous)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Accumulation)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Uptime)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Enum)->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace
