#include "host/parent_messenger.h"

#include <cstring>

#include "base/error.h"
#include "base/fatal.h"
#include "base/log.h"
#include "io/block_chain.h"

namespace host {

using io::SignalKind;

std::unique_ptr<ParentMessenger> ParentMessenger::create(const std::string& fifoprefix,
                                                         uint64_t pool_size, uint64_t area_size) {
  TAVREL_ASSERT(area_size % 8 == 0 && area_size >= 64,
                "Slice size for sibling id 0 is not 8 byte aligned!");
  io::siblingmessenger_conf_t conf;
  conf.mapfile = io::create_pool_descriptor(pool_size);
  conf.mapsize = pool_size;
  conf.fifoprefix = fifoprefix;
  {
    io::SharedMemory memory(conf.mapfile, pool_size);
    std::memcpy(memory.base(), &io::kPoolMagic, sizeof(io::kPoolMagic));
  }
  return std::unique_ptr<ParentMessenger>(new ParentMessenger(conf, area_size));
}

ParentMessenger::ParentMessenger(const io::siblingmessenger_conf_t& conf, uint64_t area_size)
    : io::SiblingMessenger(0, conf), area_size_(area_size) {
  Area own = allocate(0);
  enter_area(0, own.start, own.size);
  take_own_area(own.start, own.size);
}

ParentMessenger::~ParentMessenger() {
  for (int id : known_) io::remove_path(io::fifo_path(conf().fifoprefix, id));
  io::close_pool_descriptor(conf().mapfile);
}

std::map<std::string, std::string> ParentMessenger::child_environment() const {
  return {{"smem::mapfile", std::to_string(conf().mapfile)},
          {"smem::mapsize", std::to_string(conf().mapsize)},
          {"smem::fifoprefix", conf().fifoprefix}};
}

ParentMessenger::Area ParentMessenger::allocate(int id) {
  auto given = areas_.find(id);
  if (given != areas_.end()) return given->second;
  // First fit after the magic number, in order of the areas' starts.
  std::map<uint64_t, uint64_t> taken;
  for (const auto& [owner, area] : areas_) taken[area.start] = area.size;
  uint64_t candidate = 8;
  for (const auto& [start, size] : taken) {
    if (candidate + area_size_ <= start) break;
    candidate = start + size;
  }
  if (candidate + area_size_ > conf().mapsize) {
    throw error::ESystemError("No room for write area for ID " + std::to_string(id));
  }
  Area area{candidate, area_size_};
  areas_[id] = area;
  return area;
}

bool ParentMessenger::handle_parent_signal(const io::Signal& signal) {
  switch (signal.kind()) {
    case SignalKind::IAmUp:
      on_i_am_up(signal.sender);
      return true;
    case SignalKind::RequestPeer:
      on_request_peer(signal.sender, signal.id());
      return true;
    case SignalKind::InitShutdown:
      on_init_shutdown(signal.id());
      return true;
    case SignalKind::AckShutdown:
      on_ack_shutdown(signal.sender, signal.id());
      return true;
    default:
      return false;
  }
}

// Tells `to` where the write area of `owner` is.
void ParentMessenger::introduce(int to, int owner) {
  const Area& area = areas_.at(owner);
  send_signal(to, io::make_value_signal(SignalKind::ExtraOffset, area.start, 0));
  send_signal(to, io::make_value_signal(SignalKind::ExtraSize, area.size, 0));
  send_signal(to, own_signal(SignalKind::SiblingAt, owner));
}

void ParentMessenger::on_i_am_up(int id) {
  known_.insert(id);
  try {
    allocate(id);
  } catch (const error::Exception& e) {
    log(e.text());
    return;
  }
  openFifo(id, /*reconnect=*/true);
  starting_.erase(id);
  finished_.erase(id);
  introduce(id, id);
  introduce(id, 0);
  for (int other : running_) {
    if (other == id || shutting_.count(other)) continue;
    introduce(id, other);
    introduce(other, id);
  }
  running_.insert(id);
}

void ParentMessenger::on_request_peer(int from, int id) {
  // A running peer's area is already on its way to `from`: its SiblingAt
  // delivers the waiting messages. Anyone else can't be started here.
  // A peer asked for again while it is being started is on its way too.
  if (running_.count(id) || starting_.count(id)) return;
  if (starter_ && starter_(id)) {
    starting_.insert(id);
    return;
  }
  send_signal(from, own_signal(SignalKind::SiblingDied, id));
}

void ParentMessenger::on_init_shutdown(int id) {
  std::set<int> peers;
  for (int other : running_) {
    if (other != id) peers.insert(other);
  }
  shutting_[id] = peers;
  for (int other : peers) send_signal(other, own_signal(SignalKind::InitShutdown, id));
  if (peers.empty()) send_signal(id, own_signal(SignalKind::AckShutdown, id));
}

void ParentMessenger::on_ack_shutdown(int from, int id) {
  if (from == id) {
    // The child's final word: it may exit now.
    shutting_.erase(id);
    running_.erase(id);
    finished_.insert(id);
    return;
  }
  auto it = shutting_.find(id);
  if (it == shutting_.end()) return;
  it->second.erase(from);
  if (it->second.empty()) send_signal(id, own_signal(SignalKind::AckShutdown, id));
}

void ParentMessenger::child_died(int id) {
  running_.erase(id);
  areas_.erase(id);
  for (auto& [shutting, peers] : shutting_) {
    if (peers.erase(id) && peers.empty() && shutting != id && running_.count(shutting)) {
      send_signal(shutting, own_signal(SignalKind::AckShutdown, shutting));
    }
  }
  shutting_.erase(id);
  for (int other : running_) send_signal(other, own_signal(SignalKind::SiblingDied, id));
  sibling_died(id);
  io::remove_path(io::fifo_path(conf().fifoprefix, id));
}

}  // namespace host
