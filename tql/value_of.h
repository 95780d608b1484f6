// Reading an optional stored value: the one accessor for a property that an
// object may lack, hold null, or hold in another kind than expected. A value
// that must be there is read with the decoders of decode.h, which raise
// errors::tql instead.
#pragma once

#include <cstdint>

#include "tql/patch.h"
#include "tql/property.h"

namespace tql {

// The value of `p` when it is a set property of class Kind
// (property_date_t, ...); null for no property, a null one, or one of
// another kind. The property keeps ownership.
template <class Kind>
const typename Kind::value_type* value_of(const property_t* p) {
  const auto* typed = dynamic_cast<const Kind*>(p);
  return typed != nullptr && !typed->is_null ? &typed->value : nullptr;
}

// The same for the property `number` of `object`.
template <class Kind>
const typename Kind::value_type* value_of(const patch_t& object, int32_t number) {
  return value_of<Kind>(object.find_property(number));
}

}  // namespace tql
