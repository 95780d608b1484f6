// A connected TCP (or local) socket and its two streams.
//
// The socket owns its descriptor; its streams live as long as it does and
// are reached through input() and output(). Transfers follow the rules of
// descriptor_stream.h: one at a time per direction, on the main thread,
// faults stored until the next use. A receive of 0 bytes is the end of the
// stream. Writes never raise SIGPIPE.
#pragma once

#include <cstdint>
#include <string>

#include "io/descriptor_stream.h"

namespace io {

class SocketConnector;
class Socket_Stream_Base;

// Something whose descriptor can be handed to another process.
class Passable {
 public:
  virtual ~Passable() = default;
  // Hands the descriptor to the process `process_id`.
  virtual void pass(int process_id) = 0;
};

class Socket_IStream : public DescriptorIStream {
 public:
  explicit Socket_IStream(Socket_Stream_Base& owner);
  // The socket's name.
  void name(std::string& out) const override;
  // Raises a stored fault, then shuts the receiving side; an error of that
  // is stored.
  void close() override;

 protected:
  int descriptor() const override;
  // "Socket_IStream".
  std::string fault_text() const override { return "Socket_IStream"; }

 private:
  Socket_Stream_Base& owner_;
};

class Socket_OStream : public DescriptorOStream {
 public:
  explicit Socket_OStream(Socket_Stream_Base& owner);
  void name(std::string& out) const override;
  // Raises a stored fault, then shuts the sending side (the peer reads the
  // end) and drops bytes not yet sent: flush first.
  void close() override;

 protected:
  int descriptor() const override;
  // "Socket_Ostream(" + name + ")".
  std::string fault_text() const override;
  TransferResult transmit(const char* from, size_t n) override;

 private:
  Socket_Stream_Base& owner_;
};

// What a socket holds; its streams refer to it.
class Socket_Stream_Base {
 public:
  Socket_Stream_Base(const Socket_Stream_Base&) = delete;
  Socket_Stream_Base& operator=(const Socket_Stream_Base&) = delete;

  const std::string& socket_name() const { return name_; }
  int descriptor() const { return fd_; }

 protected:
  Socket_Stream_Base(std::string name, int fd, uint32_t peer_address, uint16_t peer_port);
  ~Socket_Stream_Base() = default;

  std::string name_;  // The peer's address, ":" and the port.
  int fd_;
  uint32_t peer_address_;  // Network order.
  uint16_t peer_port_;
  Socket_IStream input_;
  Socket_OStream output_;
};

class Socket : public Passable, private Socket_Stream_Base {
 public:
  // Takes the socket of a connector whose thread has ended. Raises
  // io::EConnection "Error connecting to " + address + ":" + port + ": " +
  // the system's text when the connection failed (or isn't done yet). A
  // second socket from the same connector is the fatal assertion "Socket
  // already taken from " + the connector's name.
  explicit Socket(SocketConnector& connector);
  // Takes ownership of a connected socket descriptor, e.g. one end of
  // create_socket_pair(); `name` serves messages.
  Socket(std::string name, int fd);
  // Shuts both directions and closes the descriptor.
  ~Socket() override;

  // Not offered: raises error::EFatal "Not implemented".
  void pass(int process_id) override;

  IStream& input() { return input_; }
  OStream& output() { return output_; }
  const std::string& name() const { return name_; }
  // The connected descriptor, for a layer on top (TLS) that takes over
  // the transfers; the socket's own streams must then stay unused.
  int descriptor() const { return fd_; }
  uint32_t peer_address() const { return peer_address_; }
  uint16_t peer_port() const { return peer_port_; }
};

}  // namespace io
