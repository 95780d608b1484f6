#include "reporter/report_progress.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tql/errors.h"
#include "tql/schema.h"

namespace {

// Each write as "class:value".
struct ProgressRecorder {
  std::vector<std::string> writes;
  int32_t failClass = -1;

  ReportProgress::Writer writer() {
    return [this](const tql::id_t&, int32_t classNumber, uint32_t value) {
      if (classNumber == failClass) throw errors::tql(errors::tql::kUpdatedByOther);
      writes.push_back(std::to_string(classNumber) + ":" + std::to_string(value));
    };
  }
};

TEST(ReportProgress, OneNodeGoesStraightTo99) {
  ProgressRecorder r;
  ReportProgress progress(tql::id_t(), tql::id_t(), 1, r.writer());
  progress.advance(1);
  EXPECT_EQ((std::vector<std::string>{"5:99", "38:99"}), r.writes);
}

TEST(ReportProgress, TwoNodesGive50Then99) {
  ProgressRecorder r;
  ReportProgress progress(tql::id_t(), tql::id_t(), 2, r.writer());
  progress.advance(1);
  progress.advance(1);
  EXPECT_EQ((std::vector<std::string>{"5:50", "38:50", "5:99", "38:99"}), r.writes);
}

TEST(ReportProgress, DatabaseFailureIsLoggedAndTheStepCounts) {
  ProgressRecorder r;
  r.failClass = schema::kReport;
  ReportProgress progress(tql::id_t(), tql::id_t(), 2, r.writer());
  progress.advance(1);
  EXPECT_TRUE(r.writes.empty());
  r.failClass = -1;
  progress.advance(1);
  EXPECT_EQ((std::vector<std::string>{"5:99", "38:99"}), r.writes);
}

TEST(ReportProgress, NoNodesWritesNothing) {
  ProgressRecorder r;
  ReportProgress progress(tql::id_t(), tql::id_t(), 0, r.writer());
  progress.advance(1);
  EXPECT_TRUE(r.writes.empty());
  EXPECT_EQ(1u, progress.done_steps());
}

}  // namespace
