// The order of children in a report: by a list of (property, direction)
// keys. The walk uses the one key `longLabel`, ascending.
#pragma once

#include <cstdint>
#include <vector>

#include "tql/patch.h"

struct PropertyOrderKey {
  int32_t property;
  bool ascending;
};

// Whether `a` comes before `b`. Per key: neither has the property, next
// key; only `a` lacks it, the direction (so objects without it come first
// when ascending); only `b`, the opposite; `a`'s value less than `b`'s, the
// direction; `b`'s less than `a`'s, the opposite; else the next key. After
// the last key, false. Raises errors::tql when two values can't be
// compared.
bool propertyOrderBefore(const std::vector<PropertyOrderKey>& keys, const tql::patch_t& a,
                         const tql::patch_t& b);

// The children of `object`, sorted by `longLabel` ascending (not stable).
std::vector<const tql::patch_t*> sortedChildren(const tql::patch_t& object);
