// The mailing subscription: each reply carries the tree of domains,
// reports, instances and `ReportSendTo` jobs; every job is mailed and then
// deleted, whether the mail went out or not (a failed mailing stands in the
// report's incidents, and the user asks again).
//
// The walk talks to the outside only through a MailingBackend, so that it
// runs on hand-made trees in tests; report_mailing.cc gives the backend over
// the process's queue.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dbms/tql_records.h"
#include "tql/id.h"
#include "tql/patch.h"

class MailingBackend {
 public:
  virtual ~MailingBackend() = default;
  // Mails the instance `instance_id` of `report_id` (mail_report).
  virtual void mail(const std::vector<std::string>& addresses, const tql::id_t& instance_id,
                    const tql::id_t& report_id) = 0;
  // Appends a line to the report's incident series. May raise errors::tql.
  virtual void incident(const tql::id_t& report_id, uint32_t severity, const std::string& text) = 0;
  // Deletes the job. May raise errors::tql.
  virtual void delete_job(const tql::id_t& id, tql::version_t version) = 0;
  // Whether the job is due now: stored still, at `version` (the one the
  // reply showed), under an instance whose generation is finished. A reply
  // that the database made while an earlier reply's jobs were being mailed
  // still shows them; a job that was changed since is served by the reply
  // that shows the change; and a job under an unfinished instance belongs to
  // the generation that is under way (it mails and deletes it itself) or to
  // one that was cut off (the instance goes, and the job with it).
  // May raise errors::tql.
  virtual bool job_due(const tql::id_t& instance_id, const tql::id_t& job_id,
                       tql::version_t version) = 0;
};

// Serves one reply of the mailing subscription: `inresponse` is the request
// number the reply answers, `sendto_select_id` that of the subscription. A
// reply to another request, or one with an error status, is logged and
// dropped. The tree is walked from its first result, last child first;
// every Report in it goes to treat_send_jobs. No acknowledgement follows.
void serve_mail_reply(const dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                      uint32_t sendto_select_id, MailingBackend& backend);

// Mails and deletes every job below the instances of `report`, in order. A
// job whose `destination` is no (non-null) list of strings is logged, told
// in the report's incidents and deleted as well. A failure to delete a job
// or to write that incident (errors::tql) is traced, and the walk goes on.
// A job that is not due (see MailingBackend::job_due) is skipped with a
// trace and left alone, so that nobody gets the same report twice; a failure
// to look it up counts as due.
void treat_send_jobs(const tql::patch_t& report, MailingBackend& backend);
