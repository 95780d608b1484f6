#include "tql/id.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "protocol/testing.h"

namespace tql {
namespace {

using protocol::testing::hex_of;
using protocol::testing::printed;
using protocol::testing::round_trip;

TEST(IdTest, HoldsAtMostThreeComponents) {
  id_t id{1, 2, 3};
  EXPECT_EQ("1.2.3", id.text());
  try {
    id.push_back(4);
    FAIL() << "a fourth component was accepted";
  } catch (const error::ERange& e) {
    EXPECT_EQ("small vector reference overflow 3 >= 3", e.text());
  }
  EXPECT_THROW((id_t{1, 2, 3, 4}), error::ERange);
}

TEST(IdTest, AccessPastTheCountRaises) {
  id_t id{7};
  EXPECT_EQ(7u, id[0]);
  try {
    (void)id[1];
    FAIL() << "access past the count";
  } catch (const error::ERange& e) {
    EXPECT_EQ("small vector reference overflow 1 >= 3", e.text());
  }
}

TEST(IdTest, TextAndOrder) {
  EXPECT_EQ("", id_t{}.text());
  EXPECT_EQ("0.1", kRootId.text());
  EXPECT_LT((id_t{0}), (id_t{0, 1}));
  EXPECT_LT((id_t{0, 1, 9}), (id_t{0, 2}));
  EXPECT_LT((id_t{1}), (id_t{0xffffffff}));
  EXPECT_EQ((id_t{0, 2}), kId02);
}

TEST(IdTest, StreamAndPrintForms) {
  EXPECT_EQ(
      "02000000"
      "00000000"
      "01000000",
      hex_of(kRootId));
  EXPECT_EQ((id_t{4, 5, 6}), round_trip(id_t{4, 5, 6}));
  EXPECT_EQ(id_t{}, round_trip(id_t{}));
  EXPECT_EQ("small_vector<3> {\n  0\n  1\n}", printed(kRootId));
}

TEST(IdTest, FourComponentsInTheStreamAreAParseError) {
  protocol::MemoryPipe pipe(8, 8, std::string("\x04\0\0\0", 4) + std::string(16, '\0'));
  protocol::ioprim io(pipe.in(), pipe.out());
  id_t id;
  EXPECT_THROW(io >> id, error::EParseError);
}

TEST(VersionTest, TextOrderAndStream) {
  EXPECT_EQ("7.1.3", (version_t{7, 3}.text()));
  EXPECT_EQ((version_t{0, 0}), version_t{});
  EXPECT_LT((version_t{1, 9}), (version_t{2, 0}));
  EXPECT_LT((version_t{2, 0}), (version_t{2, 1}));
  // The order is that of the wrapping difference.
  EXPECT_LT((version_t{INT64_MAX, 0}), (version_t{INT64_MIN, 0}));
  EXPECT_EQ(
      "0700000000000000"
      "fdffffffffffffff",
      hex_of(version_t{7, -3}));
  EXPECT_EQ((version_t{7, -3}), round_trip(version_t{7, -3}));
}

TEST(OriginTest, StreamsItsThreeFieldsInOrder) {
  origin_t o{id_t{1}, id_t{2, 3}, 5};
  EXPECT_EQ(
      "01000000"
      "01000000"
      "02000000"
      "02000000"
      "03000000"
      "05000000",
      hex_of(o));
  EXPECT_EQ(o, round_trip(o));
}

}  // namespace
}  // namespace tql
