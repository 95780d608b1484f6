// Reading a check's series and storing a copy of it on a result object.
#pragma once

#include <cstdint>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"

// One TSDB_GET_DATA with flags 2 and offset 0. The reply's status is not
// looked at: no data is an empty `data`. Raises what the dialog raises.
dbms::Return_TSDB_Get_Data_Data fetchSeries(dbms::Database& db, const tql::id_t& id,
                                            int32_t indexProperty, bool raw, int64_t start,
                                            int64_t end, int32_t count);

// Moves `data` into a TSDB_PUT_DATA for `id`. With tracing on, every record
// is written between "Put data printout BEGIN" and "Put data printout
// FINISHED". A status other than 0 and 16 raises errors::tql, so that a
// chart that could not be stored fails the analysis instead of vanishing.
void putSeries(dbms::Database& db, const tql::id_t& id, int32_t indexProperty, int32_t dataType,
               std::vector<tsdb::interval_ptr> data);
