// Reading optional property values of stored objects.
#pragma once

#include <cstdint>

#include "tql/patch.h"
#include "tql/property.h"

// The value of a set property of kind K, or null when the object hasn't got
// it, or has it null or of another kind. The object keeps ownership.
template <int32_t K>
const typename tql::property_kind_t<K>::value_type* valueOf(const tql::patch_t& object,
                                                            int32_t number) {
  const auto* p = dynamic_cast<const tql::property_kind_t<K>*>(object.find_property(number));
  return p != nullptr && !p->is_null ? &p->value : nullptr;
}
