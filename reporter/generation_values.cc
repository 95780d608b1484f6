#include "reporter/generation_values.h"

#include "analysis/object_values.h"
#include "base/fatal.h"
#include "tql/schema.h"

void readReportFlags(const tql::patch_t& report, ReportFlags& flags) {
  readFlag(report, schema::kGraphShowMinMax, flags.graphShowMinMax);
  readFlag(report, schema::kGraphShowNoResponse, flags.graphShowNoResponse);
  readFlag(report, schema::kGraphAutoScale, flags.graphAutoScale);
  readFlag(report, schema::kGraphTabularUptime, flags.graphTabularUptime);
  readFlag(report, schema::kGraphTabularEnum, flags.graphTabularEnum);
  readFlag(report, schema::kGoodScore, flags.goodScore);
  readFlag(report, schema::kWarnScore, flags.warnScore);
  readFlag(report, schema::kAlertScore, flags.alertScore);
  readFlag(report, schema::kIncludeConfig, flags.includeConfig);
}

uint32_t nextOrder(const tql::patch_t& report) {
  const auto* order =
      dynamic_cast<const tql::property_uint_t*>(report.find_property(schema::kOrder));
  TAVREL_ASSERT(order != nullptr, "Couldn't get order property from template");
  return order->value + 1;
}

std::vector<std::string> splitAddresses(const std::string& text) {
  std::vector<std::string> out;
  std::string current;
  for (char c : text) {
    if (c == ';' || c == ',' || c == ':' || c == ' ') {
      if (!current.empty()) out.push_back(std::move(current));
      current.clear();
    } else {
      current += c;
    }
  }
  if (!current.empty()) out.push_back(std::move(current));
  return out;
}

std::vector<std::string> destinationAddresses(const tql::patch_t& report) {
  const tql::property_t* p = report.find_set_property(schema::kDestination);
  if (p == nullptr) return {};
  if (const auto* list = dynamic_cast<const tql::property_string_list_t*>(p)) {
    std::vector<std::string> out;
    for (const std::string& entry : list->value) {
      for (std::string& address : splitAddresses(entry)) out.push_back(std::move(address));
    }
    return out;
  }
  return splitAddresses(stringOr(report, schema::kDestination, ""));
}
