#include "analysis/property_order.h"

#include <algorithm>

#include "tql/schema.h"

bool propertyOrderBefore(const std::vector<PropertyOrderKey>& keys, const tql::patch_t& a,
                         const tql::patch_t& b) {
  for (const PropertyOrderKey& key : keys) {
    const tql::property_t* pa = a.find_property(key.property);
    const tql::property_t* pb = b.find_property(key.property);
    if (pa == nullptr && pb == nullptr) continue;
    if (pa == nullptr) return key.ascending;
    if (pb == nullptr) return !key.ascending;
    if (pa->compare(tql::kLess, *pb)) return key.ascending;
    if (pb->compare(tql::kLess, *pa)) return !key.ascending;
  }
  return false;
}

std::vector<const tql::patch_t*> sortedChildren(const tql::patch_t& object) {
  static const std::vector<PropertyOrderKey> kByLongLabel{{schema::kLongLabel, true}};
  std::vector<const tql::patch_t*> children;
  children.reserve(object.children.size());
  for (const tql::patch_t& child : object.children) children.push_back(&child);
  std::sort(children.begin(), children.end(), [](const tql::patch_t* a, const tql::patch_t* b) {
    return propertyOrderBefore(kByLongLabel, *a, *b);
  });
  return children;
}
