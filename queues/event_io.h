// The fdio form of events and the table of event readers.
//
// An event is a 16-byte header (type_index, dest, inresponse, exception as
// a 32-bit word) and its payload. Readers exist for the types that this
// process and the stand-in host exchange (has_reader); any other type index
// is treated like an unknown one.
//
// Single-threaded: the table of the last event read per stream has no lock.
#pragma once

#include <cstdint>
#include <memory>

#include "protocol/ioprim.h"
#include "queues/event.h"

namespace queues {

// Writes the header and the payload. A type_index outside 1 to 195 is the
// fatal assertion "fdio << event: unknown type index: N". Doesn't flush.
protocol::ioprim& operator<<(protocol::ioprim& io, const event& e);

// Reads one event; the caller owns it. An exception word other than 0 gives
// an exevent with the header's dest and inresponse, whatever the type. A
// type index without a reader is the fatal assertion "fdio >> event: unknown
// type index: N old was TYPE dest QUEUE" (the last event read from the same
// stream), or error::EParseError with that text under the policy kRaise.
// An event 195 with exception word 0 is the fatal assertion "Found exevent
// with .exception == 0" (EParseError under kRaise). Raises what the stream
// raises (io::EEndOfStream, error::ESystemError) and what the payload's
// reader raises (error::EParseError). After an EParseError the stream is
// left in the middle of a message, so `io` is marked broken: every later
// read on it raises the same error, whoever handled the first one, and the
// error reaches the process's last handler instead of garbage being decoded.
std::unique_ptr<event> read_event(protocol::ioprim& io);

// True when read_event knows the type index.
bool has_reader(int32_t type_index);

// What read_event does with a type index it doesn't know. kFatal is the
// process's rule: the stream has no framing, nothing after it can be read,
// and a sibling that sends one is broken. kRaise serves tools and tests
// that decode bytes from a file.
enum class UnknownEventPolicy { kFatal, kRaise };
void set_unknown_event_policy(UnknownEventPolicy policy);

// Drops what the reader remembers of `in` (call when a stream goes away).
void forget_stream(const io::IStream& in);

// A nested event inside a record: the same form as a top-level event. A
// null pointer can't be written (fatal assertion "No nested event to write").
protocol::ioprim& operator<<(protocol::ioprim& io, const event_ptr& e);
protocol::ioprim& operator>>(protocol::ioprim& io, event_ptr& e);

}  // namespace queues
