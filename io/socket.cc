#include "io/socket.h"

#include "base/error.h"
#include "base/fatal.h"
#include "io/connector.h"
#include "io/errors.h"
#include "io/socket_address.h"
#include "io/system_error.h"

namespace io {

namespace {

const StreamTexts kSocketInputTexts = {
    "Overcommit in Socket_IStream", false, "Overcommit in Socket_IStream::callback",
    "Unsolicited callback in Socket_IStream", "Invalid socket in Socket_IStream callback"};
const StreamTexts kSocketOutputTexts = {
    "Overcommit in Socket_OStream", false, "Too large transmission in Socket_OStream",
    "Unsolicited callback in Socket_OStream",
    // The output's completion fails with the same words as the input's.
    "Invalid socket in Socket_IStream callback"};

// Takes the connected socket out of the connector's state, or raises why
// there is none.
int take_socket(SocketConnector& connector) {
  connect_state& state = connector.state();
  int status = state.status.load(std::memory_order_acquire);
  if (status != 0)
    throw EConnection("Error connecting to " + endpoint_text(state.address, state.port) + ": " +
                      system_error_text(status));
  // A second socket from one connector is a programming error; caught here
  // rather than in the destructor of a socket without descriptor.
  TAVREL_ASSERT(state.socket >= 0, "Socket already taken from " + name_of(connector));
  int fd = state.socket;
  state.socket = -1;
  return adopt_nonblocking(fd);
}

}  // namespace

Socket_IStream::Socket_IStream(Socket_Stream_Base& owner)
    : DescriptorIStream(kSocketInputTexts), owner_(owner) {}

void Socket_IStream::name(std::string& out) const { out = owner_.socket_name(); }

int Socket_IStream::descriptor() const { return owner_.descriptor(); }

void Socket_IStream::close() {
  raise_fault();
  int code = shutdown_socket(owner_.descriptor(), ShutdownHow::kReceive);
  if (code != 0) set_fault(code);
}

Socket_OStream::Socket_OStream(Socket_Stream_Base& owner)
    : DescriptorOStream(kSocketOutputTexts), owner_(owner) {}

void Socket_OStream::name(std::string& out) const { out = owner_.socket_name(); }

int Socket_OStream::descriptor() const { return owner_.descriptor(); }

std::string Socket_OStream::fault_text() const {
  return "Socket_Ostream(" + owner_.socket_name() + ")";
}

TransferResult Socket_OStream::transmit(const char* from, size_t n) {
  return send_some(owner_.descriptor(), from, n);
}

void Socket_OStream::close() {
  raise_fault();
  stop_transfer();
  discard_unsent();
  int code = shutdown_socket(owner_.descriptor(), ShutdownHow::kSend);
  if (code != 0) raise_system_error(fault_text(), code);
}

Socket_Stream_Base::Socket_Stream_Base(std::string name, int fd, uint32_t peer_address,
                                       uint16_t peer_port)
    : name_(std::move(name)),
      fd_(fd),
      peer_address_(peer_address),
      peer_port_(peer_port),
      input_(*this),
      output_(*this) {}

Socket::Socket(SocketConnector& connector)
    : Socket_Stream_Base(endpoint_text(connector.state().address, connector.state().port),
                         take_socket(connector), connector.state().address,
                         connector.state().port) {}

Socket::Socket(std::string name, int fd)
    : Socket_Stream_Base(std::move(name), adopt_nonblocking(fd), 0, 0) {}

Socket::~Socket() {
  TAVREL_ASSERT(fd_ >= 0, "Socket handle invalid in socket destructor");
  shutdown_socket(fd_, ShutdownHow::kBoth);
  close_descriptor(fd_);
}

void Socket::pass(int) { throw error::EFatal("Not implemented"); }

}  // namespace io
