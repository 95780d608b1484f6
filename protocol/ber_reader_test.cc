// The reader loop: element order, required and unknown elements, definite and
// indefinite lengths, and damaged input.
#include <gtest/gtest.h>

#include <string>

#include "protocol/ber_test_util.h"
#include "protocol/ber_tree.h"
#include "protocol/catalogue.h"

namespace protocol {
namespace {

using testing::decode;
using testing::encode;
using testing::encode_bytes;
using testing::fault;
using testing::unhex;

Rule sample_rule() {
  Rule rule;
  rule.text = "ab";
  rule.status = 2;
  rule.decision = -1;
  rule.last = "z";
  return rule;
}

// The Rule above with the elements given in between its frame.
std::string rule_with(const std::string& elements) { return "30 80 " + elements + " 00 00"; }
const char kRuleElements[] = "04 02 61 62  0A 01 02  0A 01 FF  04 01 7A";

TEST(BerReader, RuleIsWrittenWithTheIndefiniteLength) {
  EXPECT_EQ(unhex(rule_with(kRuleElements)), encode_bytes(sample_rule()));
  EXPECT_EQ(unhex("20 80 16 02 61 62 0A 01 02 0A 01 FF 16 01 7A 00 00"),
            encode_bytes(sample_rule(), true));
}

TEST(BerReader, DefiniteLengthsAreReadToo) {
  Rule rule;
  decode(rule, "30 0D " + std::string(kRuleElements));
  EXPECT_TRUE(rule == sample_rule());
}

TEST(BerReader, UnknownTrailingElementsAreSkipped) {
  Rule rule;
  decode(rule, rule_with(std::string(kRuleElements) + " 02 01 05"));
  EXPECT_TRUE(rule == sample_rule());
  EXPECT_EQ(5u, rule.elements_seen());
  // A constructed one, with elements of its own and a nested indefinite one.
  Rule nested;
  decode(nested, rule_with(std::string(kRuleElements) + " A7 80 04 01 41 30 80 00 00 00 00 05 00"));
  EXPECT_TRUE(nested == sample_rule());
  EXPECT_EQ(encode(sample_rule()), encode(nested));
}

TEST(BerReader, RequiredElements) {
  EXPECT_EQ(3u, Rule().required_elements());
  EXPECT_FALSE(Rule().open_ended());
  Rule three;
  decode(three, rule_with("04 02 61 62 0A 01 02 0A 01 FF"));
  EXPECT_EQ("", three.last);
  Rule two;
  EXPECT_EQ("Too few elements, got 2 required 3",
            fault([&] { decode(two, rule_with("04 00 0A 01 02")); }));
  ServerNamePort empty;
  EXPECT_EQ("Too few elements, got 0 required 2", fault([&] { decode(empty, "30 80 00 00"); }));
}

TEST(BerReader, TagMismatchNamesTheExpectedTag) {
  Rule rule;
  EXPECT_EQ("Tag mismatch, got 16 expected BE_STRING_CURRENT",
            fault([&] { decode(rule, rule_with("02 01 00")); }));
  EXPECT_EQ("Tag mismatch, got 32 expected BE_STRING_LEGACY",
            fault([&] { decode(rule, "20 80 04 00 00 00", true); }));
  EXPECT_EQ("Tag mismatch, got 16 expected BE_ENUMERATED",
            fault([&] { decode(rule, rule_with("04 00 02 01 00")); }));
  EXPECT_EQ("Tag mismatch, got 1 expected BE_RULE_CURRENT",
            fault([&] { decode(rule, "20 80 00 00"); }));
  ListOfRule rules;
  EXPECT_EQ("Tag mismatch, got 1 expected BE_RULE_CURRENT",
            fault([&] { decode(rules, "30 80 20 80 00 00 00 00"); }));
}

TEST(BerReader, DamagedFramesAreRefused) {
  Rule rule;
  EXPECT_EQ("Unexpected end of BER data", fault([&] { decode(rule, "30 80 04 02 61"); }));
  EXPECT_EQ("Unexpected end of BER data", fault([&] { decode(rule, "30 80 04 01 61"); }));
  EXPECT_EQ("Unexpected end of BER data", fault([&] { decode(rule, "30 20"); }));
  EXPECT_EQ("Length exceeds the enclosing value",
            fault([&] { decode(rule, "30 03 04 05 61 62 63 64 65"); }));
  EXPECT_EQ("Indefinite length of a primitive value",
            fault([&] { decode(rule, rule_with("04 80 00 00")); }));
  EXPECT_EQ("Bad length encoding", fault([&] { decode(rule, "30 85 00 00 00 00 01"); }));
  EXPECT_EQ("Tag mismatch, got 33 expected BE_STRING_CURRENT",
            fault([&] { decode(rule, rule_with("24 80 00 00")); }));
  // A definite-length value whose last element runs past its end.
  EXPECT_EQ("Length exceeds the enclosing value",
            fault([&] { decode(rule, "30 03 04 02 61 62 00 00"); }));
}

TEST(BerReader, EveryTruncationIsRefused) {
  Object object;
  object.class_name = "Node";
  object.properties.emplace_back(std::make_unique<Property>());
  object.properties.back()->prop = Owned<PropertyValue>(std::make_unique<StringProp>());
  std::vector<uint8_t> bytes = encode_bytes(object);
  for (size_t n = 0; n < bytes.size(); ++n) {
    Object in;
    std::vector<uint8_t> prefix(bytes.begin(), bytes.begin() + n);
    EXPECT_NE("no error", fault([&] { decode(in, prefix); })) << n;
  }
  Object in;
  decode(in, bytes);
  EXPECT_TRUE(in == object);
}

TEST(BerReader, NestingIsBounded) {
  std::string deep;
  for (int i = 0; i < 100; ++i) deep += "30 80 ";
  for (int i = 0; i < 100; ++i) deep += "00 00 ";
  std::vector<uint8_t> bytes = unhex("30 80 04 00 0A 00 0A 00 04 00 " + deep + "00 00");
  Rule rule;
  EXPECT_EQ("BER nesting too deep", fault([&] { decode(rule, bytes); }));
}

TEST(BerReader, MessagesByTopLevelTag) {
  std::vector<uint8_t> bytes = encode_bytes(NegotiateNack());
  EXPECT_EQ("63 80 04 00 00 00", testing::hex(bytes));
  BerReader reader(bytes.data(), bytes.size(), false);
  std::unique_ptr<BerConstructed> message = reader.read_message(guiProtocol());
  EXPECT_TRUE(dynamic_cast<NegotiateNack*>(message.get()) != nullptr);
  EXPECT_TRUE(reader.at_end());
  std::vector<uint8_t> unknown = unhex("6E 80 00 00");  // Number 14 is free.
  BerReader bad(unknown.data(), unknown.size(), false);
  EXPECT_EQ("Unknown tag 115", fault([&] { bad.read_message(guiProtocol()); }));
  EXPECT_STREQ("NegotiateNack", message_name(message_tag(3)));
  EXPECT_EQ(nullptr, message_name(message_tag(14)));
}

TEST(BerReader, SetsAreOrderedAndKeepEachValueOnce) {
  SetOfString32 set;
  decode(set, "31 80 04 01 62 04 01 61 04 01 62 00 00");
  EXPECT_EQ((std::set<std::string>{"a", "b"}), set.values());
  EXPECT_EQ("31 80 04 01 61 04 01 62 00 00", encode(set));
  EXPECT_EQ("String exceeds allowed length 33 > 32",
            fault([&] { decode(set, "31 80 04 21 " + std::string(66, '0') + " 00 00"); }));
}

TEST(BerReader, UnsignedOrNull) {
  PathPattern pattern;
  pattern.limit = 7;
  std::vector<uint8_t> with_limit = encode_bytes(pattern);
  pattern.limit.reset();
  std::vector<uint8_t> with_null = encode_bytes(pattern);
  PathPattern in;
  decode(in, with_limit);
  EXPECT_EQ(std::optional<uint32_t>(7), in.limit);
  decode(in, with_null);
  EXPECT_FALSE(in.limit.has_value());
  EXPECT_EQ("Tag mismatch, got 8 expected BE_INTEGER or BE_NULL",
            fault([&] { decode(in, "30 80 04 00 02 01 00 01 01 00 00 00"); }));
}

TEST(BerTree, DumpShowsTagsAndContent) {
  std::vector<uint8_t> bytes = encode_bytes(sample_rule());
  bytes.push_back(0x99);  // Whatever follows the value is not read.
  size_t used = 0;
  EXPECT_EQ(
      "[UNIVERSAL 16] BE_SEQ_CURRENT {\n"
      "  [UNIVERSAL 4] BE_STRING_CURRENT: 61 62 \"ab\"\n"
      "  [UNIVERSAL 10] BE_ENUMERATED: 02\n"
      "  [UNIVERSAL 10] BE_ENUMERATED: FF\n"
      "  [UNIVERSAL 4] BE_STRING_CURRENT: 7A \"z\"\n"
      "}\n",
      dump_ber(bytes.data(), bytes.size(), false, &used));
  EXPECT_EQ(bytes.size() - 1, used);
  std::vector<uint8_t> legacy = unhex("63 80 16 00 05 00 00 00");
  EXPECT_EQ(
      "[APPLICATION 3] {\n"
      "  [UNIVERSAL 22] BE_STRING_LEGACY:\n"
      "  [UNIVERSAL 5] BE_NULL:\n"
      "}\n",
      dump_ber(legacy.data(), legacy.size(), true, nullptr));
}

}  // namespace
}  // namespace protocol
