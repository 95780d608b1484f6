// tql::pattern_t: one step of a query tree, and the makers with which the
// program composes a tree.
//
// The makers hand out heap nodes (std::unique_ptr); a node passed to a maker
// is consumed by it. A whole tree is consumed by the select that sends it.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <set>
#include <vector>

#include "tql/id.h"
#include "tql/property.h"

namespace tql {

// A where condition: the object's property `prop.name` compared with `prop`
// by `rel_op`. Stream form: the property, then `rel_op`.
struct condition_t {
  property_ptr prop;
  int32_t rel_op = kEqual;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("prop", s.prop);
    v("rel_op", s.rel_op);
  }
  bool operator==(const condition_t&) const = default;
};

// Flag bits of a pattern node.
inline constexpr int32_t kPatternNested = 1;    // Passes through nested objects of the class.
inline constexpr int32_t kPatternAllProps = 2;  // Returns its objects with all properties.
inline constexpr int32_t kPatternBit4 = 4;      // Root class; combined with 2 on main classes.

struct pattern_t {
  int32_t class_ = 0;
  int32_t flags = 0;
  int32_t tag = -1;                  // Comes back in `tags` of what the node matched.
  std::vector<pattern_t> next;       // Steps below this one.
  std::vector<pattern_t> cond_next;  // Conditional steps; left empty here.
  std::list<condition_t> where;
  std::set<int32_t> wanted_properties;  // Property numbers to return.

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("class_", s.class_);
    v("flags", s.flags);
    v("tag", s.tag);
    v("next", s.next);
    v("cond_next", s.cond_next);
    v("where", s.where);
    v("wanted_properties", s.wanted_properties);
  }
  bool operator==(const pattern_t&) const = default;
};

using pattern_list_t = std::vector<pattern_t>;

std::unique_ptr<pattern_t> make_pattern(int32_t class_, int32_t flags);
std::unique_ptr<pattern_t> make_pattern(int32_t class_, const std::set<int32_t>& wanted,
                                        int32_t flags);
std::unique_ptr<pattern_t> make_pattern(int32_t class_, const std::list<condition_t>& where,
                                        int32_t flags);

// The condition that selects one object by identity: a property_object_t
// with property number 0 (`id`), operator equal.
condition_t id_condition(const id_t& id);

// Appends `child` to parent->next and returns `parent`, so steps nest.
std::unique_ptr<pattern_t> add_next(std::unique_ptr<pattern_t> parent,
                                    std::unique_ptr<pattern_t> child);
// Moves every node of `list` to parent->next; a null `list` adds nothing.
std::unique_ptr<pattern_t> add_next(std::unique_ptr<pattern_t> parent,
                                    std::unique_ptr<pattern_list_t> list);
// A new list with the two nodes.
std::unique_ptr<pattern_list_t> pattern_list(std::unique_ptr<pattern_t> a,
                                             std::unique_ptr<pattern_t> b);
// Appends `node` and returns `list`.
std::unique_ptr<pattern_list_t> add_to_list(std::unique_ptr<pattern_list_t> list,
                                            std::unique_ptr<pattern_t> node);

}  // namespace tql
