#include "tql/pattern.h"

#include <gtest/gtest.h>

#include "protocol/testing.h"
#include "tql/patch.h"

namespace tql {
namespace {

using protocol::testing::hex_of;
using protocol::testing::printed;
using protocol::testing::round_trip;

std::unique_ptr<pattern_t> report_tree() {
  auto where = std::list<condition_t>{id_condition(id_t{0, 9})};
  return add_next(
      make_pattern(3, where, 3),
      pattern_list(make_pattern(5, 6), make_pattern(38, std::set<int32_t>{315, 3309}, 0)));
}

TEST(PatternTest, MakersBuildTheTree) {
  auto tree = report_tree();
  EXPECT_EQ(3, tree->class_);
  EXPECT_EQ(-1, tree->tag);
  ASSERT_EQ(2u, tree->next.size());
  EXPECT_EQ(6, tree->next[0].flags);
  EXPECT_EQ((std::set<int32_t>{315, 3309}), tree->next[1].wanted_properties);
  ASSERT_EQ(1u, tree->where.size());
  EXPECT_EQ(0, tree->where.front().prop->name);
  EXPECT_EQ(kEqual, tree->where.front().rel_op);

  auto more = add_to_list(pattern_list(make_pattern(1, 0), make_pattern(2, 0)), make_pattern(4, 0));
  auto root = add_next(make_pattern(13, 4), std::move(more));
  EXPECT_EQ(3u, root->next.size());
  root = add_next(std::move(root), std::unique_ptr<pattern_list_t>());
  EXPECT_EQ(3u, root->next.size());
}

TEST(PatternTest, StreamFormInFieldOrder) {
  pattern_t p;
  p.class_ = 5;
  p.flags = 2;
  p.wanted_properties = {1};
  EXPECT_EQ(
      "05000000"
      "02000000"
      "ffffffff"
      "00000000"
      "00000000"
      "00000000"
      "01000000"
      "01000000",
      hex_of(p));
  auto tree = report_tree();
  EXPECT_EQ(*tree, round_trip(*tree));
}

TEST(PatternTest, PrintForm) {
  auto p = make_pattern(5, std::set<int32_t>{2}, 0);
  EXPECT_EQ(
      "{\n"
      "  class_: 5\n"
      "  flags: 0\n"
      "  tag: -1\n"
      "  next: vector {\n"
      "  }\n"
      "  cond_next: vector {\n"
      "  }\n"
      "  where: list {\n"
      "  }\n"
      "  wanted_properties: set {\n"
      "    2\n"
      "  }\n"
      "}",
      printed(*p));
}

TEST(PatchTest, TreeRoundTripKeepsPropertiesAndChildren) {
  patch_t root;
  root.class_ = 3;
  root.flags = 6;
  root.tags = {-1, 4};
  root.id = id_t{0, 5};
  root.version = {3, 4};
  root.set_property(make_string_property(54, "Domain A"));
  root.properties[55];  // A null entry in the map stays null.
  patch_t child;
  child.class_ = 5;
  child.id = id_t{0, 5, 1};
  child.set_property(make_boolean_property(329, true));
  child.origin = origin_t{id_t{0, 5}, id_t{}, 1};
  root.children = {child, child};
  patch_t back = round_trip(root);
  EXPECT_EQ(root, back);
  EXPECT_FALSE(back.properties.at(55));
  EXPECT_EQ("true", back.children[1].property(329).text());
}

}  // namespace
}  // namespace tql
