#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <cstring>

#include "base/fatal.h"
#include "io/errors.h"
#include "io/poll.h"
#include "io/tls.h"

namespace io {
namespace {

constexpr size_t kTlsBufferSize = 16 * 1024;  // one TLS record

// The TLS library's words for the last failure of `ssl`, or `fallback`.
std::string tls_error_text(const char* fallback) {
  const unsigned long code = ERR_get_error();
  ERR_clear_error();
  if (code == 0) return fallback;
  char text[256];
  ERR_error_string_n(code, text, sizeof text);
  return text;
}

// What the TLS library waits for after a call that returned `result`:
// kWaitRead, kWaitWrite, or kWaitNone when the call is done or failed.
unsigned wanted(SSL* ssl, int result) {
  switch (SSL_get_error(ssl, result)) {
    case SSL_ERROR_WANT_READ:
      return kWaitRead;
    case SSL_ERROR_WANT_WRITE:
      return kWaitWrite;
    default:
      return kWaitNone;
  }
}

bool is_ip_address(const std::string& host) {
  unsigned char buffer[16];
  return inet_pton(AF_INET, host.c_str(), buffer) == 1 ||
         inet_pton(AF_INET6, host.c_str(), buffer) == 1;
}

}  // namespace

// The streams of a connection; here only, but outside the anonymous
// namespace, as the connection's state holds them.
class TlsIStream : public IStream {
 public:
  explicit TlsIStream(TlsConnection::State& state) : state_(state) {}
  void name(std::string& out) const override;
  WaitHandle wait_handle() const override;
  bool is_ready() const override;
  void before_wait() override;
  bool absorbs_signal() override;
  size_t readBegin(const char*& ptr) override;
  void readCommit(size_t n) override;
  void close() override {}

 private:
  // One SSL_read into the empty buffer; true while it waits for the socket.
  bool fill();

  TlsConnection::State& state_;
  std::unique_ptr<char[]> buffer_{new char[kTlsBufferSize]};
  size_t read_ = 0, end_ = 0;
  unsigned waiting_ = kWaitNone;
  bool eof_ = false;
  std::string fault_;
};

class TlsOStream : public OStream {
 public:
  explicit TlsOStream(TlsConnection::State& state) : state_(state) {}
  void name(std::string& out) const override;
  WaitHandle wait_handle() const override;
  bool is_ready() const override { return !fault_.empty() || sent_ == filled_; }
  void before_wait() override;
  bool absorbs_signal() override;
  size_t writeBegin(char*& ptr) override;
  void writeCommit(size_t n) override;
  bool flushStep() override;
  void close() override { raise_fault(); }

 private:
  void send_buffered();
  void raise_fault() const;

  TlsConnection::State& state_;
  std::unique_ptr<char[]> buffer_{new char[kTlsBufferSize]};
  size_t sent_ = 0, filled_ = 0;
  size_t attempt_ = 0;  // the length of a write that must be repeated as it was
  unsigned waiting_ = kWaitNone;
  std::string fault_;
};

struct TlsConnection::State {
  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  // Also when the handshake failed in the connection's constructor.
  ~State() {
    if (ssl) SSL_free(ssl);
    if (ctx) SSL_CTX_free(ctx);
  }

  int fd = -1;
  std::string name;
  SSL_CTX* ctx = nullptr;
  SSL* ssl = nullptr;
  TlsIStream input{*this};
  TlsOStream output{*this};
};

void TlsIStream::name(std::string& out) const { out = "TlsIStream(" + state_.name + ")"; }

WaitHandle TlsIStream::wait_handle() const { return {state_.fd, waiting_}; }

bool TlsIStream::is_ready() const {
  return !fault_.empty() || eof_ || end_ > read_ || SSL_pending(state_.ssl) > 0;
}

void TlsIStream::before_wait() {
  if (waiting_ == kWaitNone && end_ == 0 && !eof_ && fault_.empty()) waiting_ = kWaitRead;
}

bool TlsIStream::absorbs_signal() { return fill(); }

bool TlsIStream::fill() {
  ERR_clear_error();
  const int n = SSL_read(state_.ssl, buffer_.get(), static_cast<int>(kTlsBufferSize));
  if (n > 0) {
    read_ = 0;
    end_ = static_cast<size_t>(n);
    waiting_ = kWaitNone;
    return false;
  }
  waiting_ = wanted(state_.ssl, n);
  if (waiting_ != kWaitNone) return true;
  const int error = SSL_get_error(state_.ssl, n);
  // A peer that closes without the TLS close alert has still ended the
  // stream; mail servers often do so after QUIT.
  if (error == SSL_ERROR_ZERO_RETURN || (error == SSL_ERROR_SYSCALL && ERR_peek_error() == 0)) {
    eof_ = true;
  } else {
    fault_ = state_.name + ": TLS read failed: " + tls_error_text("connection reset");
  }
  return false;
}

size_t TlsIStream::readBegin(const char*& ptr) {
  if (read_ == end_ && !eof_ && fault_.empty() && SSL_pending(state_.ssl) > 0) fill();
  if (read_ == end_) {
    if (!fault_.empty()) throw EConnection(fault_);
    if (eof_) throw EEndOfStream(name_of(*this));
  }
  ptr = buffer_.get() + read_;
  return end_ - read_;
}

void TlsIStream::readCommit(size_t n) {
  TAVREL_ASSERT(n <= end_ - read_, "Overcommit in TlsIStream");
  read_ += n;
  if (read_ == end_) read_ = end_ = 0;
}

void TlsOStream::name(std::string& out) const { out = "TlsOStream(" + state_.name + ")"; }

WaitHandle TlsOStream::wait_handle() const { return {state_.fd, waiting_}; }

void TlsOStream::before_wait() {
  if (waiting_ == kWaitNone && sent_ != filled_ && fault_.empty()) waiting_ = kWaitWrite;
}

bool TlsOStream::absorbs_signal() {
  send_buffered();
  return !is_ready();
}

void TlsOStream::send_buffered() {
  if (sent_ == filled_ || !fault_.empty()) return;
  if (attempt_ == 0) attempt_ = filled_ - sent_;
  ERR_clear_error();
  const int n = SSL_write(state_.ssl, buffer_.get() + sent_, static_cast<int>(attempt_));
  if (n > 0) {
    sent_ += static_cast<size_t>(n);
    attempt_ = 0;
    waiting_ = sent_ == filled_ ? kWaitNone : kWaitWrite;
    if (sent_ == filled_) sent_ = filled_ = 0;
    return;
  }
  waiting_ = wanted(state_.ssl, n);
  if (waiting_ == kWaitNone) {
    fault_ = state_.name + ": TLS write failed: " + tls_error_text("connection reset");
  }
}

void TlsOStream::raise_fault() const {
  if (!fault_.empty()) throw EConnection(fault_);
}

size_t TlsOStream::writeBegin(char*& ptr) {
  raise_fault();
  ptr = buffer_.get() + filled_;
  return kTlsBufferSize - filled_;
}

void TlsOStream::writeCommit(size_t n) {
  TAVREL_ASSERT(n <= kTlsBufferSize - filled_, "Overcommit in TlsOStream");
  filled_ += n;
}

bool TlsOStream::flushStep() {
  raise_fault();
  if (waiting_ == kWaitNone) send_buffered();
  raise_fault();
  return is_ready();
}

namespace {

void configure(SSL_CTX* ctx, SSL* ssl, const TlsOptions& options, const std::string& name) {
  SSL_CTX_set_min_proto_version(ctx, TLS1_2_VERSION);
  SSL_set_mode(ssl, SSL_MODE_ENABLE_PARTIAL_WRITE);
  if (!options.verify) return;
  const bool trusted = options.ca_file.empty() ? SSL_CTX_set_default_verify_paths(ctx) == 1
                                               : SSL_CTX_load_verify_locations(
                                                     ctx, options.ca_file.c_str(), nullptr) == 1;
  if (!trusted) {
    throw EConnection("TLS with " + name + ": cannot load the CA file \"" + options.ca_file +
                      "\": " + tls_error_text("unknown error"));
  }
  SSL_set_verify(ssl, SSL_VERIFY_PEER, nullptr);
  X509_VERIFY_PARAM* param = SSL_get0_param(ssl);
  if (is_ip_address(options.host)) {
    X509_VERIFY_PARAM_set1_ip_asc(param, options.host.c_str());
  } else {
    SSL_set_tlsext_host_name(ssl, options.host.c_str());
    X509_VERIFY_PARAM_set_hostflags(param, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
    X509_VERIFY_PARAM_set1_host(param, options.host.c_str(), 0);
  }
}

void handshake(TlsConnection::State& s, const TlsOptions& options, Duration timeout) {
  const TimePoint deadline =
      timeout == kInfinite ? TimePoint::max() : MonotonicClock::now() + timeout;
  for (;;) {
    ERR_clear_error();
    const int result = SSL_connect(s.ssl);
    if (result == 1) return;
    const unsigned events = wanted(s.ssl, result);
    if (events == kWaitNone) {
      std::string why = tls_error_text("the connection was closed");
      const long verify = SSL_get_verify_result(s.ssl);
      if (options.verify && verify != X509_V_OK) {
        why += " (" + std::string(X509_verify_cert_error_string(verify)) + ")";
      }
      throw EConnection("TLS handshake with " + s.name + " failed: " + why);
    }
    const TimePoint now = MonotonicClock::now();
    if (now >= deadline) throw ETimeout("TLS handshake with " + s.name);
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - now).count();
    poll_handles({WaitHandle{s.fd, events}},
                 deadline == TimePoint::max()
                     ? -1
                     : static_cast<int>(std::min<long long>(left + 1, 1 << 30)));
  }
}

}  // namespace

TlsConnection::TlsConnection(int fd, std::string name, const TlsOptions& options, Duration timeout)
    : state_(std::make_unique<State>()) {
  state_->fd = fd;
  state_->name = std::move(name);
  state_->ctx = SSL_CTX_new(TLS_client_method());
  state_->ssl = state_->ctx ? SSL_new(state_->ctx) : nullptr;
  if (state_->ssl == nullptr || SSL_set_fd(state_->ssl, fd) != 1) {
    throw EConnection("TLS with " + state_->name + ": " + tls_error_text("cannot set up TLS"));
  }
  configure(state_->ctx, state_->ssl, options, state_->name);
  handshake(*state_, options, timeout);
}

TlsConnection::~TlsConnection() = default;

IStream& TlsConnection::input() { return state_->input; }
OStream& TlsConnection::output() { return state_->output; }

std::string TlsConnection::description() const {
  return std::string(SSL_get_version(state_->ssl)) + " " + SSL_get_cipher_name(state_->ssl);
}

}  // namespace io
