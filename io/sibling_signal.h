// The 8-byte signals that siblings exchange over their FIFOs:
//
//   u32 word    low 3 bits 1..4: kind, upper bits an offset or a size
//               low 3 bits 0:    low byte the kind, the bits above an id
//   i32 sender  the id of the sending sibling
//
// Both fields in the machine's byte order.
#pragma once

#include <cstdint>
#include <string>

namespace io {

enum class SignalKind : uint32_t {
  MessageAt = 1,      // writer: a message waits in the block at this offset
  AckMessageAt = 2,   // reader: the block at this offset has been read
  ExtraOffset = 3,    // parent: start of a write area, for the SiblingAt after it
  ExtraSize = 4,      // parent: size of that write area
  RequestPeer = 0,    // child: connect me to sibling `id`
  IAmUp = 16,         // child: I am up (id is the sender)
  SiblingAt = 24,     // parent: sibling `id` has the area just announced
  InitShutdown = 32,  // sibling `id` wants to shut down
  AckShutdown = 40,   // the shutdown of sibling `id` is acknowledged
  ExtraSiblingId = 48,
  SiblingDied = 56,  // parent: sibling `id` has died
};

struct Signal {
  uint32_t word = 0;
  int32_t sender = 0;

  // Fatal assertion "Got MT_Undefined" for a word of no known kind.
  SignalKind kind() const;
  // The offset or size of kinds 1 to 4.
  uint64_t value() const { return word & ~uint32_t{7}; }
  // The id of the byte-coded kinds.
  int32_t id() const { return static_cast<int32_t>(word) >> 8; }
  // "MessageAt(4096) [from:2]", "SiblingAt(12) [from:0]", "IAmUp [from:12]".
  std::string text() const;
};

// A signal of kinds 1 to 4 carrying `value` (a multiple of 8).
Signal make_value_signal(SignalKind kind, uint64_t value, int32_t sender);
// A signal of the byte-coded kinds carrying `id`.
Signal make_id_signal(SignalKind kind, int32_t id, int32_t sender);

const char* signal_name(SignalKind kind);

}  // namespace io
