// The one way the result writers create an object: a tql create under the
// report's instance tree, with the error line that names what failed.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/property.h"

// Creates an object of `class_` under `parent` with `properties` (in the
// order given) and returns its id. On errors::tql, when `className` is not
// null, writes "Caught exception during creation of " className " with
// parent " the parent's id ": " the text " , " the code, and rethrows.
tql::id_t createResult(dbms::Database& db, const tql::id_t& parent, int32_t class_,
                       std::vector<tql::property_ptr> properties, const char* className);

// `originNode` holding `origin`, or nothing when `origin` is empty.
void appendOrigin(std::vector<tql::property_ptr>& properties, const tql::id_t& origin);

// `order` with the next value of the process-wide counter.
tql::property_ptr orderProperty();
