#include <gtest/gtest.h>

#include <cmath>

#include "tql/errors.h"
#include "tql/property.h"

namespace tql {
namespace {

template <int32_t K>
property_kind_t<K> prop(typename kind_traits<K>::value_type v, bool null = false) {
  property_kind_t<K> p(51, std::move(v));
  p.is_null = null;
  return p;
}

// The results of operators 1 to 8, as a string of 0 and 1.
std::string ops(const property_t& a, const property_t& b) {
  std::string out;
  for (int32_t op = 1; op <= 8; ++op) out += a.compare(op, b) ? '1' : '0';
  return out;
}

// What operators 1 to 8 give for a rank, as ops() shows it.
std::string rank_row(int r) {
  std::string out;
  bool t[8] = {r == 0, r > 0, r < 0, r >= 0, r <= 0, r != 0, r >= -1 && r <= 1, r < -1 || r > 1};
  for (bool b : t) out += b ? '1' : '0';
  return out;
}

std::string mismatch_text(const property_t& a, const property_t& b) {
  try {
    a.compare(kEqual, b);
  } catch (const errors::tql_incomparable& e) {
    EXPECT_EQ(11, e.code());
    return e.text();
  }
  return "no exception";
}

TEST(CompareTest, TheOperatorTable) {
  EXPECT_EQ(rank_row(0), ops(prop<19>(5), prop<19>(5)));
  EXPECT_EQ(rank_row(2), ops(prop<19>(6), prop<19>(5)));
  EXPECT_EQ(rank_row(-2), ops(prop<19>(-6), prop<19>(5)));
  // Operators:   = > < >=<=!=~=!~
  EXPECT_EQ("10011010", rank_row(0));
  EXPECT_EQ("01010101", rank_row(2));
  EXPECT_EQ("00101110", rank_row(-1));
  EXPECT_EQ("00101101", rank_row(-2));
  try {
    prop<19>(1).compare(13, prop<19>(1));
    FAIL();
  } catch (const errors::tql_incomparable& e) {
    EXPECT_EQ("Unknown relative operator", e.text());
  }
  EXPECT_THROW(prop<19>(1).compare(0, prop<19>(1)), errors::tql_incomparable);
}

TEST(CompareTest, NullsRankBeforeValues) {
  auto null_s = prop<7>("", true);
  auto s = prop<7>("a");
  EXPECT_FALSE(null_s.compare(kEqual, s));
  EXPECT_TRUE(null_s.compare(kLess, s));
  EXPECT_TRUE(s.compare(kGreater, null_s));
  EXPECT_TRUE(null_s.compare(kEqual, prop<7>("other", true)));
  EXPECT_EQ(rank_row(-2), ops(prop<20>(9, true), prop<20>(0)));
}

TEST(CompareTest, StringsDifferingInCaseOnlyRankOne) {
  EXPECT_EQ(rank_row(-1), ops(prop<7>("ABC"), prop<7>("abc")));
  EXPECT_EQ(rank_row(1), ops(prop<7>("abc"), prop<7>("ABC")));
  EXPECT_TRUE(prop<7>("abc").compare(kEqualIgnoreCase, prop<7>("ABC")));
  EXPECT_FALSE(prop<7>("abc").compare(kEqual, prop<7>("ABC")));
  // "B" < "a" as bytes, but "b" > "a" ignoring case: the folded order wins.
  EXPECT_EQ(rank_row(2), ops(prop<7>("B"), prop<7>("a")));
}

TEST(CompareTest, StringContainsIgnoringCase) {
  EXPECT_TRUE(prop<7>("Disk C: Full").compare(kContainsIgnoreCase, prop<7>("c: f")));
  EXPECT_FALSE(prop<7>("Disk").compare(kContainsIgnoreCase, prop<7>("disks")));
  EXPECT_THROW(prop<7>("x", true).compare(kContainsIgnoreCase, prop<7>("x")),
               errors::tql_incomparable);
}

TEST(CompareTest, ObjectInObjectSet) {
  object_set_t ids{{id_t{0, 1}, {}}, {id_t{0, 2}, {}}};
  EXPECT_TRUE(prop<10>({id_t{0, 2}, {}}).compare(kElementOf, prop<9>(ids)));
  EXPECT_FALSE(prop<10>({id_t{0, 3}, {}}).compare(kElementOf, prop<9>(ids)));
  EXPECT_FALSE(prop<10>({id_t{0, 2}, {}}).compare(kElementOf, prop<9>(ids, true)));
  EXPECT_EQ("Type mismatch, object_set != type of name", [] {
    try {
      prop<10>({}).compare(kElementOf, prop<10>({}));
    } catch (const errors::tql& e) {
      return e.text();
    }
    return std::string();
  }());
  EXPECT_EQ(rank_row(-2), ops(prop<10>({id_t{0, 1}, {}}), prop<10>({id_t{0, 1, 1}, {}})));
}

TEST(CompareTest, ObjectSetRelations) {
  auto a = prop<9>({{id_t{1}, {}}, {id_t{2}, {}}});
  auto ab = prop<9>({{id_t{1}, {}}, {id_t{2}, {}}, {id_t{3}, {}}});
  auto c = prop<9>({{id_t{9}, {}}});
  auto null_set = prop<9>({}, true);
  EXPECT_TRUE(a.compare(kSubsetOf, ab));
  EXPECT_FALSE(ab.compare(kSubsetOf, a));
  EXPECT_TRUE(ab.compare(kSupersetOf, a));
  EXPECT_TRUE(a.compare(kIntersects, ab));
  EXPECT_FALSE(a.compare(kIntersects, c));
  EXPECT_TRUE(null_set.compare(kSubsetOf, a));
  EXPECT_FALSE(a.compare(kSubsetOf, null_set));
  EXPECT_TRUE(a.compare(kSupersetOf, null_set));
  EXPECT_FALSE(null_set.compare(kSupersetOf, a));
  EXPECT_FALSE(null_set.compare(kIntersects, null_set));
  // Other operators: equal sets rank 0, different ones 2 either way round.
  EXPECT_EQ(rank_row(2), ops(a, ab));
  EXPECT_EQ(rank_row(2), ops(ab, a));
  EXPECT_EQ(rank_row(0), ops(a, prop<9>({{id_t{2}, {}}, {id_t{1}, origin_t{{}, {}, 4}}})));
}

TEST(CompareTest, SequenceOrders) {
  // Blobs and string lists: lexicographic, the longer is greater.
  EXPECT_EQ(rank_row(2), ops(prop<22>("ab"), prop<22>("a")));
  EXPECT_EQ(rank_row(-2), ops(prop<22>("ab"), prop<22>("b")));
  EXPECT_EQ(rank_row(2), ops(prop<22>("\x80"), prop<22>("\x7f")));
  EXPECT_EQ(rank_row(-2), ops(prop<8>({"a", "b"}), prop<8>({"a", "c"})));
  EXPECT_EQ(rank_row(2), ops(prop<8>({"a", "b"}), prop<8>({"a"})));
  // GID lists and oids: the length first.
  EXPECT_EQ(rank_row(2), ops(prop<16>({1, 1}), prop<16>({9})));
  EXPECT_EQ(rank_row(-2), ops(prop<24>({1, 1}), prop<24>({1, 2})));
}

TEST(CompareTest, NumbersVersionsAndReals) {
  EXPECT_EQ(rank_row(-2), ops(prop<11>({1, 5}), prop<11>({2, 0})));
  EXPECT_EQ(rank_row(2), ops(prop<21>(true), prop<21>(false)));
  EXPECT_EQ(rank_row(2), ops(prop<14>(BigNum(1) + BigNum(0xffffffff)), prop<14>(BigNum(3))));
  EXPECT_EQ(rank_row(-2), ops(prop<17>(-1), prop<17>(0)));
  EXPECT_EQ(rank_row(0), ops(prop<13>(0.5), prop<13>(0.5)));
  EXPECT_FALSE(prop<13>(std::nan("")).compare(kEqual, prop<13>(1.0)));
  EXPECT_FALSE(prop<13>(1.0).compare(kEqual, prop<13>(std::nan(""))));
}

TEST(CompareTest, EnumsCompareWithinOneEnumeration) {
  EXPECT_EQ(rank_row(-2), ops(prop<25>({7, 1}), prop<25>({7, 2})));
  EXPECT_EQ("Type mismatch, enum (7) != enum (8) of name",
            mismatch_text(prop<25>({7, 1}), prop<25>({8, 1})));
  EXPECT_EQ("Type mismatch, int != type of name", mismatch_text(prop<25>({7, 1}), prop<19>(1)));
  EXPECT_EQ("Type mismatch, int != type of name", mismatch_text(prop<19>(1), prop<25>({7, 1})));
}

TEST(CompareTest, MismatchTextsNameTheKindAndTheOtherProperty) {
  auto other = prop<7>("x");
  other.name = 54;
  EXPECT_EQ("Type mismatch, uint != type of longLabel", mismatch_text(prop<20>(1), other));
  EXPECT_EQ("Type mismatch, GIDList != type of longLabel", mismatch_text(prop<24>({}), other));
  EXPECT_EQ("Type mismatch, GID != type of longLabel", mismatch_text(prop<15>(1), other));
  EXPECT_EQ("no exception", mismatch_text(other, prop<7>("y")));
  EXPECT_EQ("Type mismatch, string != type of name", mismatch_text(prop<7>("x"), prop<22>("x")));
  EXPECT_EQ("Type mismatch, action != type of name", mismatch_text(prop<12>(1), prop<19>(1)));
  EXPECT_EQ("Type mismatch, lob != type of name", mismatch_text(prop<23>(""), prop<22>("")));
}

}  // namespace
}  // namespace tql
