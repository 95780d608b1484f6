#include "protocol/ioprim.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/error.h"
#include "io/errors.h"
#include "protocol/fdio.h"
#include "protocol/memory_stream.h"
#include "protocol/print.h"
#include "protocol/testing.h"

namespace protocol {
namespace {

struct Sample {
  int32_t a = 0;
  std::string s;
  bool flag = false;
  std::vector<uint32_t> v;
  template <class Self, class V>
  static void visit(Self& self, V& v) {
    v("a", self.a);
    v("s", self.s);
    v("flag", self.flag);
    v("v", self.v);
  }
  bool operator==(const Sample&) const = default;
};

using testing::hex;

TEST(IoprimTest, StringSpreadsOverSeveralWriteAreas) {
  // 8 length bytes fill the first area; the text takes two more.
  MemoryPipe pipe(8, 3);
  ioprim io(pipe.in(), pipe.out());
  io << std::string("hello world") << int32_t{7};
  io.flush();
  EXPECT_EQ("0b00000000000000" + hex("hello world") + "07000000", hex(pipe.all()));
  std::string s;
  int32_t n = 0;
  io >> s >> n;
  EXPECT_EQ("hello world", s);
  EXPECT_EQ(7, n);
}

TEST(IoprimTest, ValueStraddlingReadAreasIsReadWhole) {
  // Areas of 3 bytes: the second value starts at byte 1 of the second area.
  MemoryPipe pipe(8, 3, std::string("\x01\x02\x03\x04\x05\x06\x07\x08", 8));
  ioprim io(pipe.in(), pipe.out());
  uint8_t first[1];
  io.read_bytes(first, 1);
  uint32_t v = 0;
  io >> v;
  EXPECT_EQ(0x05040302u, v);
  EXPECT_EQ(5u, io.bytes_read());
  char rest[3];
  io.read_bytes(rest, 3);
  EXPECT_EQ(std::string("\x06\x07\x08", 3), std::string(rest, 3));
  EXPECT_EQ("", pipe.unread());
}

TEST(IoprimTest, NothingIsVisibleBeforeFlush) {
  MemoryPipe pipe(64);
  ioprim io(pipe.in(), pipe.out());
  io << int32_t{1};
  EXPECT_EQ("", pipe.all());
  io.flush();
  EXPECT_EQ(4u, pipe.all().size());
}

TEST(IoprimDeathTest, PrimitiveLargerThanAreaIsFatal) {
  MemoryPipe pipe(4);
  ioprim io(pipe.in(), pipe.out());
  EXPECT_DEATH(io << int64_t{1},
               "Assertion failed: New write area of size 4 too small for primitive write");
}

TEST(IoprimTest, BooleanTakesFourBytesAndAnyNonZeroWordIsTrue) {
  MemoryPipe pipe(16);
  ioprim io(pipe.in(), pipe.out());
  io << true << false;
  io.flush();
  EXPECT_EQ("0100000000000000", hex(pipe.all()));
  MemoryPipe odd(16, 16, std::string("\x00\x01\x00\x00", 4));
  ioprim io2(odd.in(), odd.out());
  bool b = false;
  io2 >> b;
  EXPECT_TRUE(b);
}

TEST(IoprimTest, RecordRoundTripKeepsFieldOrder) {
  MemoryPipe pipe(8, 5);
  ioprim io(pipe.in(), pipe.out());
  Sample in{-2, "xy", true, {1, 2}};
  io << in;
  io.flush();
  EXPECT_EQ(
      "feffffff"
      "0200000000000000" +
          hex("xy") +
          "01000000"
          "02000000"
          "01000000"
          "02000000",
      hex(pipe.all()));
  Sample out;
  io >> out;
  EXPECT_EQ(in, out);
}

TEST(IoprimTest, ContainersRoundTrip) {
  MemoryPipe pipe(8, 7);
  ioprim io(pipe.in(), pipe.out());
  std::list<std::string> l{"a", "", "ccc"};
  std::set<int32_t> s{3, 1, 2};
  std::map<int32_t, std::string> m{{2, "two"}, {1, "one"}};
  io << l << s << m;
  io.flush();
  std::list<std::string> l2{"junk"};
  std::set<int32_t> s2;
  std::map<int32_t, std::string> m2;
  io >> l2 >> s2 >> m2;
  EXPECT_EQ(l, l2);
  EXPECT_EQ(s, s2);
  EXPECT_EQ(m, m2);
}

// Corrupt or truncated input: the reader ends with io::EEndOfStream and
// allocates only for bytes that came.
TEST(IoprimTest, FalseCountsEndTheStreamWithoutHugeAllocations) {
  std::string huge_string(
      "\xff\xff\xff\xff\xff\xff\xff\x0f"
      "abc",
      11);
  MemoryPipe p1(8, 8, huge_string);
  ioprim io1(p1.in(), p1.out());
  std::string s;
  EXPECT_THROW(io1 >> s, io::EEndOfStream);

  std::string huge_vector(
      "\xff\xff\xff\xff"
      "\x01\x00\x00\x00",
      8);
  MemoryPipe p2(8, 8, huge_vector);
  ioprim io2(p2.in(), p2.out());
  std::vector<uint32_t> v;
  EXPECT_THROW(io2 >> v, io::EEndOfStream);
  EXPECT_LE(v.capacity(), kReserveAhead);

  MemoryPipe p3(8, 8, std::string("\x01\x02", 2));
  ioprim io3(p3.in(), p3.out());
  int32_t n = 0;
  EXPECT_THROW(io3 >> n, io::EEndOfStream);
}

struct Chain {
  std::vector<Chain> below;
  template <class Self, class V>
  static void visit(Self& self, V& v) {
    v("below", self.below);
  }
};

TEST(IoprimTest, NestingIsBounded) {
  // Each level: a count of 1 and the next level; the last has count 0.
  auto chain = [](int levels) {
    std::string bytes;
    for (int i = 1; i < levels; ++i) bytes += std::string("\x01\0\0\0", 4);
    return bytes + std::string(4, '\0');
  };
  MemoryPipe ok(8, 8, chain(ioprim::kMaxNesting));
  ioprim io_ok(ok.in(), ok.out());
  Chain c;
  EXPECT_NO_THROW(io_ok >> c);
  MemoryPipe deep(8, 8, chain(100000));
  ioprim io_deep(deep.in(), deep.out());
  try {
    io_deep >> c;
    ADD_FAILURE() << "no exception";
  } catch (const error::EParseError& e) {
    EXPECT_EQ("fdio: records nested deeper than 288", e.text());
  }
  // The rest of the chain is still unread, and no later read starts there.
  EXPECT_TRUE(io_deep.broken());
  int32_t n = 0;
  try {
    io_deep >> n;
    ADD_FAILURE() << "no exception";
  } catch (const error::EParseError& e) {
    EXPECT_EQ("fdio: records nested deeper than 288", e.text());
  }
  EXPECT_FALSE(io_ok.broken());
}

TEST(IoprimTest, TheFirstReasonForABrokenStreamStays) {
  MemoryPipe pipe(8, 8, std::string(8, '\0'));
  ioprim io(pipe.in(), pipe.out());
  io.mark_broken("first");
  io.mark_broken("second");
  int32_t n = 0;
  try {
    io >> n;
    ADD_FAILURE() << "no exception";
  } catch (const error::EParseError& e) {
    EXPECT_EQ("first", e.text());
  }
  EXPECT_EQ(8u, pipe.unread().size());
}

TEST(PrintTest, RecordsAndContainersPrintOneFieldALine) {
  Sample s{5, "text", false, {7, 8}};
  std::ostringstream os;
  print(os, s, 2);
  EXPECT_EQ(
      "  a: 5\n"
      "  s: text\n"
      "  flag: false\n"
      "  v: vector {\n"
      "    7\n"
      "    8\n"
      "  }\n",
      os.str());
  std::ostringstream os2;
  print_value(os2, std::map<int32_t, std::list<int32_t>>{{1, {2}}}, 0);
  EXPECT_EQ("map {\n  1: list {\n    2\n  }\n}", os2.str());
}

}  // namespace
}  // namespace protocol
