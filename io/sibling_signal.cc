#include "io/sibling_signal.h"

#include "base/fatal.h"

namespace io {

SignalKind Signal::kind() const {
  uint32_t low = word & 7;
  if (low != 0) {
    TAVREL_ASSERT(low <= 4, "Got MT_Undefined");
    return static_cast<SignalKind>(low);
  }
  uint32_t byte = word & 0xff;
  TAVREL_ASSERT(byte % 8 == 0 && byte <= 56 && byte != 8, "Got MT_Undefined");
  return static_cast<SignalKind>(byte);
}

const char* signal_name(SignalKind kind) {
  switch (kind) {
    case SignalKind::MessageAt:
      return "MessageAt";
    case SignalKind::AckMessageAt:
      return "AckMessageAt";
    case SignalKind::ExtraOffset:
      return "ExtraOffset";
    case SignalKind::ExtraSize:
      return "ExtraSize";
    case SignalKind::RequestPeer:
      return "RequestPeer";
    case SignalKind::IAmUp:
      return "IAmUp";
    case SignalKind::SiblingAt:
      return "SiblingAt";
    case SignalKind::InitShutdown:
      return "InitShutdown";
    case SignalKind::AckShutdown:
      return "AckShutdown";
    case SignalKind::ExtraSiblingId:
      return "ExtraSiblingId";
    case SignalKind::SiblingDied:
      return "SiblingDied";
  }
  return "MT_Undefined";
}

std::string Signal::text() const {
  SignalKind k = kind();
  std::string out = signal_name(k);
  if ((word & 7) != 0) {
    out += "(" + std::to_string(value()) + ")";
  } else if (k != SignalKind::IAmUp) {
    out += "(" + std::to_string(id()) + ")";
  }
  return out + " [from:" + std::to_string(sender) + "]";
}

Signal make_value_signal(SignalKind kind, uint64_t value, int32_t sender) {
  TAVREL_ASSERT(value % 8 == 0 && value <= 0xfffffff8u,
                "Signal value not 8 byte aligned: " + std::to_string(value));
  return Signal{static_cast<uint32_t>(value) | static_cast<uint32_t>(kind), sender};
}

Signal make_id_signal(SignalKind kind, int32_t id, int32_t sender) {
  return Signal{(static_cast<uint32_t>(id) << 8) | static_cast<uint32_t>(kind), sender};
}

}  // namespace io
