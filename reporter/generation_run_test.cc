// One generation against the stand-in's database in memory: what it stores,
// the lines of the report's incident series, and each way it gives up.
#include "reporter/generation_run.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/report_test_world.h"
#include "queues/configuration.h"
#include "reporter/generation.h"
#include "tql/schema.h"

namespace {

using host::testing::kOrderTime;
using host::testing::object_in;
using host::testing::report_object;
using host::testing::value_of;
using json = nlohmann::json;

class GenerationRunTest : public ::testing::Test {
 protected:
  GenerationRunTest() {
    // Nothing listens on port 1 of the loopback: a mail fails at once.
    control::Server_Configuration_Fields config;
    config.mail_server = "127.0.0.1:1";
    queues::set_configuration(config);
  }

  // Adds `report` (with its order) at the root of the world.
  void add(json report) { object_in(world_, "0.1")["children"].push_back(std::move(report)); }

  // Loads the world, if not done yet, and runs one generation of `id` for
  // `order_time`, with the report's stored version made stale by `stale`.
  GenerationOutcome generate(const std::string& id, int64_t order_time = kOrderTime,
                             bool stale = false) {
    if (!db_) db_ = std::make_unique<host::testing::WorldDatabase>(world_);
    const tql::id_t report = host::testing::id_of(id);
    const host::StoredObject* stored = db_->store().objects().find(report);
    tql::version_t version = stored ? stored->version : tql::version_t{};
    if (stale) version.first -= 1;
    return generate_report_outcome(db_->db(), flags_, report, version,
                                   TimeValue(static_cast<int32_t>(order_time)));
  }

  // Loads the world with every create of an object of `class_` refused.
  void load_failing_creates_of(int32_t class_) {
    db_ = std::make_unique<host::testing::WorldDatabase>(world_);
    db_->store().fail_creates_of(class_);
  }

  std::vector<json> instances(const std::string& id) { return db_->children(id, "ReportInstance"); }

  json world_ = host::testing::report_world();
  std::unique_ptr<host::testing::WorldDatabase> db_;
  ReportFlags flags_;
};

TEST_F(GenerationRunTest, AGenerationLeavesAFinishedInstanceAndTellsItsHistory) {
  add(report_object("0.1.90", "R"));
  const GenerationOutcome outcome = generate("0.1.90");
  ASSERT_FALSE(outcome.instance.empty());
  EXPECT_FALSE(outcome.stale);
  const std::vector<json> made = instances("0.1.90");
  ASSERT_EQ(1u, made.size());
  EXPECT_EQ(outcome.instance.text(), made[0]["id"]);
  EXPECT_EQ(0, value_of(made[0], "workerNode"));
  EXPECT_EQ(100, value_of(made[0], "progress"));
  EXPECT_EQ(true, value_of(made[0], "public"));
  EXPECT_EQ(kOrderTime, value_of(made[0], "orderTime"));
  EXPECT_EQ(host::testing::kDataStart, value_of(made[0], "startTime"));
  EXPECT_EQ(14400, value_of(made[0], "duration"));
  EXPECT_EQ(1, value_of(made[0], "order"));
  // The walk wrote the owner domain's folder and the explanation.
  std::vector<std::string> names;
  for (const json& child : made[0]["children"]) names.push_back(value_of(child, "name"));
  EXPECT_EQ((std::vector<std::string>{"Root", "Availability explanation"}), names);
  const json report = db_->object("0.1.90");
  EXPECT_EQ(1, value_of(report, "order"));
  EXPECT_FALSE(value_of(report, "lastGenerated").is_null());
  EXPECT_EQ((std::vector<std::string>{"Generation of report number 1 initiated.",
                                      "Generation of report number 1 done."}),
            db_->incidents("0.1.90"));
}

TEST_F(GenerationRunTest, AGoneOrStaleReportIsNotGenerated) {
  add(report_object("0.1.90", "R"));
  EXPECT_TRUE(generate("0.1.91").instance.empty());
  const GenerationOutcome stale = generate("0.1.90", kOrderTime, true);
  EXPECT_TRUE(stale.instance.empty());
  EXPECT_TRUE(stale.stale);
  EXPECT_TRUE(instances("0.1.90").empty());
  EXPECT_TRUE(db_->incidents("0.1.90").empty());
}

TEST_F(GenerationRunTest, AReportWithoutContentsIsAbortedAfterItsInstanceIsMade) {
  json r = report_object("0.1.90", "R");
  r["props"].erase("contains");
  add(r);
  EXPECT_TRUE(generate("0.1.90").instance.empty());
  EXPECT_EQ((std::vector<std::string>{
                "Generation of report number 1 initiated.",
                "Generation of report number 1 aborted. Unable to find template content."}),
            db_->incidents("0.1.90"));
}

TEST_F(GenerationRunTest, AnOrderNumberAlreadyTakenEndsTheGenerationQuietly) {
  json r = report_object("0.1.90", "R");
  r["children"].push_back({{"class", "ReportInstance"}, {"props", {{"order", {{"uint", 1}}}}}});
  add(r);
  EXPECT_TRUE(generate("0.1.90").instance.empty());
  EXPECT_EQ(1u, instances("0.1.90").size());
  EXPECT_EQ(std::vector<std::string>{"Generation of report number 1 initiated."},
            db_->incidents("0.1.90"));
}

TEST_F(GenerationRunTest, AFailedAnalysisFinishesTheInstanceButNeitherPublishesNorMailsIt) {
  add(report_object("0.1.90", "R", "0.1.2", 1, "a@example.test"));
  // The walk catches nothing: a refused result object fails the analysis.
  load_failing_creates_of(schema::kReportResultRow);
  EXPECT_TRUE(generate("0.1.90").instance.empty());
  const std::vector<json> made = instances("0.1.90");
  ASSERT_EQ(1u, made.size());
  EXPECT_EQ(0, value_of(made[0], "workerNode"));
  EXPECT_TRUE(value_of(made[0], "public").is_null());
  EXPECT_TRUE(db_->children(made[0]["id"], "ReportSendTo").empty());
  EXPECT_EQ((std::vector<std::string>{"Generation of report number 1 initiated.",
                                      "Analysis of report number 1 failed."}),
            db_->incidents("0.1.90"));
}

TEST_F(GenerationRunTest, DatabaseRefusalsAndDamagedPeriodsFailTheGenerationWithTheirText) {
  add(report_object("0.1.90", "R"));
  json early = report_object("0.1.91", "Early");
  early["props"]["startTime"] = {{"date", -3600}};
  add(early);
  load_failing_creates_of(schema::kReportInstance);
  EXPECT_TRUE(generate("0.1.90").instance.empty());
  const std::vector<std::string> lines = db_->incidents("0.1.90");
  ASSERT_EQ(2u, lines.size());
  EXPECT_EQ("Generation of report failed: ", lines[1].substr(0, 29));
  EXPECT_NE(std::string::npos, lines[1].find("Injected failure")) << lines[1];

  EXPECT_TRUE(generate("0.1.91").instance.empty());
  EXPECT_EQ(std::vector<std::string>{"Generation of report failed: Report period starts before "
                                     "1970: -3600"},
            db_->incidents("0.1.91"));
}

TEST_F(GenerationRunTest, TheMailJobStaysUntilTheMailIsTried) {
  add(report_object("0.1.90", "R", "0.1.2", 1, "a@example.test"));
  const GenerationOutcome outcome = generate("0.1.90");
  ASSERT_FALSE(outcome.instance.empty());
  // Tried once (nobody listens), then the job is gone: the mailing
  // subscription does not send it a second time.
  EXPECT_TRUE(db_->children(outcome.instance.text(), "ReportSendTo").empty());
  EXPECT_EQ((std::vector<std::string>{"Generation of report number 1 initiated.",
                                      "Generation of report number 1 done.",
                                      "Sending report number 1 to a@example.test...",
                                      "Report number 1 has not been send to a@example.test!"}),
            db_->incidents("0.1.90"));
}

TEST_F(GenerationRunTest, TheMailJobGoesInBeforeTheInstanceIsFinished) {
  add(report_object("0.1.90", "R", "0.1.2", 1, "a@example.test"));
  load_failing_creates_of(schema::kReportSendTo);
  EXPECT_TRUE(generate("0.1.90").instance.empty());
  // Unfinished: a restart deletes it and generates the order again.
  const std::vector<json> made = instances("0.1.90");
  ASSERT_EQ(1u, made.size());
  EXPECT_EQ(1, value_of(made[0], "workerNode"));
  EXPECT_NE(std::string::npos, db_->incidents("0.1.90").back().find("Generation of report failed"));
}

TEST_F(GenerationRunTest, FlagsAReportLacksKeepThePreviousGenerationsValue) {
  json shown = report_object("0.1.90", "Shown");
  shown["props"]["graphShowMinMax"] = {{"bool", true}};
  shown["props"]["alertScore"] = {{"bool", false}};
  add(shown);
  add(report_object("0.1.91", "Plain"));
  ASSERT_FALSE(generate("0.1.90").instance.empty());
  ASSERT_FALSE(generate("0.1.91").instance.empty());
  EXPECT_TRUE(flags_.graphShowMinMax);
  EXPECT_FALSE(flags_.alertScore);
  EXPECT_FALSE(flags_.graphAutoScale);
}

}  // namespace
