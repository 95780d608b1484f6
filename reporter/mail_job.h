// The generation's own `ReportSendTo` job. It is left under the new instance
// before the instance is finished, and deleted once the mail was tried, so
// that a mail cut off by a crash or a stop is sent after the restart by the
// mailing subscription. Without it a finished instance would count as served
// and its mail would be lost.
#pragma once

#include <string>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"

class GenerationMailJob {
 public:
  // Creates and deletes in `db`, which outlives this.
  explicit GenerationMailJob(dbms::Database& db) : db_(db) {}

  // Creates the job under `instance` with `addresses` as its destination;
  // nothing for no addresses. Raises errors::tql when the database refuses
  // (the generation then fails like on any other database error).
  void leave(const tql::id_t& instance, const std::vector<std::string>& addresses);

  // Deletes the job, if one was left. A refusal is logged as "Could not
  // delete the mail job ID: TEXT"; the job is then mailed once more by the
  // mailing subscription.
  void clear();

 private:
  dbms::Database& db_;
  tql::id_t id_;  // Empty while no job is stored.
  tql::version_t version_;
};
