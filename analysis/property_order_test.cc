#include "analysis/property_order.h"

#include <gtest/gtest.h>

#include "tql/errors.h"
#include "tql/schema.h"

namespace {

tql::patch_t Labelled(uint32_t n, const char* label) {
  tql::patch_t p;
  p.id = tql::id_t{0, 1, n};
  if (label != nullptr) p.set_property(tql::make_string_property(schema::kLongLabel, label));
  return p;
}

std::string Order(const tql::patch_t& parent) {
  std::string out;
  for (const tql::patch_t* child : sortedChildren(parent)) out += child->id.text() + " ";
  return out;
}

TEST(PropertyOrder, ByLongLabelWithUnlabelledObjectsFirst) {
  tql::patch_t parent;
  parent.children.push_back(Labelled(1, "zeta"));
  parent.children.push_back(Labelled(2, nullptr));
  parent.children.push_back(Labelled(3, "Alpha"));
  parent.children.push_back(Labelled(4, "alpha"));
  EXPECT_EQ("0.1.2 0.1.3 0.1.4 0.1.1 ", Order(parent));
}

TEST(PropertyOrder, KeysInTurnAndDescendingKeys) {
  const tql::patch_t a = Labelled(1, "a");
  tql::patch_t b = Labelled(2, "a");
  b.set_property(tql::make_string_property(schema::kName, "b"));
  const std::vector<PropertyOrderKey> byLabelThenName{{schema::kLongLabel, true},
                                                      {schema::kName, true}};
  // Equal labels: the name decides; `a` has none, so it comes first.
  EXPECT_TRUE(propertyOrderBefore(byLabelThenName, a, b));
  EXPECT_FALSE(propertyOrderBefore(byLabelThenName, b, a));
  const std::vector<PropertyOrderKey> byNameDescending{{schema::kName, false}};
  EXPECT_TRUE(propertyOrderBefore(byNameDescending, b, a));
  EXPECT_FALSE(propertyOrderBefore(byNameDescending, a, b));
  // Equal in every key: neither comes first.
  EXPECT_FALSE(propertyOrderBefore(byLabelThenName, a, a));
}

TEST(PropertyOrder, ValuesThatCannotBeComparedRaise) {
  const tql::patch_t a = Labelled(1, "a");
  tql::patch_t b = Labelled(2, nullptr);
  b.set_property(tql::make_property<tql::kind::kUint>(schema::kLongLabel, 3u));
  EXPECT_THROW(propertyOrderBefore({{schema::kLongLabel, true}}, a, b), errors::tql);
}

}  // namespace
