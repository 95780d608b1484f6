// protocol::ioprim: reader and writer of the fdio form of values on one
// event stream (the byte layout is written down in protocol/fdio_format.md).
//
// It works over one io::IStream and one io::OStream that lend their buffers.
// It holds the area lent for writing and the area lent for reading between
// calls, so many small values fill one area. Nothing it writes is visible to
// the peer before flush().
//
// Not thread-safe; one ioprim per stream pair, used by one thread. The
// streams are the caller's and must outlive the ioprim.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace io {
class IStream;
class OStream;
}  // namespace io

namespace protocol {

class ioprim {
 public:
  ioprim(io::IStream& in, io::OStream& out);
  // Gives back a read area that is still held, with what was consumed of it.
  // Written bytes that were not flushed are committed, not waited for.
  ~ioprim();
  ioprim(const ioprim&) = delete;
  ioprim& operator=(const ioprim&) = delete;

  // Writes a primitive value of `n` bytes whole into one write area. When
  // the current area has less room, its bytes are committed, the writer waits
  // for the stream and takes a new area; a new area still too small is a
  // fatal assertion. Raises what the stream raises (error::ESystemError).
  void write_primitive(const void* bytes, size_t n);
  // Writes `n` bytes that may be split over any number of write areas.
  void write_bytes(const void* bytes, size_t n);
  // Commits the written bytes, if any, and waits until the stream is ready.
  void flush();

  // Reads exactly `n` bytes, across as many read areas as needed. Raises
  // io::EEndOfStream when the stream ends first (what was read stays
  // consumed), error::ESystemError on a fault, and error::EParseError with
  // the recorded text once the input is broken.
  void read_bytes(void* bytes, size_t n);

  // The stream has no framing of its own: after a value that can't be read
  // (records nested too deep, a field out of its bounds) the rest of that
  // message can't be told from the next one. Records `text` as the reason;
  // from then on every read raises error::EParseError with it, so that no
  // caller that handled the first error goes on decoding the middle of a
  // message. The first text recorded stays.
  void mark_broken(const std::string& text);
  bool broken() const { return broken_.has_value(); }

  // The number of bytes read so far, for positions in messages.
  uint64_t bytes_read() const { return bytes_read_; }

  // The input stream: a key for tables kept per stream.
  const io::IStream& input() const { return in_; }

  // The deepest nesting of records that a reader accepts. Trees (patches,
  // patterns, nested events) come from outside; without a bound a long
  // chain of tiny nested records would exhaust the stack.
  //
  // The bound lies above the deepest message about stored objects. The
  // database keeps objects at most 256 levels below the root domain, and a
  // select reply about such an object nests the event, its record, 257
  // patches from the root down, and in a property of the deepest patch an
  // object reference with its origin: 261 levels. The rest leaves room for
  // such a reply carried inside another event. (The stand-in database's
  // tests tie this to its depth limit.)
  static constexpr int kMaxNesting = 288;

  // Marks one level of nesting while a record is read. Past the bound it
  // marks the input broken and raises error::EParseError "fdio: records
  // nested deeper than 288".
  class Nesting {
   public:
    explicit Nesting(ioprim& io);
    ~Nesting() { --io_.nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

   private:
    ioprim& io_;
  };

 private:
  void next_write_area();
  void commit_write();
  void next_read_area();

  io::IStream& in_;
  io::OStream& out_;

  // The write area lent by out_: null while none is held.
  char* wptr_ = nullptr;
  size_t wsize_ = 0;
  size_t wpos_ = 0;

  // The read area lent by in_: size 0 while none is held.
  const char* rptr_ = nullptr;
  size_t rsize_ = 0;
  size_t rpos_ = 0;

  int nesting_ = 0;                    // Records being read, outermost included.
  std::optional<std::string> broken_;  // Why the input can't be read on.
  uint64_t bytes_read_ = 0;
};

}  // namespace protocol
