#include "base/args.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "base/error.h"

namespace cli {

bool Args::flag(const std::string& name) {
  auto it = std::find(words_.begin(), words_.end(), name);
  if (it == words_.end()) return false;
  words_.erase(it);
  return true;
}

std::optional<std::string> Args::option(const std::string& name) {
  auto it = std::find(words_.begin(), words_.end(), name);
  if (it == words_.end()) return std::nullopt;
  if (it + 1 == words_.end()) throw error::EParseError("missing value after " + name);
  std::string value = *(it + 1);
  words_.erase(it, it + 2);
  return value;
}

std::string Args::required(const std::string& name) {
  auto value = option(name);
  if (!value) throw error::EParseError("missing option " + name);
  return *value;
}

std::string Args::positional(const std::string& what) {
  auto it = std::find_if(words_.begin(), words_.end(), [](const std::string& w) {
    return w.size() < 2 || w[0] != '-' || (w[1] >= '0' && w[1] <= '9') || w[1] == '.';
  });
  if (it == words_.end()) throw error::EParseError("missing " + what);
  std::string value = *it;
  words_.erase(it);
  return value;
}

void Args::done() const {
  if (!words_.empty()) throw error::EParseError("unexpected argument: " + words_.front());
}

double Args::to_double(const std::string& text) {
  char* end = nullptr;
  errno = 0;
  double v = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != 0 || errno == ERANGE)
    throw error::EParseError("not a number: " + text);
  return v;
}

int64_t Args::to_int(const std::string& text) {
  char* end = nullptr;
  errno = 0;
  long long v = std::strtoll(text.c_str(), &end, 0);
  if (text.empty() || *end != 0 || errno == ERANGE)
    throw error::EParseError("not an integer: " + text);
  return v;
}

uint64_t Args::to_uint(const std::string& text) {
  char* end = nullptr;
  errno = 0;
  if (!text.empty() && text[0] == '-') throw error::EParseError("not an unsigned integer: " + text);
  unsigned long long v = std::strtoull(text.c_str(), &end, 0);
  if (text.empty() || *end != 0 || errno == ERANGE) {
    throw error::EParseError("not an unsigned integer: " + text);
  }
  return v;
}

}  // namespace cli
