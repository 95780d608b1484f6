// Thin wrappers of the descriptor calls that the streams need. Nothing here
// blocks except where said.
#pragma once

#include <cstddef>
#include <string>

namespace io {

// The outcome of one non-blocking transfer.
struct TransferResult {
  size_t bytes = 0;
  // 0: done (`bytes` moved; a read of 0 bytes is the end of the stream);
  // kTransferPending: the descriptor isn't ready, try after the next wait;
  // otherwise the system's code of the fault.
  int error = 0;
};

// The Linux counterpart of "I/O pending": EAGAIN, EWOULDBLOCK and EINTR.
inline constexpr int kTransferPending = -1;

// Reads at most `n` bytes into `to`.
TransferResult read_some(int fd, char* to, size_t n);
// Writes at most `n` bytes of `from`. Writing to a pipe without a reader
// gives EPIPE as the code, never the signal: the first call of this function
// sets SIGPIPE to be ignored for the process.
TransferResult write_some(int fd, const char* from, size_t n);
// Sends at most `n` bytes on a socket, without SIGPIPE.
TransferResult send_some(int fd, const char* from, size_t n);

// True for the codes of a descriptor that isn't one (EBADF, ENOTSOCK).
bool is_invalid_descriptor_code(int code);

// Puts `fd` in non-blocking mode. Raises error::ESystemError.
void set_nonblocking(int fd);
// For a stream that takes ownership of `fd`: puts it in non-blocking mode
// and returns it; -1 passes through. When that fails the descriptor is
// closed, since its owner is never made, and error::ESystemError raised.
int adopt_nonblocking(int fd);
// Closes `fd`; errors are ignored, the descriptor is gone either way.
void close_descriptor(int fd);

// Shuts one or both directions of a socket; returns 0 or the system's code.
enum class ShutdownHow { kReceive, kSend, kBoth };
int shutdown_socket(int fd, ShutdownHow how);

// Both ends of a new pipe or socket pair, close-on-exec; the caller owns
// them. Raise error::ESystemError.
struct DescriptorPair {
  int first = -1;   // The pipe's reading end.
  int second = -1;  // The pipe's writing end.
};
DescriptorPair create_pipe();
DescriptorPair create_socket_pair();

}  // namespace io
