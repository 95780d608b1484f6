#include "tql/decode.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tql/errors.h"
#include "tql/patch.h"

namespace tql {
namespace {

template <int32_t K>
property_kind_t<K> long_label(typename kind_traits<K>::value_type v, bool null = false) {
  property_kind_t<K> p(54, std::move(v));  // 54: longLabel
  p.is_null = null;
  return p;
}

// Runs `f`, which must raise errors::tql; returns "code: text".
template <class F>
std::string failure(F f) {
  try {
    f();
  } catch (const errors::tql& e) {
    return std::to_string(e.code()) + ": " + e.text();
  }
  return "no exception";
}

TEST(DecodeTest, TypedDecodersTakeTheirKind) {
  std::string s;
  decode_string(long_label<kind::kString>("v"), s);
  EXPECT_EQ("v", s);
  id_t id;
  decode_object(long_label<kind::kObject>({id_t{0, 7}, {}}), id);
  EXPECT_EQ((id_t{0, 7}), id);
  object_set_t set;
  decode_object_set(long_label<kind::kObjectSet>({{id_t{1}, {}}}), set);
  EXPECT_EQ(1u, set.size());
  double d = 0;
  decode_real(long_label<kind::kReal>(2.5), d);
  EXPECT_EQ(2.5, d);
  int64_t t = 0;
  decode_date(long_label<kind::kDate>(1700000000), t);
  EXPECT_EQ(1700000000, t);
  uint32_t u = 0;
  decode_uint(long_label<kind::kUint>(8), u);
  EXPECT_EQ(8u, u);
  bool b = false;
  decode_boolean(long_label<kind::kBoolean>(true), b);
  EXPECT_TRUE(b);
  std::string blob;
  decode_blob(long_label<kind::kBlob>("\x01"), blob);
  EXPECT_EQ("\x01", blob);
}

TEST(DecodeTest, NullAndMismatchTextsAndOutputUnchanged) {
  std::string s = "kept";
  EXPECT_EQ("9: Null given for property_string_t: longLabel",
            failure([&] { decode_string(long_label<kind::kString>("x", true), s); }));
  EXPECT_EQ("9: Type mismatch for property_string_t: longLabel",
            failure([&] { decode_string(long_label<kind::kInt>(1), s); }));
  EXPECT_EQ("kept", s);
  uint32_t u = 3;
  EXPECT_EQ("9: Type mismatch for property_uint_t: longLabel",
            failure([&] { decode_uint(long_label<kind::kIndex>(1), u); }));
  EXPECT_EQ(3u, u);
  bool b = false;
  EXPECT_EQ("9: Null given for property_boolean_t: longLabel",
            failure([&] { decode_boolean(long_label<kind::kBoolean>(true, true), b); }));
  std::string blob;
  EXPECT_EQ("9: Type mismatch for property_blob_t: longLabel",
            failure([&] { decode_blob(long_label<kind::kLob>("lob"), blob); }));
}

TEST(DecodeTest, ScalarTakesUintIntAndReal) {
  double d = 0;
  decode_scalar(long_label<kind::kUint>(4000000000u), d);
  EXPECT_EQ(4e9, d);
  decode_scalar(long_label<kind::kInt>(-3), d);
  EXPECT_EQ(-3, d);
  decode_scalar(long_label<kind::kReal>(0.25), d);
  EXPECT_EQ(0.25, d);
  EXPECT_EQ("9: Null given for decode scalar property: longLabel",
            failure([&] { decode_scalar(long_label<kind::kReal>(1, true), d); }));
  EXPECT_EQ("9: Type mismatch for property_uint_t, property_int_t or property_real_t: longLabel",
            failure([&] { decode_scalar(long_label<kind::kIndex>(1), d); }));
  EXPECT_EQ(0.25, d);
}

TEST(DecodeTest, EnumComparesTheLow17Bits) {
  uint32_t v = 0;
  decode_enum(long_label<kind::kEnum>({0x20005, 3}), 5, v);
  EXPECT_EQ(3u, v);
  EXPECT_EQ("9: Type mismatch for property_t: longLabel [exp:6,actual:5", failure([&] {
              decode_enum(long_label<kind::kEnum>({5, 3}), 6, v);
            }));
  EXPECT_EQ("9: Type mismatch for property_t: longLabel [exp:6,actual: non-enum",
            failure([&] { decode_enum(long_label<kind::kUint>(1), 6, v); }));
  EXPECT_EQ("9: Null given for property_t: longLabel", failure([&] {
              decode_enum(long_label<kind::kEnum>({6, 1}, true), 6, v);
            }));
}

TEST(DecodeTest, PercentageFallsBackToAShareOfTheRange) {
  auto value = long_label<kind::kInt>(42);
  auto pct = long_label<kind::kReal>(25);
  EXPECT_EQ(42, decode_percentage(&value, &pct, 0, 200));
  auto null_value = long_label<kind::kInt>(0, true);
  EXPECT_EQ(60, decode_percentage(&null_value, &pct, 10, 210));
  EXPECT_EQ(60, decode_percentage(nullptr, &pct, 10, 210));
  EXPECT_TRUE(std::isnan(decode_percentage(nullptr, nullptr, 0, 1)));
  auto null_pct = long_label<kind::kReal>(1, true);
  EXPECT_TRUE(std::isnan(decode_percentage(&null_value, &null_pct, 0, 1)));
  auto wrong = long_label<kind::kInt>(25);
  EXPECT_EQ("9: Type mismatch for decoding double: longLabel",
            failure([&] { decode_percentage(nullptr, &wrong, 0, 1); }));
}

TEST(DecodeTest, StringOrText) {
  std::string s;
  decode_string_or_text(long_label<kind::kString>("plain"), s);
  EXPECT_EQ("plain", s);
  decode_string_or_text(long_label<kind::kInt>(-4), s);
  EXPECT_EQ("-4", s);
  decode_string_or_text(long_label<kind::kString>("x", true), s);
  EXPECT_EQ("null", s);
  EXPECT_EQ("9: Type mismatch for decoding to string: longLabel",
            failure([&] { decode_string_or_text(long_label<kind::kBlob>("b"), s); }));
}

TEST(PatchTest, PropertyAccess) {
  patch_t p;
  p.class_ = 5;
  p.set_property(make_string_property(51, "weekly"));
  ASSERT_NE(nullptr, p.find_property(51));
  EXPECT_EQ("\"weekly\"", p.property(51).text());
  EXPECT_EQ(nullptr, p.find_property(54));
  EXPECT_EQ("6: Property longLabel not found in class Report", failure([&] { p.property(54); }));
}

TEST(PatchTest, SetPropertyIsPresentAndNotNull) {
  patch_t p;
  p.set_property(make_string_property(51, "weekly"));
  auto null_label = make_string_property(54, "");
  null_label->is_null = true;
  p.set_property(std::move(null_label));
  EXPECT_EQ(p.find_property(51), p.find_set_property(51));
  ASSERT_NE(nullptr, p.find_property(54));
  EXPECT_EQ(nullptr, p.find_set_property(54));
  EXPECT_EQ(nullptr, p.find_set_property(53));
}

TEST(ErrorsTest, CodeTextsAndGivenTexts) {
  EXPECT_EQ("Someone else has updated the object", errors::tql(3).text());
  EXPECT_EQ("Unknown error", errors::tql(13).text());
  EXPECT_EQ("Unknown error", errors::tql(16).text());
  EXPECT_EQ("Access denied", errors::tql(15).text());
  EXPECT_EQ("No error", std::string(errors::tql::code_text(0)));
  EXPECT_EQ("own words", errors::tql(2, "own words").text());
  EXPECT_EQ(11, errors::tql_incomparable("x").code());
}

TEST(ErrorsDeathTest, CodeZeroIsNoError) {
  // Constructing it is what dies; nothing is thrown.
  EXPECT_DEATH(errors::tql(0),  // NOLINT(bugprone-throw-keyword-missing)
               "errors::tql constructed with code ERR_SUCCESS");
}

}  // namespace
}  // namespace tql
