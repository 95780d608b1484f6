#include "base/log.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/error.h"

namespace {

struct Sent {
  std::string msg;
  uint32_t type;
};

TEST(Log, WithoutSinkGoesToStandardErrorWithPrefix) {
  set_log_sink(nullptr);
  testing::internal::CaptureStderr();
  log("hello");
  log("", kLogTrace);
  EXPECT_EQ("Log: hello\nLog: \n", testing::internal::GetCapturedStderr());
}

TEST(Log, SinkGetsEveryMessageWhateverTheMask) {
  std::vector<Sent> sent;
  set_log_mask(0);
  set_log_sink([&](const std::string& m, uint32_t t) { sent.push_back({m, t}); });
  log("trace", kLogTrace);
  log("", kLogAlways);
  set_log_sink(nullptr);
  ASSERT_EQ(2u, sent.size());
  EXPECT_EQ("trace", sent[0].msg);
  EXPECT_EQ(0x1000u, sent[0].type);
  EXPECT_EQ("", sent[1].msg);
  EXPECT_EQ(0u, sent[1].type);
  // Removing the sink brings standard error back.
  testing::internal::CaptureStderr();
  log("after");
  EXPECT_EQ("Log: after\n", testing::internal::GetCapturedStderr());
}

TEST(Log, StopTextHitIsReportedAndMessageStillGoesOut) {
  set_stop_text("disk");
  testing::internal::CaptureStderr();
  log("disk full");
  log("all well");
  set_stop_text("");
  EXPECT_EQ("Log stop text matched: disk full\nLog: disk full\nLog: all well\n",
            testing::internal::GetCapturedStderr());
}

TEST(Log, MaskTracingBit) {
  set_log_mask(0x0fff);
  EXPECT_FALSE(log_tracing());
  set_log_mask(0x1000);
  EXPECT_TRUE(log_tracing());
  set_log_mask(0);
}

TEST(Error, TextIsDescribeThenContext) {
  error::ERange e("value out of range");
  e.context = " in field x";
  EXPECT_EQ("value out of range in field x", e.text());
  error::EFileNotFoundError f("open: No such file");
  const error::ESystemError& base = f;
  EXPECT_EQ("open: No such file", base.text());
}

}  // namespace
