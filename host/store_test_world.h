// Test support: builds small worlds in an ObjectStore by label, and renders
// select results as short texts such as "top(r1#0,t1)".
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/store_objects.h"
#include "tql/patch.h"
#include "tql/pattern.h"

namespace host::testing {

class TestWorld {
 public:
  // Adds an object under `parent` ("root" is 0.1) with the label as its
  // `name` and `siblingName`, and returns its id.
  tql::id_t add(const std::string& parent, int32_t class_, const std::string& label,
                std::vector<tql::property_ptr> extra = {});
  const tql::id_t& id(const std::string& label) const { return ids_.at(label); }
  ObjectStore& store() { return store_; }

  // "label(child,child)" with "#tag" after a label for each tag.
  std::string render(const tql::patch_t& p) const;
  std::string render(const std::vector<tql::patch_t>& results) const;
  // Runs `pattern` from the labelled roots and renders the results.
  std::string select(const std::vector<std::string>& roots, const tql::pattern_t& pattern) const;

 private:
  ObjectStore store_;
  std::map<std::string, tql::id_t> ids_{{"root", tql::kRootId}};
  std::map<tql::id_t, std::string> labels_{{tql::kRootId, "root"}};
};

// Pattern makers for short tests.
tql::pattern_t step(int32_t class_, int32_t flags, std::vector<tql::pattern_t> next = {});
tql::pattern_t with_tag(tql::pattern_t p, int32_t tag);
tql::pattern_t with_where(tql::pattern_t p, tql::property_ptr value, int32_t rel_op = 1);
tql::pattern_t wanting(tql::pattern_t p, std::set<int32_t> wanted);

// A property list of one.
std::vector<tql::property_ptr> props(tql::property_ptr p);

tql::property_ptr string_prop(int32_t number, const std::string& v);
tql::property_ptr bool_prop(int32_t number, bool v);
tql::property_ptr uint_prop(int32_t number, uint32_t v);
tql::property_ptr object_prop(int32_t number, const tql::id_t& v);
tql::property_ptr object_set_prop(int32_t number, const std::vector<tql::id_t>& ids);

}  // namespace host::testing
