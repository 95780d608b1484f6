#include "dbms/status.h"

#include "tql/errors.h"

namespace dbms {

void throw_on_status(int32_t status, const tql::details_t& details) {
  if (!status_ok(status)) throw errors::tql(status, tql::join_details(details));
}

}  // namespace dbms
