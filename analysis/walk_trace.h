// The walk's debug lines: a text and an object id, written only when
// tracing is on.
#pragma once

#include <string>

#include "base/log.h"
#include "tql/id.h"

inline void traceId(const std::string& what, const tql::id_t& id) {
  if (log_tracing()) log(what + id.text(), kLogTrace);
}
