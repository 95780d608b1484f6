// The walk over a reply of the mailing subscription: which jobs are mailed,
// in what order, what is logged and told, and that every job is deleted.
#include "mailing/mail_jobs.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "mailing/report_mail_test_support.h"
#include "tql/errors.h"
#include "tql/property.h"
#include "tql/schema.h"

namespace {

tql::id_t id(uint32_t a, uint32_t b) { return tql::id_t({a, b}); }

tql::patch_t object(int32_t class_, tql::id_t id, std::vector<tql::patch_t> children = {}) {
  tql::patch_t p;
  p.class_ = class_;
  p.id = id;
  p.version = tql::version_t{7, 1};
  p.children = std::move(children);
  return p;
}

tql::patch_t instance(uint32_t n, uint32_t order, std::vector<tql::patch_t> jobs) {
  tql::patch_t p = object(schema::kReportInstance, id(38, n), std::move(jobs));
  if (order != 0) {
    p.set_property(std::make_unique<tql::property_uint_t>(schema::kOrder, order));
  }
  return p;
}

tql::patch_t job(uint32_t n, std::list<std::string> addresses) {
  tql::patch_t p = object(schema::kReportSendTo, id(62, n));
  p.set_property(
      std::make_unique<tql::property_string_list_t>(schema::kDestination, std::move(addresses)));
  return p;
}

// Records what the walk asks of the outside; deleting and telling can be
// made to fail for chosen ids.
class RecordingBackend : public MailingBackend {
 public:
  void mail(const std::vector<std::string>& addresses, const tql::id_t& instance_id,
            const tql::id_t& report_id) override {
    std::string text = "mail " + instance_id.text() + " of " + report_id.text() + " to";
    for (const auto& a : addresses) text += " " + a;
    calls.push_back(text);
  }
  void incident(const tql::id_t& report_id, uint32_t severity, const std::string& text) override {
    calls.push_back("incident " + report_id.text() + " " + std::to_string(severity) + " " + text);
    if (failIncident) throw errors::tql(2, "report gone");
  }
  void delete_job(const tql::id_t& job, tql::version_t) override {
    calls.push_back("delete " + job.text());
    if (undeletable.count(job.text())) throw errors::tql(3, "updated by other");
  }
  bool job_due(const tql::id_t& instance, const tql::id_t& job, tql::version_t version) override {
    if (unreadable.count(job.text())) throw errors::tql(10, "lookup failed");
    return gone.count(job.text()) == 0 && version == stored_version &&
           unfinished.count(instance.text()) == 0;
  }

  std::vector<std::string> calls;
  std::set<std::string> undeletable;
  std::set<std::string> gone;           // jobs no longer stored
  std::set<std::string> unreadable;     // job_due raises
  std::set<std::string> unfinished;     // instances whose generation runs
  tql::version_t stored_version{7, 1};  // every stored job's version
  bool failIncident = false;
};

class MailJobsTest : public ::testing::Test {
 protected:
  void serve(std::vector<tql::patch_t> res, uint32_t inresponse = 5, int32_t status = 0) {
    dbms::Return_Tql_Select_Data reply;
    reply.status = status;
    reply.res = std::move(res);
    serve_mail_reply(reply, inresponse, 5, backend);
  }

  LogCapture log;
  RecordingBackend backend;
};

TEST_F(MailJobsTest, JobsAreMailedAndDeletedInOrder) {
  tql::patch_t report = object(schema::kReport, id(5, 1),
                               {instance(1, 3, {job(1, {"a@x", "B@x"}), job(2, {"c@x"})}),
                                instance(2, 0, {}), instance(3, 0, {job(3, {})})});
  serve({object(schema::kDomain, id(0, 1), {report})});
  const std::vector<std::string> expected = {
      "mail 38.1 of 5.1 to a@x B@x", "delete 62.1", "mail 38.1 of 5.1 to c@x", "delete 62.2",
      // An empty list is handed on (mail_report returns at once) and the job goes.
      "mail 38.3 of 5.1 to", "delete 62.3"};
  EXPECT_EQ(expected, backend.calls);
  EXPECT_TRUE(log.lines.empty());
}

TEST_F(MailJobsTest, DomainsAreWalkedLastChildFirst) {
  tql::patch_t a = object(schema::kReport, id(5, 1), {instance(1, 0, {job(1, {"a@x"})})});
  tql::patch_t b = object(schema::kReport, id(5, 2), {instance(2, 0, {job(2, {"b@x"})})});
  tql::patch_t c = object(schema::kReport, id(5, 3), {instance(3, 0, {job(3, {"c@x"})})});
  tql::patch_t sub = object(schema::kDomain, id(3, 2), {b, object(4, id(4, 1))});
  serve({object(schema::kDomain, id(0, 1), {a, sub, c})});
  const std::vector<std::string> expected = {"mail 38.3 of 5.3 to c@x", "delete 62.3",
                                             "mail 38.2 of 5.2 to b@x", "delete 62.2",
                                             "mail 38.1 of 5.1 to a@x", "delete 62.1"};
  EXPECT_EQ(expected, backend.calls);
  const std::vector<std::string> logged = {"Got unexpected class during sending of report : Node"};
  EXPECT_EQ(logged, log.lines);
}

TEST_F(MailJobsTest, JobWithoutUsableDestinationIsToldAndDeleted) {
  tql::patch_t none = object(schema::kReportSendTo, id(62, 1));
  tql::patch_t text = object(schema::kReportSendTo, id(62, 2));
  text.set_property(std::make_unique<tql::property_string_t>(schema::kDestination, "a@x"));
  tql::patch_t null = job(3, {"b@x"});
  null.set_property([] {
    auto p = std::make_unique<tql::property_string_list_t>(schema::kDestination,
                                                           std::list<std::string>{"b@x"});
    p->is_null = true;
    return p;
  }());
  serve(
      {object(schema::kReport, id(5, 1), {instance(1, 12, {none, text}), instance(2, 0, {null})})});
  const std::vector<std::string> expected = {
      "incident 5.1 4 Could not get email addresses while sending report number 12.",
      "delete 62.1",
      "incident 5.1 4 Could not get email addresses while sending report number 12.",
      "delete 62.2",
      "incident 5.1 4 Could not get email addresses while sending report.",
      "delete 62.3"};
  EXPECT_EQ(expected, backend.calls);
  EXPECT_EQ(std::vector<std::string>(3, "Got unknown destination while sending report as email "),
            log.lines);
}

TEST_F(MailJobsTest, FailedDeletionOrIncidentDoesNotStopTheWalk) {
  backend.undeletable = {"62.1"};
  backend.failIncident = true;
  serve({object(
      schema::kReport, id(5, 1),
      {instance(1, 0,
                {job(1, {"a@x"}), object(schema::kReportSendTo, id(62, 2)), job(3, {"c@x"})})})});
  const std::vector<std::string> expected = {
      "mail 38.1 of 5.1 to a@x",
      "delete 62.1",
      "incident 5.1 4 Could not get email addresses while sending report.",
      "delete 62.2",
      "mail 38.1 of 5.1 to c@x",
      "delete 62.3"};
  EXPECT_EQ(expected, backend.calls);
  ASSERT_EQ(2u, log.traces.size());
  EXPECT_EQ("Could not delete ReportSendTo job, skipping.", log.traces[0]);
  EXPECT_TRUE(log.traces[1].starts_with("Could not write the incident of a ReportSendTo job: "))
      << log.traces[1];
}

// A reply sent before the jobs of an earlier reply were deleted shows them
// again: they are neither mailed nor deleted a second time. A lookup that
// fails serves the job as before.
TEST_F(MailJobsTest, JobsThatAreNotDueAreLeftAlone) {
  backend.gone = {"62.1", "62.3"};
  backend.unreadable = {"62.2"};
  serve({object(
      schema::kReport, id(5, 1),
      {instance(1, 0,
                {job(1, {"a@x"}), job(2, {"b@x"}), object(schema::kReportSendTo, id(62, 3))})})});
  const std::vector<std::string> expected = {"mail 38.1 of 5.1 to b@x", "delete 62.2"};
  EXPECT_EQ(expected, backend.calls);
  const std::vector<std::string> traces = {
      "ReportSendTo job 62.1 is not due, skipping.",
      "Could not look up ReportSendTo job, serving it: lookup failed",
      "ReportSendTo job 62.3 is not due, skipping."};
  EXPECT_EQ(traces, log.traces);
  EXPECT_TRUE(log.lines.empty());
}

// A job changed since the reply was made (another version) waits for the
// reply that shows the change; a job under an instance that is still being
// generated is the generation's own.
TEST_F(MailJobsTest, ChangedJobsAndJobsOfUnfinishedInstancesWait) {
  backend.unfinished = {"38.2"};
  tql::patch_t report =
      object(schema::kReport, id(5, 1),
             {instance(1, 0, {job(1, {"a@x"})}), instance(2, 0, {job(2, {"b@x"})})});
  backend.stored_version = tql::version_t{7, 2};
  serve({report});
  backend.stored_version = tql::version_t{7, 1};
  serve({report});
  const std::vector<std::string> expected = {"mail 38.1 of 5.1 to a@x", "delete 62.1"};
  EXPECT_EQ(expected, backend.calls);
  EXPECT_EQ(3u, log.traces.size());
}

TEST_F(MailJobsTest, RepliesThatCarryNoJobs) {
  const tql::patch_t report =
      object(schema::kReport, id(5, 1), {instance(1, 0, {job(1, {"a@x"})})});
  serve({report}, 6);
  dbms::Return_Tql_Select_Data failed;
  failed.status = 4;
  failed.res = {report};
  serve_mail_reply(failed, 5, 5, backend);
  failed.details = {{1, "no such class"}, {1, "second"}};
  serve_mail_reply(failed, 5, 5, backend);
  serve({});
  EXPECT_TRUE(backend.calls.empty());
  const std::vector<std::string> expected = {
      "Tried to send a report as mail, but got unsubscribe request", "Alarm: error in select (4)",
      "Report: error in select (4, no such class)"};
  EXPECT_EQ(expected, log.lines);
}

}  // namespace
