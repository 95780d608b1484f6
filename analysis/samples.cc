#include "analysis/samples.h"

#include <string>

#include "base/fatal.h"

namespace {

constexpr const char* kClassNames[] = {"data_interval_t", "data_interval_incident_t",
                                       "data_interval_continuous_t", "data_interval_enum_t"};

const char* className(const tsdb::data_interval_t* p) {
  if (p == nullptr) return "(null)";
  const int32_t type = p->type();
  return type >= 1 && type <= 3 ? kClassNames[type] : kClassNames[0];
}

}  // namespace

template <class Sample>
Sample* checked_cast(tsdb::data_interval_t* p) {
  const int32_t wanted = Sample().type();
  if (p == nullptr || p->type() != wanted) {
    assertion_failed(std::string("checked_cast failed, ") + className(p) + " should have been " +
                     kClassNames[wanted]);
  }
  return static_cast<Sample*>(p);
}

template <class Sample>
std::vector<Sample*> castSamples(const std::vector<tsdb::interval_ptr>& reply) {
  std::vector<Sample*> out;
  out.reserve(reply.size());
  for (const tsdb::interval_ptr& p : reply) out.push_back(checked_cast<Sample>(p.get()));
  return out;
}

template ContinuousSample* checked_cast<ContinuousSample>(tsdb::data_interval_t*);
template EnumSample* checked_cast<EnumSample>(tsdb::data_interval_t*);
template std::vector<ContinuousSample*> castSamples<ContinuousSample>(
    const std::vector<tsdb::interval_ptr>&);
template std::vector<EnumSample*> castSamples<EnumSample>(const std::vector<tsdb::interval_ptr>&);
