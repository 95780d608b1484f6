// tql::patch_t: a stored object as a query returns it, with the objects
// matched below it.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "tql/id.h"
#include "tql/property.h"

namespace tql {

struct patch_t {
  int32_t class_ = 0;      // Class number.
  int32_t flags = 0;       // Flags of the pattern node that matched.
  std::set<int32_t> tags;  // Tags of the pattern nodes that matched.
  id_t id;
  version_t version;
  std::map<int32_t, property_ptr> properties;  // By property number; owned.
  std::vector<patch_t> children;               // Objects matched below; owned.
  origin_t origin;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("class_", s.class_);
    v("flags", s.flags);
    v("tags", s.tags);
    v("id", s.id);
    v("version", s.version);
    v("properties", s.properties);
    v("children", s.children);
    v("origin", s.origin);
  }
  bool operator==(const patch_t&) const = default;

  // The property with that number, or null. The patch keeps ownership.
  const property_t* find_property(int32_t number) const;
  // The property with that number when the patch has it and it isn't null;
  // else null. The patch keeps ownership.
  const property_t* find_set_property(int32_t number) const;
  // The property with that number. Raises errors::tql code 6 "Property NAME
  // not found in class CLASS" when the patch hasn't got it.
  const property_t& property(int32_t number) const;
  // Stores `p` under its own number, replacing what was there.
  void set_property(std::unique_ptr<property_t> p);
};

}  // namespace tql
