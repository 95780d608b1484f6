// Integer arithmetic on times that come from outside (stored samples): it
// wraps instead of overflowing, so damaged values give nonsense sums (which
// the negative-span repairs catch) but never undefined behaviour.
#pragma once

#include <cstdint>

inline int64_t wrapAdd(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}

inline int64_t wrapSub(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}
