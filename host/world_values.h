// Property values in world files: each a JSON object with one member whose
// key names the kind and whose value holds the value (WORLD.md has the
// table), as {"uint": 5} or {"null": "uint"} for a null property.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "tql/property.h"

namespace host {

using Json = nlohmann::json;

// Turns a reference text, an id "0.1.7" or a path of names "/a/b", into the
// id of an existing object; raises EWorldError at `path` when it names none.
using Resolver = std::function<tql::id_t(const std::string& reference, const std::string& path)>;

// True for a value of kind object or object_set, whose references can only
// be resolved once all objects exist.
bool is_reference_value(const Json& value);

// The property `number` from `value`. Raises EWorldError at `path` for an
// unknown kind, a value of the wrong JSON type or out of range, bad hex, or
// a reference that `resolve` refuses.
tql::property_ptr property_from_json(int32_t number, const Json& value, const std::string& path,
                                     const Resolver& resolve);
// The value as a world file writes it; references as id texts.
Json property_to_json(const tql::property_t& property);

// A real number: a JSON number, or "nan", "inf", "-inf", which JSON lacks.
// False for anything else.
bool real_from_json(const Json& value, double& out);
Json real_to_json(double value);

}  // namespace host
