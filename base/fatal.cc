#include "base/fatal.h"

#include <cstdio>
#include <cstdlib>

void assertion_failed(const std::string& text) {
  std::fprintf(stderr, "Assertion failed: %s\n", text.c_str());
  std::fflush(stderr);
  std::abort();
}
