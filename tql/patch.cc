#include "tql/patch.h"

#include "tql/catalogue.h"
#include "tql/errors.h"

namespace tql {

const property_t* patch_t::find_property(int32_t number) const {
  auto it = properties.find(number);
  return it == properties.end() ? nullptr : it->second.get();
}

const property_t* patch_t::find_set_property(int32_t number) const {
  const property_t* p = find_property(number);
  return p != nullptr && !p->is_null ? p : nullptr;
}

const property_t& patch_t::property(int32_t number) const {
  const property_t* p = find_property(number);
  if (p == nullptr) {
    throw errors::tql(
        errors::tql::kRequiredMissing,
        "Property " + property_name(number) + " not found in class " + class_name(class_));
  }
  return *p;
}

void patch_t::set_property(std::unique_ptr<property_t> p) {
  int32_t number = p->name;
  properties[number] = property_ptr(std::move(p));
}

}  // namespace tql
