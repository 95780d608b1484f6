// The catalogue's messages: every one written and read back in both
// generations, comparisons, bounds, choices and missing pointers.
#include <gtest/gtest.h>

#include <string>

#include "protocol/ber_test_util.h"
#include "protocol/catalogue.h"
#include "protocol/catalogue_samples.h"

namespace protocol {
namespace {

using testing::encode;
using testing::encode_bytes;
using testing::fault;

std::unique_ptr<BerConstructed> read_message(const std::vector<uint8_t>& bytes, bool legacy) {
  BerReader reader(bytes.data(), bytes.size(), legacy);
  std::unique_ptr<BerConstructed> message = reader.read_message(guiProtocol());
  EXPECT_TRUE(reader.at_end());
  return message;
}

TEST(Catalogue, EveryMessageRoundTripsInBothGenerations) {
  int checked = 0;
  for (uint32_t tag : samples::message_tags()) {
    for (int seed = 0; seed < samples::kSeeds; ++seed) {
      std::unique_ptr<BerConstructed> message = samples::make_message(tag, seed);
      ASSERT_TRUE(message) << tag;
      for (bool legacy : {false, true}) {
        SCOPED_TRACE(std::string(message_name(tag)) + " seed " + std::to_string(seed) +
                     (legacy ? " legacy" : " current"));
        std::vector<uint8_t> bytes = encode_bytes(*message, legacy);
        std::unique_ptr<BerConstructed> back = read_message(bytes, legacy);
        EXPECT_TRUE(*back == *message);
        EXPECT_EQ(bytes, encode_bytes(*back, legacy));
        ++checked;
      }
    }
  }
  EXPECT_EQ(32 * samples::kSeeds * 2, checked);
}

TEST(Catalogue, GenerationsAreNotInterchangeable) {
  auto message = samples::make_message(BE_NEWSESSION_CURRENT, 1);
  std::vector<uint8_t> legacy = encode_bytes(*message, true);
  EXPECT_NE(legacy, encode_bytes(*message, false));
  EXPECT_EQ("Tag mismatch, got 176 expected BE_STRING_CURRENT",
            fault([&] { read_message(legacy, false); }));
  Request request;
  request.data = Owned<RequestBody>(std::make_unique<ForgetReq>());
  std::vector<uint8_t> current = encode_bytes(request, false);
  EXPECT_EQ("74 80 02 01 00 A5 80 04 00 00 00 00 00", testing::hex(current));
  EXPECT_EQ("Tag mismatch, got 45 expected RequestBody",
            fault([&] { read_message(current, true); }));
}

TEST(Catalogue, CloneIsDeepAndEqual) {
  auto message = samples::make_message(BE_GRIDPROPERTYLIST_CURRENT, 0);
  std::unique_ptr<BerValue> copy = message->clone();
  EXPECT_TRUE(*copy == *message);
  auto& list = static_cast<GridPropertyList&>(*message);
  ASSERT_FALSE(list.properties.empty());
  list.properties.front()->name += "!";
  EXPECT_FALSE(*copy == *message);
}

TEST(Catalogue, ComparisonIsFieldByFieldInOrder) {
  Rule a, b;
  a.text = "a";
  b.text = "b";
  a.status = 9;
  EXPECT_TRUE(a < b);  // The first field decides.
  EXPECT_TRUE(b > a);
  b.text = "a";
  EXPECT_TRUE(a > b);
  b.status = 9;
  EXPECT_TRUE(a == b);
  b.last = "x";
  EXPECT_TRUE(a < b);
  // Other classes are never equal, even with the same tag and content.
  EXPECT_FALSE(ListOfRule() == ListOfCheck());
  EXPECT_FALSE(CheckStatus(1) == Decision(1));
  EXPECT_TRUE(CheckStatus(1) == CheckStatus(1));
  // Alternatives of a choice order by their number.
  EXPECT_TRUE(StringProp() < NullProp());
}

TEST(Catalogue, ListsHoldTheirOrderAndAcceptAnyCount) {
  ListOfReal reals;
  EXPECT_TRUE(reals.open_ended());
  EXPECT_EQ(0u, reals.required_elements());
  reals.values() = {2.0, 1.0};
  EXPECT_EQ(
      "30 80 09 0D 00 32 2E 30 30 30 30 30 30 65 2B 30 30 09 0D 00 31 2E 30 30 30 30 30 30 65 2B "
      "30 30 00 00",
      encode(reals));
  ListOfReal back;
  testing::decode(back, encode_bytes(reals));
  EXPECT_EQ((std::list<double>{2.0, 1.0}), back.values());
}

TEST(Catalogue, BoundsAreRefusedInWriteAndRead) {
  GetDataReq request;
  request.resolution = 2001;
  EXPECT_EQ("data out of range in BerIntegerTemplate<int32_t>::write 0 <= 2001 <= 2000",
            fault([&] { encode(request); }));
  request.resolution = 2000;
  request.series = std::string(17, 's');
  EXPECT_EQ("String exceeds allowed length 17 > 16", fault([&] { encode(request); }));
  ServerTimeResp time;
  time.microseconds = 999999;
  std::vector<uint8_t> bytes = encode_bytes(time);
  bytes[bytes.size() - 5] = 0x10;  // 999999 = 0F 42 3F becomes 10 42 3F.
  EXPECT_EQ("data out of range in BerIntegerTemplate<int32_t>::readDone 0 <= 1065535 <= 999999",
            fault([&] { read_message(bytes, false); }));
  BlobProp blob;
  blob.value = std::string(2048, 'b');
  std::vector<uint8_t> blob_bytes = encode_bytes(blob);
  BlobProp in;
  testing::decode(in, blob_bytes);
  EXPECT_TRUE(in == blob);
  blob.value += 'b';
  EXPECT_EQ("String exceeds allowed length 2049 > 2048", fault([&] { encode(blob); }));
}

TEST(Catalogue, MissingPointersAreFatalInWrite) {
  EXPECT_DEATH(encode(Request()), "this->data is NULL during BER write");
  EXPECT_DEATH(encode(SelectReq()), "this->pattern is NULL during BER write");
  EXPECT_DEATH(encode(Property()), "this->prop is NULL during BER write");
  ListOfObject objects;
  objects.values().emplace_back();
  EXPECT_DEATH(encode(objects), "\\(\\*it\\) is NULL during BER write");
}

TEST(Catalogue, TagsOfTheKinds) {
  EXPECT_EQ(129u, Rule().tag(false));
  EXPECT_EQ(1u, Rule().tag(true));
  EXPECT_EQ(137u, SetOfString32().tag(false));
  EXPECT_EQ(9u, SetOfString32().tag(true));
  EXPECT_EQ(BE_ENUMERATED, Severity().tag(true));
  EXPECT_EQ(choice_tag(12, false), LobProp().tag(false));
  EXPECT_EQ(choice_tag(12, true), LobProp().tag(true));
  EXPECT_EQ(message_tag(33), HWScanResp().tag(false));
  EXPECT_EQ(message_tag(33), HWScanResp().tag(true));
}

}  // namespace
}  // namespace protocol
