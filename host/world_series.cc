#include "host/world_series.h"

#include <limits>

#include "host/store_errors.h"
#include "host/world_values.h"

namespace host {

namespace {

using Json = nlohmann::json;

// Reads the elements of one record array in turn.
class ElementReader {
 public:
  ElementReader(const Json& array, const PathFn& path) : array_(array), path_(path) {}

  int64_t time() {
    const Json& v = next();
    if (!v.is_number_integer() ||
        (v.is_number_unsigned() && v.get<uint64_t>() > std::numeric_limits<int64_t>::max())) {
      fail("expected a time in seconds");
    }
    return v.get<int64_t>();
  }
  uint32_t count() {
    const Json& v = next();
    if (!v.is_number_unsigned() || v.get<uint64_t>() > std::numeric_limits<uint32_t>::max()) {
      fail("expected an unsigned 32-bit integer");
    }
    return v.get<uint32_t>();
  }
  float real() {
    double d = 0;
    if (!real_from_json(next(), d)) fail("expected a number, \"nan\", \"inf\" or \"-inf\"");
    return static_cast<float>(d);
  }
  std::string text() {
    const Json& v = next();
    if (!v.is_string()) fail("expected a string");
    return v.get<std::string>();
  }

 private:
  const Json& next() { return array_[index_++]; }
  [[noreturn]] void fail(const std::string& text) const {
    throw EWorldError(path_() + "[" + std::to_string(index_ - 1) + "]", text);
  }

  const Json& array_;
  const PathFn& path_;
  size_t index_ = 0;
};

constexpr size_t kSizes[] = {0, 3, 7, 5};
constexpr const char* kForms[] = {"", "[sev, msg, itime]",
                                  "[start, end, min, avg, max, ngood, nbad]",
                                  "[mask, ngood, nbad, start, end]"};

}  // namespace

tsdb::interval_ptr record_from_json(int32_t record_class, const Json& value, const PathFn& path) {
  if (!value.is_array() || value.size() != kSizes[record_class]) {
    throw EWorldError(path(), std::string("expected a record ") + kForms[record_class]);
  }
  ElementReader r(value, path);
  switch (record_class) {
    case 1: {
      tsdb::incident_fields f;
      f.sev = r.count();
      f.msg = r.text();
      f.itime = r.time();
      return std::make_unique<tsdb::data_interval_incident_t>(f);
    }
    case 2: {
      tsdb::continuous_fields f;
      f.start = r.time();
      f.end = r.time();
      f.min = r.real();
      f.avg = r.real();
      f.max = r.real();
      f.ngood = r.count();
      f.nbad = r.count();
      return std::make_unique<tsdb::data_interval_continuous_t>(f);
    }
    default: {
      tsdb::enum_fields f;
      f.mask = r.count();
      f.ngood = r.count();
      f.nbad = r.count();
      f.start = r.time();
      f.end = r.time();
      return std::make_unique<tsdb::data_interval_enum_t>(f);
    }
  }
}

Json record_to_json(const tsdb::data_interval_t& record) {
  switch (record.type()) {
    case 1: {
      const auto& i = static_cast<const tsdb::data_interval_incident_t&>(record);
      return Json::array({i.sev, i.msg, i.itime});
    }
    case 2: {
      const auto& c = static_cast<const tsdb::data_interval_continuous_t&>(record);
      return Json::array({c.start, c.end, real_to_json(c.min), real_to_json(c.avg),
                          real_to_json(c.max), c.ngood, c.nbad});
    }
    default: {
      const auto& e = static_cast<const tsdb::data_interval_enum_t&>(record);
      return Json::array({e.mask, e.ngood, e.nbad, e.start, e.end});
    }
  }
}

}  // namespace host
