#include "report/server_values.h"

#include <algorithm>

#include "report/sort_order.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/schema.h"
#include "tql/value_of.h"

namespace report::stored {
namespace {

template <class Kind>
const Kind* as(const tql::property_t* p) {
  return p != nullptr && p->type() == Kind::kKind ? static_cast<const Kind*>(p) : nullptr;
}

}  // namespace

std::string text_of(const tql::patch_t& object, int32_t number) {
  std::string out;
  if (const tql::property_t* p = object.find_set_property(number)) tql::decode_string(*p, out);
  return out;
}

bool flag_of(const tql::patch_t& object, int32_t number) {
  const tql::property_t* p = object.find_set_property(number);
  if (const auto* b = as<tql::property_boolean_t>(p)) return b->value;
  if (const auto* u = as<tql::property_uint_t>(p)) return u->value != 0;
  if (const auto* i = as<tql::property_int_t>(p)) return i->value != 0;
  if (const auto* r = as<tql::property_real_t>(p)) return r->value != 0;
  return false;
}

int64_t seconds_of(const tql::patch_t& object, int32_t number) {
  const tql::property_t& p = object.property(number);
  if (p.is_null) return 0;
  if (const auto* u = as<tql::property_uint_t>(&p)) return u->value;
  if (const auto* i = as<tql::property_int_t>(&p)) return i->value;
  int64_t seconds = 0;
  tql::decode_date(p, seconds);
  return seconds;
}

std::optional<uint32_t> order_of(const tql::patch_t& object) {
  if (const auto* u = as<tql::property_uint_t>(object.find_set_property(schema::kOrder)))
    return u->value;
  return std::nullopt;
}

std::optional<uint32_t> folder_type_of(const tql::patch_t& object) {
  const auto* e = as<tql::property_enum_t>(object.find_set_property(schema::kFolderType));
  if (e == nullptr || (e->value.enum_type & 0x1ffff) != schema::kFolderTypeEnum)
    return std::nullopt;
  return e->value.value;
}

std::string origin_of(const tql::patch_t& object) {
  const tql::property_t* p = object.find_set_property(schema::kOriginNode);
  if (p == nullptr) return "";
  tql::id_t id;
  tql::decode_object(*p, id);
  return id.text();
}

void sort_by_order(std::vector<tql::patch_t>& objects) {
  std::stable_sort(objects.begin(), objects.end(),
                   [](const tql::patch_t& a, const tql::patch_t& b) {
                     return order_before(order_of(a), order_of(b));
                   });
}

void sort_folders(std::vector<tql::patch_t>& folders) {
  auto key = [](const tql::patch_t& f) {
    return FolderKey{folder_type_of(f).value_or(0), text_of(f, schema::kName)};
  };
  std::stable_sort(
      folders.begin(), folders.end(),
      [&](const tql::patch_t& a, const tql::patch_t& b) { return folder_before(key(a), key(b)); });
}

zone_t zone_of(const tql::patch_t& report) {
  const int32_t* zone = tql::value_of<tql::property_int_t>(report, schema::kTimeZone);
  return timeZoneValue(zone != nullptr ? *zone : kEnvironmentZone);
}

}  // namespace report::stored
