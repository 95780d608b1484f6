#include "host/world_config.h"

#include <cmath>
#include <limits>

#include "host/store_errors.h"

namespace host {

namespace {

using Json = nlohmann::json;

// Reads the field of a given name, if it is the one in the JSON member.
class FieldReader {
 public:
  FieldReader(const std::string& name, const Json& value, const std::string& path)
      : name_(name), value_(value), path_(path) {}

  template <class F>
  void operator()(const char* name, F& field) {
    if (name_ != name) return;
    found_ = true;
    read(field);
  }
  bool found() const { return found_; }

 private:
  [[noreturn]] void fail(const char* what) const {
    throw EWorldError(path_, std::string("expected ") + what);
  }
  void read(std::string& f) {
    if (!value_.is_string()) fail("a string");
    f = value_.get<std::string>();
  }
  void read(bool& f) {
    if (!value_.is_boolean()) fail("true or false");
    f = value_.get<bool>();
  }
  void read(int32_t& f) {
    if (!value_.is_number_integer() ||
        (value_.is_number_unsigned() && value_.get<uint64_t>() > INT32_MAX) ||
        value_.get<int64_t>() < INT32_MIN || value_.get<int64_t>() > INT32_MAX) {
      fail("a 32-bit integer");
    }
    f = static_cast<int32_t>(value_.get<int64_t>());
  }
  void read(std::set<std::string>& f) {
    if (!value_.is_array()) fail("an array of strings");
    f.clear();
    for (const Json& e : value_) {
      if (!e.is_string()) fail("an array of strings");
      f.insert(e.get<std::string>());
    }
  }
  void read(TimeValue& f) {
    if (!value_.is_number() || !(value_.get<double>() >= 0) || value_.get<double>() > INT32_MAX) {
      fail("a number of seconds, 0 or more");
    }
    const auto micros = std::llround(value_.get<double>() * 1e6);
    f = TimeValue(static_cast<int32_t>(micros / 1000000), static_cast<int32_t>(micros % 1000000));
  }

  const std::string& name_;
  const Json& value_;
  const std::string& path_;
  bool found_ = false;
};

struct FieldWriter {
  Json& out;
  template <class F>
  void operator()(const char* name, const F& field) {
    out[name] = write(field);
  }
  template <class F>
  static Json write(const F& f) {
    return f;
  }
  static Json write(const TimeValue& t) { return t.seconds + t.microseconds / 1e6; }
};

}  // namespace

void config_from_json(const Json& value, const std::string& path,
                      control::Server_Configuration_Fields& config) {
  if (!value.is_object()) throw EWorldError(path, "expected an object of configuration fields");
  for (auto it = value.begin(); it != value.end(); ++it) {
    const std::string field_path = path + "." + it.key();
    FieldReader reader(it.key(), it.value(), field_path);
    control::Server_Configuration_Fields::visit(config, reader);
    if (!reader.found()) throw EWorldError(field_path, "unknown configuration field");
  }
}

Json config_to_json(const control::Server_Configuration_Fields& config) {
  Json out = Json::object();
  FieldWriter writer{out};
  control::Server_Configuration_Fields::visit(config, writer);
  return out;
}

}  // namespace host
