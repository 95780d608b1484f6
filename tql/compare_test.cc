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
  EXPECT_EQ(rank_row(0), ops(prop<kind::kInt>(5), prop<kind::kInt>(5)));
  EXPECT_EQ(rank_row(2), ops(prop<kind::kInt>(6), prop<kind::kInt>(5)));
  EXPECT_EQ(rank_row(-2), ops(prop<kind::kInt>(-6), prop<kind::kInt>(5)));
  // Operators:   = > < >=<=!=~=!~
  EXPECT_EQ("10011010", rank_row(0));
  EXPECT_EQ("01010101", rank_row(2));
  EXPECT_EQ("00101110", rank_row(-1));
  EXPECT_EQ("00101101", rank_row(-2));
  try {
    prop<kind::kInt>(1).compare(13, prop<kind::kInt>(1));
    FAIL();
  } catch (const errors::tql_incomparable& e) {
    EXPECT_EQ("Unknown relative operator", e.text());
  }
  EXPECT_THROW(prop<kind::kInt>(1).compare(0, prop<kind::kInt>(1)), errors::tql_incomparable);
}

TEST(CompareTest, NullsRankBeforeValues) {
  auto null_s = prop<kind::kString>("", true);
  auto s = prop<kind::kString>("a");
  EXPECT_FALSE(null_s.compare(kEqual, s));
  EXPECT_TRUE(null_s.compare(kLess, s));
  EXPECT_TRUE(s.compare(kGreater, null_s));
  EXPECT_TRUE(null_s.compare(kEqual, prop<kind::kString>("other", true)));
  EXPECT_EQ(rank_row(-2), ops(prop<kind::kUint>(9, true), prop<kind::kUint>(0)));
}

TEST(CompareTest, StringsDifferingInCaseOnlyRankOne) {
  EXPECT_EQ(rank_row(-1), ops(prop<kind::kString>("ABC"), prop<kind::kString>("abc")));
  EXPECT_EQ(rank_row(1), ops(prop<kind::kString>("abc"), prop<kind::kString>("ABC")));
  EXPECT_TRUE(prop<kind::kString>("abc").compare(kEqualIgnoreCase, prop<kind::kString>("ABC")));
  EXPECT_FALSE(prop<kind::kString>("abc").compare(kEqual, prop<kind::kString>("ABC")));
  // "B" < "a" as bytes, but "b" > "a" ignoring case: the folded order wins.
  EXPECT_EQ(rank_row(2), ops(prop<kind::kString>("B"), prop<kind::kString>("a")));
}

TEST(CompareTest, StringContainsIgnoringCase) {
  EXPECT_TRUE(prop<kind::kString>("Disk C: Full")
                  .compare(kContainsIgnoreCase, prop<kind::kString>("c: f")));
  EXPECT_FALSE(
      prop<kind::kString>("Disk").compare(kContainsIgnoreCase, prop<kind::kString>("disks")));
  EXPECT_THROW(
      prop<kind::kString>("x", true).compare(kContainsIgnoreCase, prop<kind::kString>("x")),
      errors::tql_incomparable);
}

TEST(CompareTest, ObjectInObjectSet) {
  object_set_t ids{{id_t{0, 1}, {}}, {id_t{0, 2}, {}}};
  EXPECT_TRUE(
      prop<kind::kObject>({id_t{0, 2}, {}}).compare(kElementOf, prop<kind::kObjectSet>(ids)));
  EXPECT_FALSE(
      prop<kind::kObject>({id_t{0, 3}, {}}).compare(kElementOf, prop<kind::kObjectSet>(ids)));
  EXPECT_FALSE(
      prop<kind::kObject>({id_t{0, 2}, {}}).compare(kElementOf, prop<kind::kObjectSet>(ids, true)));
  EXPECT_EQ("Type mismatch, object_set != type of name", [] {
    try {
      prop<kind::kObject>({}).compare(kElementOf, prop<kind::kObject>({}));
    } catch (const errors::tql& e) {
      return e.text();
    }
    return std::string();
  }());
  EXPECT_EQ(rank_row(-2),
            ops(prop<kind::kObject>({id_t{0, 1}, {}}), prop<kind::kObject>({id_t{0, 1, 1}, {}})));
}

TEST(CompareTest, ObjectSetRelations) {
  auto a = prop<kind::kObjectSet>({{id_t{1}, {}}, {id_t{2}, {}}});
  auto ab = prop<kind::kObjectSet>({{id_t{1}, {}}, {id_t{2}, {}}, {id_t{3}, {}}});
  auto c = prop<kind::kObjectSet>({{id_t{9}, {}}});
  auto null_set = prop<kind::kObjectSet>({}, true);
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
  EXPECT_EQ(rank_row(0),
            ops(a, prop<kind::kObjectSet>({{id_t{2}, {}}, {id_t{1}, origin_t{{}, {}, 4}}})));
}

TEST(CompareTest, SequenceOrders) {
  // Blobs and string lists: lexicographic, the longer is greater.
  EXPECT_EQ(rank_row(2), ops(prop<kind::kBlob>("ab"), prop<kind::kBlob>("a")));
  EXPECT_EQ(rank_row(-2), ops(prop<kind::kBlob>("ab"), prop<kind::kBlob>("b")));
  EXPECT_EQ(rank_row(2), ops(prop<kind::kBlob>("\x80"), prop<kind::kBlob>("\x7f")));
  EXPECT_EQ(rank_row(-2),
            ops(prop<kind::kStringList>({"a", "b"}), prop<kind::kStringList>({"a", "c"})));
  EXPECT_EQ(rank_row(2), ops(prop<kind::kStringList>({"a", "b"}), prop<kind::kStringList>({"a"})));
  // GID lists and oids: the length first.
  EXPECT_EQ(rank_row(2), ops(prop<kind::kGidList>({1, 1}), prop<kind::kGidList>({9})));
  EXPECT_EQ(rank_row(-2), ops(prop<kind::kOid>({1, 1}), prop<kind::kOid>({1, 2})));
}

TEST(CompareTest, NumbersVersionsAndReals) {
  EXPECT_EQ(rank_row(-2), ops(prop<kind::kVersion>({1, 5}), prop<kind::kVersion>({2, 0})));
  EXPECT_EQ(rank_row(2), ops(prop<kind::kBoolean>(true), prop<kind::kBoolean>(false)));
  EXPECT_EQ(rank_row(2), ops(prop<kind::kBignum>(BigNum(1) + BigNum(0xffffffff)),
                             prop<kind::kBignum>(BigNum(3))));
  EXPECT_EQ(rank_row(-2), ops(prop<kind::kDate>(-1), prop<kind::kDate>(0)));
  EXPECT_EQ(rank_row(0), ops(prop<kind::kReal>(0.5), prop<kind::kReal>(0.5)));
  EXPECT_FALSE(prop<kind::kReal>(std::nan("")).compare(kEqual, prop<kind::kReal>(1.0)));
  EXPECT_FALSE(prop<kind::kReal>(1.0).compare(kEqual, prop<kind::kReal>(std::nan(""))));
}

TEST(CompareTest, EnumsCompareWithinOneEnumeration) {
  EXPECT_EQ(rank_row(-2), ops(prop<kind::kEnum>({7, 1}), prop<kind::kEnum>({7, 2})));
  EXPECT_EQ("Type mismatch, enum (7) != enum (8) of name",
            mismatch_text(prop<kind::kEnum>({7, 1}), prop<kind::kEnum>({8, 1})));
  EXPECT_EQ("Type mismatch, int != type of name",
            mismatch_text(prop<kind::kEnum>({7, 1}), prop<kind::kInt>(1)));
  EXPECT_EQ("Type mismatch, int != type of name",
            mismatch_text(prop<kind::kInt>(1), prop<kind::kEnum>({7, 1})));
}

TEST(CompareTest, MismatchTextsNameTheKindAndTheOtherProperty) {
  auto other = prop<kind::kString>("x");
  other.name = 54;
  EXPECT_EQ("Type mismatch, uint != type of longLabel", mismatch_text(prop<kind::kUint>(1), other));
  EXPECT_EQ("Type mismatch, GIDList != type of longLabel",
            mismatch_text(prop<kind::kOid>({}), other));
  EXPECT_EQ("Type mismatch, GID != type of longLabel", mismatch_text(prop<kind::kGid>(1), other));
  EXPECT_EQ("no exception", mismatch_text(other, prop<kind::kString>("y")));
  EXPECT_EQ("Type mismatch, string != type of name",
            mismatch_text(prop<kind::kString>("x"), prop<kind::kBlob>("x")));
  EXPECT_EQ("Type mismatch, action != type of name",
            mismatch_text(prop<kind::kAction>(1), prop<kind::kInt>(1)));
  EXPECT_EQ("Type mismatch, lob != type of name",
            mismatch_text(prop<kind::kLob>(""), prop<kind::kBlob>("")));
}

}  // namespace
}  // namespace tql
