#include "report/sort_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace report {
namespace {

int sign(int v) { return (v > 0) - (v < 0); }

TEST(NaturalCompare, EmptyStrings) {
  EXPECT_EQ(0, natural_compare("", ""));
  EXPECT_EQ(-1, sign(natural_compare("", "a")));
  EXPECT_EQ(1, sign(natural_compare("a", "")));
  EXPECT_EQ(-1, sign(natural_compare("", "0")));
}

TEST(NaturalCompare, DigitRunsCompareAsNumbers) {
  EXPECT_EQ(-1, sign(natural_compare("node2", "node10")));
  EXPECT_EQ(1, sign(natural_compare("node10", "node2")));
  EXPECT_EQ(-1, sign(natural_compare("a9b", "a10a")));
  EXPECT_EQ(-1, sign(natural_compare("x12y3", "x12y20")));
  EXPECT_EQ(0, natural_compare("x12y3", "x12y3"));
  // Runs of equal length compare digit by digit.
  EXPECT_EQ(-1, sign(natural_compare("v123", "v124")));
}

TEST(NaturalCompare, LeadingZerosCount) {
  EXPECT_EQ(1, sign(natural_compare("007", "8")));
  EXPECT_EQ(1, sign(natural_compare("01", "1")));
  EXPECT_EQ(-1, sign(natural_compare("09", "10")));
}

TEST(NaturalCompare, PrefixIsLess) {
  EXPECT_EQ(-1, sign(natural_compare("abc", "abcd")));
  EXPECT_EQ(1, sign(natural_compare("abc1", "abc")));
  EXPECT_EQ(-1, sign(natural_compare("a1", "a1b")));
}

TEST(NaturalCompare, OtherBytesCompareUnsigned) {
  EXPECT_EQ(-1, sign(natural_compare("a", "b")));
  EXPECT_EQ(-1, sign(natural_compare("B", "a")));
  // A byte above 127 is greater than any ASCII byte, a digit included.
  EXPECT_EQ(1, sign(natural_compare("\xe4", "z")));
  EXPECT_EQ(1, sign(natural_compare("\xe4", "5")));
  // A digit against a letter compares as bytes.
  EXPECT_EQ(-1, sign(natural_compare("a1", "ab")));
}

TEST(OrderBefore, MissingCountersComeFirst) {
  EXPECT_TRUE(order_before(std::nullopt, 0));
  EXPECT_TRUE(order_before(3, 7));
  EXPECT_FALSE(order_before(7, 3));
  EXPECT_FALSE(order_before(5, 5));
  EXPECT_FALSE(order_before(5, std::nullopt));
  EXPECT_FALSE(order_before(std::nullopt, std::nullopt));
}

TEST(OrderBefore, StableSortKeepsItemsWithoutCounter) {
  struct Item {
    std::optional<uint32_t> order;
    char tag;
  };
  std::vector<Item> items = {
      {9, 'a'}, {std::nullopt, 'b'}, {2, 'c'}, {std::nullopt, 'd'}, {5, 'e'}};
  std::stable_sort(items.begin(), items.end(),
                   [](const Item& x, const Item& y) { return order_before(x.order, y.order); });
  std::string tags;
  for (const Item& item : items) tags += item.tag;
  EXPECT_EQ("bdcea", tags);
}

std::string sorted_names(std::vector<FolderKey> keys) {
  std::sort(keys.begin(), keys.end(), folder_before);
  std::string out;
  for (const FolderKey& key : keys) out += std::to_string(key.folder_type) + ":" + key.name + " ";
  return out;
}

TEST(FolderBefore, TypeThenNaturalNameIgnoringCase) {
  EXPECT_EQ("1:alpha 1:Beta 1:gamma 2:Node2 2:node10 ",
            sorted_names({{2, "node10"}, {1, "gamma"}, {2, "Node2"}, {1, "Beta"}, {1, "alpha"}}));
}

TEST(FolderBefore, NamesThatDifferOnlyInCaseSortByExactName) {
  EXPECT_EQ("3:WEB 3:Web 3:web ", sorted_names({{3, "web"}, {3, "WEB"}, {3, "Web"}}));
  EXPECT_FALSE(folder_before({3, "web"}, {3, "web"}));
}

TEST(FolderBefore, OnlyAsciiLettersFold) {
  // Folded as in a Latin-1 locale, "\xc4" (A umlaut) would become "\xe4" and
  // "\xe4a" would come first; in the C locale the bytes decide.
  EXPECT_EQ(
      "1:\xc4"
      "b 1:\xe4"
      "a ",
      sorted_names({{1,
                     "\xe4"
                     "a"},
                    {1,
                     "\xc4"
                     "b"}}));
}

}  // namespace
}  // namespace report
