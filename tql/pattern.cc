#include "tql/pattern.h"

namespace tql {

std::unique_ptr<pattern_t> make_pattern(int32_t class_, int32_t flags) {
  auto p = std::make_unique<pattern_t>();
  p->class_ = class_;
  p->flags = flags;
  return p;
}

std::unique_ptr<pattern_t> make_pattern(int32_t class_, const std::set<int32_t>& wanted,
                                        int32_t flags) {
  auto p = make_pattern(class_, flags);
  p->wanted_properties = wanted;
  return p;
}

std::unique_ptr<pattern_t> make_pattern(int32_t class_, const std::list<condition_t>& where,
                                        int32_t flags) {
  auto p = make_pattern(class_, flags);
  p->where = where;
  return p;
}

condition_t id_condition(const id_t& id) {
  return condition_t{property_ptr(make_object_property(0, id)), kEqual};
}

std::unique_ptr<pattern_t> add_next(std::unique_ptr<pattern_t> parent,
                                    std::unique_ptr<pattern_t> child) {
  parent->next.push_back(std::move(*child));
  return parent;
}

std::unique_ptr<pattern_t> add_next(std::unique_ptr<pattern_t> parent,
                                    std::unique_ptr<pattern_list_t> list) {
  if (list) {
    for (pattern_t& node : *list) parent->next.push_back(std::move(node));
  }
  return parent;
}

std::unique_ptr<pattern_list_t> pattern_list(std::unique_ptr<pattern_t> a,
                                             std::unique_ptr<pattern_t> b) {
  auto list = std::make_unique<pattern_list_t>();
  list->push_back(std::move(*a));
  list->push_back(std::move(*b));
  return list;
}

std::unique_ptr<pattern_list_t> add_to_list(std::unique_ptr<pattern_list_t> list,
                                            std::unique_ptr<pattern_t> node) {
  list->push_back(std::move(*node));
  return list;
}

}  // namespace tql
