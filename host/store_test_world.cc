#include "host/store_test_world.h"

#include "host/select_eval.h"
#include "tql/schema.h"

namespace host::testing {

tql::id_t TestWorld::add(const std::string& parent, int32_t class_, const std::string& label,
                         std::vector<tql::property_ptr> extra) {
  extra.push_back(string_prop(schema::kName, label));
  extra.push_back(string_prop(schema::kSiblingName, label));
  ChangeResult r = store_.create(ids_.at(parent), class_, std::move(extra));
  if (r.status != 0) throw std::runtime_error("TestWorld::add " + label + ": " + r.detail);
  ids_[label] = r.id;
  labels_[r.id] = label;
  return r.id;
}

std::string TestWorld::render(const tql::patch_t& p) const {
  auto it = labels_.find(p.id);
  std::string out = it == labels_.end() ? p.id.text() : it->second;
  for (int32_t tag : p.tags) out += "#" + std::to_string(tag);
  if (p.children.empty()) return out;
  out += "(";
  for (size_t i = 0; i < p.children.size(); ++i) {
    if (i != 0) out += ",";
    out += render(p.children[i]);
  }
  return out + ")";
}

std::string TestWorld::render(const std::vector<tql::patch_t>& results) const {
  std::string out;
  for (const tql::patch_t& p : results) out += (out.empty() ? "" : " ") + render(p);
  return out.empty() ? "(none)" : out;
}

std::string TestWorld::select(const std::vector<std::string>& roots,
                              const tql::pattern_t& pattern) const {
  std::list<tql::id_t> ids;
  for (const std::string& r : roots) ids.push_back(ids_.count(r) ? ids_.at(r) : tql::id_t{9, 9});
  return render(host::select(store_, ids, pattern));
}

tql::pattern_t step(int32_t class_, int32_t flags, std::vector<tql::pattern_t> next) {
  tql::pattern_t p;
  p.class_ = class_;
  p.flags = flags;
  p.next = std::move(next);
  return p;
}

tql::pattern_t with_tag(tql::pattern_t p, int32_t tag) {
  p.tag = tag;
  return p;
}

tql::pattern_t with_where(tql::pattern_t p, tql::property_ptr value, int32_t rel_op) {
  p.where.push_back(tql::condition_t{std::move(value), rel_op});
  return p;
}

tql::pattern_t wanting(tql::pattern_t p, std::set<int32_t> wanted) {
  p.wanted_properties = std::move(wanted);
  return p;
}

std::vector<tql::property_ptr> props(tql::property_ptr p) {
  std::vector<tql::property_ptr> v;
  v.push_back(std::move(p));
  return v;
}

tql::property_ptr string_prop(int32_t number, const std::string& v) {
  return tql::make_property<tql::kind::kString>(number, v);
}
tql::property_ptr bool_prop(int32_t number, bool v) {
  return tql::make_property<tql::kind::kBoolean>(number, v);
}
tql::property_ptr uint_prop(int32_t number, uint32_t v) {
  return tql::make_property<tql::kind::kUint>(number, v);
}
tql::property_ptr object_prop(int32_t number, const tql::id_t& v) {
  return tql::make_property<tql::kind::kObject>(number, tql::object_ref_t{v, {}});
}
tql::property_ptr object_set_prop(int32_t number, const std::vector<tql::id_t>& ids) {
  tql::object_set_t set;
  for (const tql::id_t& id : ids) set.emplace(id, tql::origin_t{});
  return tql::make_property<tql::kind::kObjectSet>(number, std::move(set));
}

}  // namespace host::testing
