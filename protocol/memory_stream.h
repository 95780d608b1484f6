// An in-memory byte pipe with an io::IStream end and an io::OStream end.
//
// Bytes committed on the output can be read on the input. The ends lend at
// most `write_area` and `read_area` bytes at a time, so small areas make every value cross area
// boundaries (tests), and a large one serves a tool that decodes a stream
// held in memory. Both ends are always ready. As nothing else can write
// while the one thread reads, the input raises io::EEndOfStream whenever
// every committed byte was read.
//
// Single-threaded; the pipe owns both ends.
#pragma once

#include <cstddef>
#include <string>

#include "io/stream.h"

namespace protocol {

class MemoryPipe {
 public:
  // Areas must be at least 1 byte (fatal assertion otherwise).
  MemoryPipe(size_t write_area, size_t read_area, std::string initial = "");
  explicit MemoryPipe(size_t area = 4096) : MemoryPipe(area, area) {}

  io::IStream& in() { return in_; }
  io::OStream& out() { return out_; }

  // The bytes committed and not yet read.
  std::string unread() const { return bytes_.substr(read_pos_); }
  // Every byte committed so far, read or not.
  const std::string& all() const { return bytes_; }

 private:
  class In : public io::IStream {
   public:
    explicit In(MemoryPipe& pipe) : pipe_(pipe) {}
    void name(std::string& out) const override { out = "MemoryPipe"; }
    bool is_ready() const override { return true; }
    size_t readBegin(const char*& ptr) override;
    void readCommit(size_t n) override;
    void close() override {}

   private:
    MemoryPipe& pipe_;
    std::string area_;  // A copy of the lent bytes: writes may grow the pipe meanwhile.
  };

  class Out : public io::OStream {
   public:
    explicit Out(MemoryPipe& pipe) : pipe_(pipe) {}
    void name(std::string& out) const override { out = "MemoryPipe"; }
    bool is_ready() const override { return true; }
    size_t writeBegin(char*& ptr) override;
    void writeCommit(size_t n) override;
    bool flushStep() override { return true; }
    void close() override {}

   private:
    MemoryPipe& pipe_;
    std::string area_;
  };

  size_t write_area_;
  size_t read_area_;
  std::string bytes_;
  size_t read_pos_ = 0;
  In in_{*this};
  Out out_{*this};
};

}  // namespace protocol
