// Throughput of io::iostream over a local socket pair: 100 MB go out through
// the stream, an echo on the other end sends them back, and the stream reads
// them again and compares. The echo runs on a thread of the benchmark's own;
// each side has its own selectors, as each process would.
//
//   build/bench/io_bench --benchmark_filter=Echo
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <thread>

#include "io/descriptor.h"
#include "io/errors.h"
#include "io/iostream.h"
#include "io/selector.h"
#include "io/socket.h"

namespace {

constexpr size_t kTotal = 100 * 1024 * 1024;
constexpr size_t kChunk = 64 * 1024;

// Sends back everything that comes, through the lending interface, until
// the peer ends its stream.
void echo(io::Socket& socket) {
  io::IStream& in = socket.input();
  io::OStream& out = socket.output();
  try {
    for (;;) {
      io::waitReady(in);
      const char* bytes = nullptr;
      size_t n = in.readBegin(bytes);
      size_t done = 0;
      while (done < n) {
        char* space = nullptr;
        size_t room = std::min(out.writeBegin(space), n - done);
        std::memcpy(space, bytes + done, room);
        out.writeCommit(room);
        done += room;
        while (!out.flushStep()) io::waitReady(out);
      }
      in.readCommit(n);
    }
  } catch (const io::EEndOfStream&) {
  }
  out.close();
}

void BM_IostreamEcho100MB(benchmark::State& state) {
  std::string chunk(kChunk, 0);
  for (size_t i = 0; i < kChunk; ++i) chunk[i] = static_cast<char>(i * 7 + 1);
  std::string back(kChunk, 0);
  for (auto _ : state) {
    io::DescriptorPair pair = io::create_socket_pair();
    io::Socket near("near", pair.first);
    io::Socket far("far", pair.second);
    std::thread peer([&far] { echo(far); });
    {
      io::iostream stream(near.input(), near.output(), std::chrono::seconds(120));
      for (size_t sent = 0; sent < kTotal; sent += kChunk) {
        stream.write(chunk.data(), kChunk);
        stream.flush();
        stream.read(back.data(), kChunk);
        if (!stream || back != chunk) {
          state.SkipWithError("echo differs");
          break;
        }
      }
      stream.close_output();
    }
    peer.join();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kTotal);
}
BENCHMARK(BM_IostreamEcho100MB)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
