// A TLS client connection over a connected socket, with its two streams.
//
// The handshake runs in the constructor, waiting on the socket's descriptor
// for at most `timeout`; the certificate of the peer is checked against the
// system's CA store (or a CA file of one's own) and must name the host,
// unless the options say it needn't be checked. The streams follow the
// rules of stream.h and work under io::iostream with its time-outs: a
// transfer runs when the selector reports the descriptor; what the TLS
// library has decrypted but not yet handed over counts as ready. Faults are
// stored and raised at the next use as io::EConnection with the TLS
// library's words.
//
// The socket must outlive the connection, and nothing else may use its
// descriptor meanwhile. Single-threaded.
#pragma once

#include <memory>
#include <string>

#include "io/clock.h"
#include "io/stream.h"

namespace io {

struct TlsOptions {
  std::string host;     // the name for SNI and the certificate check
  std::string ca_file;  // a PEM file of trusted CAs; empty: the system's
  bool verify = true;   // false: encrypt, but take any certificate
};

class TlsConnection {
 public:
  // Runs the handshake over `fd`, the connected socket called `name`.
  // Raises io::ETimeout when it takes longer than `timeout`, and
  // io::EConnection "TLS handshake with " + name + " failed: " and the
  // reason (such as the certificate check's) when it fails.
  TlsConnection(int fd, std::string name, const TlsOptions& options, Duration timeout);
  // Frees the TLS state; sends no close alert (the socket is closed next).
  ~TlsConnection();
  TlsConnection(const TlsConnection&) = delete;
  TlsConnection& operator=(const TlsConnection&) = delete;

  IStream& input();
  OStream& output();
  // The protocol and cipher, for tracing ("TLSv1.3 TLS_AES_256_GCM_SHA384").
  std::string description() const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};

}  // namespace io
