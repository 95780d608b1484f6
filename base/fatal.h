// The fatal assertion: for states the design rules out, never for input from
// outside. Writes "Assertion failed: " and the text to standard error and
// aborts; nothing is unwound and no event is sent.
#pragma once

#include <string>

[[noreturn]] void assertion_failed(const std::string& text);

// Checks `cond`; the text expression is evaluated only when it fails.
#define TAVREL_ASSERT(cond, text)        \
  do {                                   \
    if (!(cond)) assertion_failed(text); \
  } while (0)
