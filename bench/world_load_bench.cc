// Loading a large world: 10 domains of 100 nodes (1,000 nodes), each node
// with one check group of 10 checks (10,000 checks), each check with a
// continuous series of 100 records (1,000,000 samples). The goal is a load
// in under 5 seconds, JSON parsing included.
#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>
#include <string>

#include "host/store_database.h"
#include "host/world_load.h"

namespace {

constexpr int kDomains = 10;
constexpr int kNodesPerDomain = 100;
constexpr int kChecksPerNode = 10;
constexpr int kRecordsPerCheck = 100;

std::string name_prop(const std::string& key, const std::string& value) {
  return "\"" + key + "\": {\"string\": \"" + value + "\"}";
}

// The checks of one node; their ids are "0.1.<serial>", counted from 100000
// so that the assigned ids of domains, nodes and groups never meet them.
void append_checks(std::string& out, int& serial) {
  for (int c = 0; c < kChecksPerNode; ++c) {
    if (c != 0) out += ",";
    out += "{\"class\": \"Check\", \"id\": \"0.1." + std::to_string(serial++) + "\", \"props\": {" +
           name_prop("siblingName", "check" + std::to_string(c)) +
           ", \"active\": {\"bool\": true}, \"dataType\": {\"uint\": 5}}}";
  }
}

void append_objects(std::string& out) {
  int serial = 100000;
  out += "\"objects\": {\"class\": \"Domain\", \"children\": [";
  for (int d = 0; d < kDomains; ++d) {
    if (d != 0) out += ",";
    out += "{\"class\": \"Domain\", \"props\": {" + name_prop("name", "d" + std::to_string(d)) +
           "}, \"children\": [";
    for (int n = 0; n < kNodesPerDomain; ++n) {
      if (n != 0) out += ",";
      out += "{\"class\": \"Node\", \"props\": {" + name_prop("name", "n" + std::to_string(n)) +
             "}, \"children\": [{\"class\": \"CheckGroup\", \"props\": {" +
             name_prop("siblingName", "g") + "}, \"children\": [";
      append_checks(out, serial);
      out += "]}]}";
    }
    out += "]}";
  }
  out += "]}";
}

void append_series(std::string& out) {
  out += "\"series\": [";
  const int checks = kDomains * kNodesPerDomain * kChecksPerNode;
  for (int c = 0; c < checks; ++c) {
    if (c != 0) out += ",";
    out += "{\"owner\": \"0.1." + std::to_string(100000 + c) +
           "\", \"property\": \"tsdbIndex\", \"data_type\": 5, \"records\": [";
    for (int r = 0; r < kRecordsPerCheck; ++r) {
      if (r != 0) out += ",";
      const int64_t start = 1700000000 + int64_t{300} * r;
      out += "[" + std::to_string(start) + "," + std::to_string(start + 300) + "," +
             std::to_string(r % 7) + ".25," + std::to_string(r % 7) + ".5," +
             std::to_string(r % 7) + ".75,5," + std::to_string(r % 2) + "]";
    }
    out += "]}";
  }
  out += "]";
}

const std::string& big_world() {
  static const std::string text = [] {
    std::string out = "{";
    append_objects(out);
    out += ",";
    append_series(out);
    return out + "}";
  }();
  return text;
}

void BM_LoadBigWorld(benchmark::State& state) {
  const std::string& text = big_world();
  size_t records = 0;
  for (auto _ : state) {
    host::Database db;
    control::Server_Configuration_Fields config;
    host::load_world_text(text, db, config);
    records = db.series().record_count();
    benchmark::DoNotOptimize(records);
  }
  state.counters["records"] = static_cast<double>(records);
  state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
}
BENCHMARK(BM_LoadBigWorld)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

namespace {

// The JSON parsing alone, to tell it from the loading into the stores.
void BM_ParseBigWorld(benchmark::State& state) {
  const std::string& text = big_world();
  for (auto _ : state) {
    nlohmann::json world = nlohmann::json::parse(text);
    benchmark::DoNotOptimize(world);
  }
}
BENCHMARK(BM_ParseBigWorld)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
