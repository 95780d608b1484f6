#include "io/block_chain.h"

#include <gtest/gtest.h>

#include <vector>

#include "io/sibling_signal.h"

namespace io {
namespace {

// A pool of 4096 bytes with one area of 256 bytes at offset 1024.
class BlockChainTest : public testing::Test {
 protected:
  BlockChainTest() : memory_(4096 / 8), chain_(base(), 4096, 1024, 256) { chain_.init(); }
  uint8_t* base() { return reinterpret_cast<uint8_t*>(memory_.data()); }

  // The chain as text: "offset:used/size" per block, "|" between blocks.
  std::string chain() {
    std::string out;
    for (uint64_t at = chain_.area_start(); at < chain_.area_end(); at = chain_.next_offset(at)) {
      if (!out.empty()) out += "|";
      out += std::to_string(at) + (chain_.used(at) ? ":u/" : ":f/") +
             std::to_string(chain_.size_at(at));
    }
    return out;
  }

  std::vector<uint64_t> memory_;
  BlockChain chain_;
};

TEST_F(BlockChainTest, InitLaysOneFreeBlock) {
  EXPECT_EQ("1024:f/240", chain());
  EXPECT_EQ(1024u, chain_.block_off());
  EXPECT_EQ(240u, chain_.room());
}

TEST_F(BlockChainTest, CommitSplitsWhenSixteenOrMoreBytesRemain) {
  EXPECT_EQ(1024u, chain_.commit(10));  // 16 + 16 (10 rounded up)
  EXPECT_EQ("1024:u/10|1056:f/208", chain());
  EXPECT_EQ(1056u, chain_.block_off());
  EXPECT_EQ(1024u, chain_.prev_offset(1056));
}

TEST_F(BlockChainTest, CommitLeavingEightBytesTakesBlockWithPadding) {
  // 240 - 232 = 8 bytes left: no room for a header, so the block is taken whole.
  chain_.commit(232);
  EXPECT_EQ("1024:u/232", chain());
  EXPECT_EQ(1280u, chain_.next_offset(1024));
  EXPECT_FALSE(chain_.ready());
  EXPECT_EQ(kNoBlock, chain_.block_off());
}

TEST_F(BlockChainTest, FreeingBetweenTwoFreeBlocksMergesThree) {
  uint64_t a = chain_.commit(16);
  uint64_t b = chain_.commit(16);
  uint64_t c = chain_.commit(16);
  EXPECT_EQ("1024:u/16|1056:u/16|1088:u/16|1120:f/144", chain());
  chain_.release(a);
  chain_.release(c);
  EXPECT_EQ("1024:f/16|1056:u/16|1088:f/176", chain());
  chain_.release(b);
  EXPECT_EQ("1024:f/240", chain());
  EXPECT_EQ(1024u, chain_.block_off());
}

TEST_F(BlockChainTest, FullAreaRecoversOnFirstRelease) {
  uint64_t a = chain_.commit(100);
  uint64_t b = chain_.commit(100);
  // The 16 bytes left at the end hold a header and no room.
  EXPECT_EQ("1024:u/100|1144:u/100|1264:f/0", chain());
  EXPECT_FALSE(chain_.ready());
  chain_.release(a);
  EXPECT_TRUE(chain_.ready());
  EXPECT_EQ(1024u, chain_.block_off());
  EXPECT_EQ(104u, chain_.room());
  chain_.release(b);
  EXPECT_EQ("1024:f/240", chain());
}

TEST_F(BlockChainTest, WriteBlockWrapsAroundAreaEnd) {
  uint64_t a = chain_.commit(16);
  uint64_t b = chain_.commit(192);  // leaves a header without room at the end
  EXPECT_EQ("1024:u/16|1056:u/192|1264:f/0", chain());
  EXPECT_FALSE(chain_.ready());
  chain_.release(a);
  EXPECT_EQ(1024u, chain_.block_off());
  chain_.release(b);
  EXPECT_EQ("1024:f/240", chain());
}

TEST_F(BlockChainTest, SearchForFreeBlockWrapsToAreaStart) {
  uint64_t a = chain_.commit(16);
  chain_.commit(16);
  chain_.release(a);
  EXPECT_EQ(1088u, chain_.block_off());  // the write block stays where it was
  chain_.commit(176);                    // takes the rest of the area whole
  EXPECT_EQ("1024:f/16|1056:u/16|1088:u/176", chain());
  EXPECT_EQ(1024u, chain_.block_off());
  EXPECT_EQ(16u, chain_.room());
}

TEST(SignalTest, EncodingAndPrintingForms) {
  Signal m = make_value_signal(SignalKind::MessageAt, 4096, 2);
  EXPECT_EQ(4097u, m.word);
  EXPECT_EQ("MessageAt(4096) [from:2]", m.text());
  Signal s = make_id_signal(SignalKind::SiblingAt, 12, 0);
  EXPECT_EQ(SignalKind::SiblingAt, s.kind());
  EXPECT_EQ(12, s.id());
  EXPECT_EQ("SiblingAt(12) [from:0]", s.text());
  EXPECT_EQ("IAmUp [from:12]", make_id_signal(SignalKind::IAmUp, 0, 12).text());
  EXPECT_EQ("RequestPeer(2) [from:12]", make_id_signal(SignalKind::RequestPeer, 2, 12).text());
  EXPECT_EQ("SiblingDied(-1) [from:0]", make_id_signal(SignalKind::SiblingDied, -1, 0).text());
}

TEST(SignalDeathTest, UndefinedWordIsFatal) {
  EXPECT_DEATH((Signal{8, 0}.kind()), "Assertion failed: Got MT_Undefined");
  EXPECT_DEATH((Signal{5, 0}.kind()), "Assertion failed: Got MT_Undefined");
}

TEST_F(BlockChainTest, OffsetOutsidePoolIsFatal) {
  EXPECT_DEATH(chain_.size_at(4096), "Offset out of range: 4096 !< 4096");
}

}  // namespace
}  // namespace io
