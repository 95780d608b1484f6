#include "tools/chart_input.h"

#include <map>
#include <nlohmann/json.hpp>

#include "base/error.h"
#include "tools/hex.h"
#include "tql/catalogue.h"

namespace tools {
namespace {

using nlohmann::json;

// Property numbers by catalogue name.
int32_t propertyNumber(const std::string& name) {
  static const std::map<std::string, int32_t> numbers = [] {
    std::map<std::string, int32_t> m;
    for (const auto& [number, n] : tql::property_names()) m[n] = number;
    return m;
  }();
  auto it = numbers.find(name);
  if (it == numbers.end()) throw error::EParseError("unknown property " + name);
  return it->second;
}

// A typed value: JSON null, or an object of one key naming the kind.
std::unique_ptr<tql::property_t> propertyValue(int32_t number, const json& v) {
  if (v.is_null()) {
    auto p = tql::make_property<tql::kind::kReal>(number, 0.0);
    p->is_null = true;
    return p;
  }
  if (!v.is_object() || v.size() != 1) {
    throw error::EParseError("a value is null or {\"KIND\": VALUE}");
  }
  const std::string kind = v.begin().key();
  const json& x = v.begin().value();
  if (kind == "uint") return tql::make_property<tql::kind::kUint>(number, x.get<uint32_t>());
  if (kind == "int") return tql::make_property<tql::kind::kInt>(number, x.get<int32_t>());
  if (kind == "real") return tql::make_property<tql::kind::kReal>(number, x.get<double>());
  if (kind == "boolean") return tql::make_boolean_property(number, x.get<bool>());
  if (kind == "string") {
    return tql::make_string_property(number, x.get<std::string>());
  }
  if (kind == "blob_hex") {
    const std::vector<uint8_t> bytes = from_hex(x.get<std::string>());
    return tql::make_property<tql::kind::kBlob>(number, std::string(bytes.begin(), bytes.end()));
  }
  throw error::EParseError("unknown value kind " + kind);
}

tsdb::interval_ptr record(int32_t dataType, const json& r) {
  if (dataType == 3) {
    if (!r.is_array() || r.size() != 5) {
      throw error::EParseError("an enum record is [mask, ngood, nbad, start, end]");
    }
    return std::make_unique<tsdb::data_interval_enum_t>(
        tsdb::enum_fields{r[0].get<uint32_t>(), r[1].get<uint32_t>(), r[2].get<uint32_t>(),
                          r[3].get<int64_t>(), r[4].get<int64_t>()});
  }
  if (!r.is_array() || r.size() != 7) {
    throw error::EParseError("a continuous record is [start, end, min, avg, max, ngood, nbad]");
  }
  return std::make_unique<tsdb::data_interval_continuous_t>(tsdb::continuous_fields{
      r[0].get<int64_t>(), r[1].get<int64_t>(), r[2].get<float>(), r[3].get<float>(),
      r[4].get<float>(), r[5].get<uint32_t>(), r[6].get<uint32_t>()});
}

// Runs `step`, putting `where` in front of the text of what it raises.
template <class Step>
void at(const std::string& where, Step step) {
  try {
    step();
  } catch (const error::EParseError& e) {
    throw error::EParseError(where + ": " + e.text());
  } catch (const json::exception& e) {
    throw error::EParseError(where + ": " + e.what());
  }
}

}  // namespace

ChartInput parseChartInput(const std::string& text) {
  json doc;
  try {
    doc = json::parse(text);
  } catch (const json::exception& e) {
    throw error::EParseError(std::string("invalid JSON: ") + e.what());
  }
  if (!doc.is_object()) throw error::EParseError("expected a JSON object");
  ChartInput in;
  for (const char* field : {"start", "end", "data_type", "records"}) {
    if (!doc.contains(field)) {
      throw error::EParseError(std::string("missing field ") + field);
    }
  }
  at("start", [&] { in.start = doc["start"].get<int64_t>(); });
  at("end", [&] { in.end = doc["end"].get<int64_t>(); });
  at("data_type", [&] { in.dataType = doc["data_type"].get<int32_t>(); });
  if (in.dataType != 2 && in.dataType != 3 && in.dataType != 5 && in.dataType != 6) {
    throw error::EParseError("data_type must be 2, 3, 5 or 6");
  }
  const json& records = doc["records"];
  if (!records.is_array()) throw error::EParseError("records: expected an array");
  for (size_t i = 0; i < records.size(); ++i) {
    at("records[" + std::to_string(i) + "]",
       [&] { in.records.push_back(record(in.dataType, records[i])); });
  }
  for (const auto& item : doc.items()) {
    const std::string& name = item.key();
    if (name == "start" || name == "end" || name == "data_type" || name == "records") {
      continue;
    }
    const auto& value = item.value();
    at(name, [&] { in.graphObject.set_property(propertyValue(propertyNumber(name), value)); });
  }
  return in;
}

}  // namespace tools
