// The one blocking call of the selectors: poll() over descriptors.
#pragma once

#include <vector>

#include "io/selectable.h"

namespace io {

// Outcomes of poll_handles besides an index.
inline constexpr int kPollTimedOut = -1;
inline constexpr int kPollInterrupted = -2;

// Waits until one of `handles` is signalled for its events, or
// `timeout_ms` passes (-1: no limit). Entries without a descriptor or with kWaitNone are skipped;
// an empty vector just sleeps. Returns the lowest index that was signalled (hang-up and error count
// as signalled), kPollTimedOut, or kPollInterrupted when a signal handler ran. Raises
// error::ESystemError "WaitForMultipleEvents returned error: " + the system's text when poll()
// fails.
int poll_handles(const std::vector<WaitHandle>& handles, int timeout_ms);

}  // namespace io
