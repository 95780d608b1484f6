// The read model over the stored tree of a finished report: the
// report::ReportInstance of read_model.h implemented by queries to the
// database, each level read when it is asked for.
#pragma once

#include <memory>

#include "dbms/database.h"
#include "report/read_model.h"
#include "tql/id.h"

namespace report {

// The instance `instance_id`, read from `db` (which outlives it). Raises
// errors::tql when the instance can't be read.
std::unique_ptr<ReportInstance> open_server_instance(dbms::Database& db, tql::id_t instance_id);

}  // namespace report
