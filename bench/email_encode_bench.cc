// Speed of the mail content encoders: 100 MB through Base64Streambuf and
// QuotingStreambuf into a stream that drops what it gets, written in 64 KiB
// pieces as a file would be read. The data is the file named by
// TAVREL_ENCODE_DATA, so that bench/encode-compare can run other encoders on
// the same bytes, or else 100 MB of pseudo-random bytes.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <ostream>
#include <random>
#include <streambuf>
#include <string>

#include "email/encoding.h"

namespace {

constexpr std::size_t kDefaultSize = 100 * 1000 * 1000;
constexpr std::size_t kPiece = 64 * 1024;

const std::string& data() {
  static const std::string bytes = [] {
    if (const char* path = std::getenv("TAVREL_ENCODE_DATA")) {
      std::ifstream in(path, std::ios::binary);
      return std::string(std::istreambuf_iterator<char>(in), {});
    }
    std::string s(kDefaultSize, '\0');
    std::mt19937_64 gen(1);
    for (std::size_t i = 0; i + 8 <= s.size(); i += 8) {
      const uint64_t v = gen();
      std::memcpy(&s[i], &v, 8);
    }
    return s;
  }();
  return bytes;
}

// Takes everything and keeps nothing.
class NullBuf : public std::streambuf {
 protected:
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
  std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

void encodeAll(benchmark::State& state, const email::ContentTransferEncoding& encoding,
               std::size_t piece) {
  const std::string& bytes = data();
  NullBuf null;
  std::ostream sink(&null);
  for (auto _ : state) {
    auto buf = encoding.wrap(sink);
    std::ostream out(buf.get());
    for (std::size_t i = 0; i < bytes.size(); i += piece) {
      out.write(bytes.data() + i, static_cast<std::streamsize>(std::min(piece, bytes.size() - i)));
    }
    buf->finish();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}

void BM_Base64(benchmark::State& state) { encodeAll(state, email::base64_encoding(), kPiece); }
void BM_QuotedPrintable(benchmark::State& state) {
  encodeAll(state, email::quoted_printable_encoding(), kPiece);
}
// Per character, as a renderer that writes single characters would.
void BM_Base64PerCharacter(benchmark::State& state) {
  encodeAll(state, email::base64_encoding(), 1);
}
void BM_QuotedPrintablePerCharacter(benchmark::State& state) {
  encodeAll(state, email::quoted_printable_encoding(), 1);
}

BENCHMARK(BM_Base64)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(BM_QuotedPrintable)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(BM_Base64PerCharacter)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(BM_QuotedPrintablePerCharacter)->Unit(benchmark::kMillisecond)->MinTime(2);

}  // namespace
