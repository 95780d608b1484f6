#include "tql/property.h"

#include <gtest/gtest.h>

#include <cmath>

#include "protocol/testing.h"

namespace tql {
namespace {

using protocol::testing::hex_of;
using protocol::testing::printed;
using protocol::testing::round_trip;

template <int32_t K>
property_ptr owned_prop(typename kind_traits<K>::value_type v, int32_t name = 51) {
  return property_ptr(make_property<K>(name, std::move(v)));
}

BigNum big(const std::vector<uint8_t>& bytes) { return BigNum::fromBytes(bytes); }

// One property of every kind, with a value that is not the default.
std::vector<property_ptr> one_of_each() {
  return {owned_prop<7>("a b"),
          owned_prop<8>({"x", "", "y"}),
          owned_prop<9>({{id_t{0, 1}, origin_t{id_t{3}, id_t{}, 2}}, {id_t{0, 4}, {}}}),
          owned_prop<10>({id_t{0, 5}, origin_t{id_t{1}, id_t{2}, 3}}),
          owned_prop<11>({7, 3}),
          owned_prop<12>(42),
          owned_prop<13>(1.25),
          owned_prop<14>(big({1, 2, 3, 4, 5})),
          owned_prop<15>(0x0a0b0c0d),
          owned_prop<16>({1, 0xffffffff}),
          owned_prop<17>(-5),
          owned_prop<18>(9),
          owned_prop<19>(-9),
          owned_prop<20>(4000000000u),
          owned_prop<21>(true),
          owned_prop<22>(std::string("\0\1", 2)),
          owned_prop<23>("lob"),
          owned_prop<24>({1, 3, 6}),
          owned_prop<25>({0x20005, 2})};
}

TEST(PropertyTest, ValueTextOfEveryKind) {
  std::vector<std::string> texts;
  for (const auto& p : one_of_each()) texts.push_back(p->text());
  EXPECT_EQ((std::vector<std::string>{"\"a b\"", "\"x\", \"\", \"y\"", "{\"0.1\", \"0.4\"}",
                                      "\"0.5\"", "\"7.1.3\"", "(null)", "1.250000", "21542142465",
                                      "0a:0b:0c:0d", "00:00:00:01, ff:ff:ff:ff", "-5", "9", "-9",
                                      "4000000000", "true", "BLOB", "LOB",
                                      "00:00:00:01, 00:00:00:03, 00:00:00:06", "enum(131077, 2)"}),
            texts);
}

TEST(PropertyTest, NullAndSpecialTexts) {
  auto s = owned_prop<7>("x");
  s->is_null = true;
  EXPECT_EQ("(null)", s->text());
  EXPECT_EQ("nan", owned_prop<13>(std::nan(""))->text());
  EXPECT_EQ("nan", owned_prop<13>(-std::nan(""))->text());
  EXPECT_EQ("inf", owned_prop<13>(INFINITY)->text());
  EXPECT_EQ("-inf", owned_prop<13>(-INFINITY)->text());
  EXPECT_EQ("false", owned_prop<21>(false)->text());
  EXPECT_EQ("0", owned_prop<14>(BigNum())->text());
}

TEST(PropertyTest, EveryKindSurvivesARoundTrip) {
  for (const auto& p : one_of_each()) {
    p->modifiers = 3;
    property_ptr back = round_trip(p);
    ASSERT_TRUE(back) << p->type();
    EXPECT_EQ(p->type(), back->type());
    EXPECT_TRUE(p == back) << "kind " << p->type();
  }
}

TEST(PropertyTest, NullPropertyKeepsItsValueThroughTheStream) {
  auto p = owned_prop<20>(17);
  p->is_null = true;
  EXPECT_EQ(
      "14000000"
      "33000000"
      "01000000"
      "00000000"
      "11000000",
      hex_of(p));
  property_ptr back = round_trip(p);
  EXPECT_TRUE(back->is_null);
  EXPECT_TRUE(p == back);
}

TEST(PropertyTest, BignumOfOneIsFourBytes) {
  EXPECT_EQ(
      "0e000000"
      "33000000"
      "00000000"
      "00000000"
      "0400000000000000"
      "01000000",
      hex_of(owned_prop<14>(BigNum(1))));
}

TEST(PropertyTest, KindOutsideTheFamilyReadsAsNullAfterFourBytes) {
  for (uint8_t kind : {0, 6, 26, 255}) {
    protocol::MemoryPipe pipe(8, 8, std::string{char(kind), 0, 0, 0, 'r', 'e', 's', 't'});
    protocol::ioprim io(pipe.in(), pipe.out());
    property_ptr p = owned_prop<7>("old");
    io >> p;
    EXPECT_FALSE(p) << int(kind);
    char rest[4];
    io.read_bytes(rest, 4);
    EXPECT_EQ("rest", std::string(rest, 4));
  }
  EXPECT_EQ("00000000", hex_of(property_ptr()));
}

TEST(PropertyTest, CopiesAreDeepAndEqualityLooksAtEverything) {
  property_ptr a = owned_prop<8>({"x"});
  property_ptr b = a;
  EXPECT_TRUE(a == b);
  static_cast<property_string_list_t&>(*b).value.push_back("y");
  EXPECT_EQ(1u, static_cast<property_string_list_t&>(*a).value.size());
  EXPECT_FALSE(a == b);
  property_ptr c = a;
  c->name = 52;
  EXPECT_FALSE(a == c);
  // Same value type, different kinds.
  EXPECT_FALSE(owned_prop<18>(1) == owned_prop<20>(1));
}

TEST(PropertyTest, MakersLeaveNullClear) {
  auto s = make_string_property(51, "n", 0);
  EXPECT_EQ(7, s->type());
  EXPECT_FALSE(s->is_null);
  auto o = make_object_property(0, kRootId);
  EXPECT_EQ("\"0.1\"", o->text());
  EXPECT_EQ("true", make_boolean_property(329, true)->text());
  EXPECT_EQ(nullptr, make_property(6));
  EXPECT_EQ(25, make_property(25)->type());
}

TEST(PropertyTest, PrintsAsARecord) {
  EXPECT_EQ("{\n  type: 19\n  name: 51\n  is_null: false\n  modifiers: 0\n  value: -9\n}",
            printed(*owned_prop<19>(-9)));
}

}  // namespace
}  // namespace tql
