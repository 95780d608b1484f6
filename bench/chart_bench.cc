// Charts per second: medium continuous charts of 200 records each, drawn to
// PNG bytes by the chart framework (from the stored records on), against a
// bare program that makes the same gd calls for the same picture. Each
// benchmark draws 2,000 charts; bench/chart-bench adds rrdtool beside them.
#include <benchmark/benchmark.h>

#include <cmath>

#include "bench/chart_bench_canvas.h"
#include "grapher/check_image.h"
#include "tql/schema.h"

namespace {

constexpr int64_t kStart = 1767225600;  // 2026-01-01 00:00 GMT
constexpr int64_t kDay = 86400;
constexpr int kRecords = 200;
constexpr int kCharts = 2000;

// 200 records of a wave over one day, each 432 seconds long.
std::vector<tsdb::interval_ptr> records() {
  std::vector<tsdb::interval_ptr> out;
  const int64_t step = kDay / kRecords;
  for (int i = 0; i < kRecords; ++i) {
    const float v = static_cast<float>(50 + 30 * std::sin(i / 12.0));
    out.emplace_back(std::make_unique<tsdb::data_interval_continuous_t>(tsdb::continuous_fields{
        kStart + i * step, kStart + (i + 1) * step, v * 0.8f, v, v * 1.2f, 10, 0}));
  }
  return out;
}

const tql::patch_t& graphObject() {
  static const tql::patch_t object = [] {
    tql::patch_t o;
    o.set_property(tql::make_property<tql::kind::kBlob>(schema::kUnit, std::string("\x11\x01", 2)));
    return o;
  }();
  return object;
}

void drawChart(grapher::CanvasFactory& factory, const std::vector<tsdb::interval_ptr>& data) {
  grapher::Graph graph(grapher::kPlot, kStart, kStart + kDay);
  grapher::generate_check_image(graph, graphObject(), tsdb::kContinuous, data);
  graph.draw(factory, timeZoneValue(0));
}

void BM_ChartFramework(benchmark::State& state) {
  const auto data = records();
  size_t bytes = 0;
  for (auto _ : state) {
    grapher::Graph graph(grapher::kPlot, kStart, kStart + kDay);
    grapher::generate_check_image(graph, graphObject(), tsdb::kContinuous, data);
    const std::vector<uint8_t> png = grapher::chartPng(graph, timeZoneValue(0));
    bytes = png.size();
    benchmark::DoNotOptimize(png.data());
  }
  state.counters["png_bytes"] = static_cast<double>(bytes);
  state.SetItemsProcessed(state.iterations());
}

void BM_BareGd(benchmark::State& state) {
  bench::RecordingFactory recorded;
  drawChart(recorded, records());
  size_t bytes = 0;
  for (auto _ : state) {
    bytes = bench::replayOnGd(recorded);
    benchmark::DoNotOptimize(bytes);
  }
  state.counters["png_bytes"] = static_cast<double>(bytes);
  state.counters["gd_calls"] = static_cast<double>(recorded.calls.size());
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_ChartFramework)->Iterations(kCharts)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_BareGd)->Iterations(kCharts)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
