// The typed operations on the object database, each one request to `db`.
// A reply status other than 0 and 16 raises errors::tql with that code and
// the details joined by "; "; a database that is gone or answers with an
// exception raises as dbms::Database says.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <vector>

#include "dbms/database.h"
#include "tql/detail.h"
#include "tql/id.h"
#include "tql/patch.h"
#include "tql/pattern.h"
#include "tql/property.h"

namespace tql {

// A select from `ids` with the pattern (consumed), `flags` and a
// min_eval_interval of 15; the results belong to the caller. A subscription
// flag (bit 1) is the fatal assertion "Subscription does not make sense
// here".
std::vector<patch_t> select(dbms::Database& db, const std::list<id_t>& ids,
                            std::unique_ptr<pattern_t> pattern, int32_t flags);
// `select` from one id: its one result, or null for none. More than one is
// the fatal assertion "lst.size() > 1".
std::unique_ptr<patch_t> select_one(dbms::Database& db, const id_t& id,
                                    std::unique_ptr<pattern_t> pattern, int32_t flags);
// One object with all its properties, or null.
std::unique_ptr<patch_t> get_object(dbms::Database& db, const id_t& id, int32_t class_);
// A copy of one property of an object. No object: errors::tql code 2; no
// such property: code 7 "Property not found " + the property's name.
std::unique_ptr<property_t> get_property(dbms::Database& db, const id_t& id, int32_t class_,
                                         int32_t property);

struct created_t {
  id_t new_id;
  version_t new_version;
  int32_t status = 0;
};
created_t create_object(dbms::Database& db, const id_t& parent, int32_t class_,
                        std::vector<property_ptr> properties, int32_t flags);

struct updated_t {
  version_t new_version;
  int32_t status = 0;
};
updated_t update_object(dbms::Database& db, const id_t& id, version_t version,
                        std::vector<property_ptr> properties, int32_t flags);

// Returns the reply's status (0 or 16).
int32_t delete_object(dbms::Database& db, const id_t& id, version_t version);

// Raises errors::tql for a status other than 0 and 16.
void check_status(int32_t status, const details_t& details);

}  // namespace tql
