// The status of the database's replies.
#pragma once

#include <cstdint>

#include "tql/detail.h"

namespace dbms {

// Status 16 has no meaning of its own and counts as success, as 0 does.
inline constexpr int32_t kStatusAlsoSuccess = 16;

inline bool status_ok(int32_t status) { return status == 0 || status == kStatusAlsoSuccess; }

// Raises errors::tql with `status` and the joined details unless
// status_ok(status).
void throw_on_status(int32_t status, const tql::details_t& details);

}  // namespace dbms
