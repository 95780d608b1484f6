#include "reporter/mail_job.h"

#include <list>

#include "base/log.h"
#include "dbms/tql_operations.h"
#include "tql/errors.h"
#include "tql/property.h"
#include "tql/schema.h"

void GenerationMailJob::leave(const tql::id_t& instance,
                              const std::vector<std::string>& addresses) {
  if (addresses.empty()) return;
  std::vector<tql::property_ptr> p;
  p.emplace_back(tql::make_property<tql::kind::kStringList>(
      schema::kDestination, std::list<std::string>(addresses.begin(), addresses.end())));
  const tql::created_t job =
      tql::create_object(db_, instance, schema::kReportSendTo, std::move(p), 0);
  id_ = job.new_id;
  version_ = job.new_version;
}

void GenerationMailJob::clear() {
  if (id_.empty()) return;
  try {
    tql::delete_object(db_, id_, version_);
  } catch (const errors::tql& e) {
    log("Could not delete the mail job " + id_.text() + ": " + e.text());
  }
  id_ = {};
}
