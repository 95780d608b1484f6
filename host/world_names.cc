#include "host/world_names.h"

#include <map>

#include "host/store_errors.h"
#include "tql/catalogue.h"

namespace host {

namespace {

std::map<std::string, int32_t> reverse(const std::map<int32_t, std::string>& names) {
  std::map<std::string, int32_t> out;
  for (const auto& [number, name] : names) out.emplace(name, number);  // Keeps the lower.
  return out;
}

bool all_digits(const std::string& s) {
  return !s.empty() && s.size() <= 10 && s.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

int32_t class_number(const std::string& name, const std::string& path) {
  static const std::map<std::string, int32_t> classes = reverse(tql::class_names());
  auto it = classes.find(name);
  if (it == classes.end()) throw EWorldError(path, "unknown class \"" + name + "\"");
  return it->second;
}

int32_t property_number(const std::string& key, const std::string& path) {
  static const std::map<std::string, int32_t> properties = reverse(tql::property_names());
  auto it = properties.find(key);
  if (it != properties.end()) return it->second;
  if (all_digits(key) && std::stoll(key) <= INT32_MAX) return static_cast<int32_t>(std::stoll(key));
  throw EWorldError(path, "unknown property \"" + key + "\"");
}

std::string property_key(int32_t number) {
  auto it = tql::property_names().find(number);
  if (it == tql::property_names().end() || number == 915) return std::to_string(number);
  return it->second;
}

tql::id_t parse_id(const std::string& text, const std::string& path) {
  tql::id_t id;
  if (text.empty()) return id;
  size_t pos = 0;
  for (;;) {
    const size_t dot = text.find('.', pos);
    const std::string part = text.substr(pos, dot == std::string::npos ? dot : dot - pos);
    if (!all_digits(part) || std::stoull(part) > UINT32_MAX || id.size() == 3) {
      throw EWorldError(path, "bad object id \"" + text + "\"");
    }
    id.push_back(static_cast<uint32_t>(std::stoull(part)));
    if (dot == std::string::npos) return id;
    pos = dot + 1;
  }
}

}  // namespace host
