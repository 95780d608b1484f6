// Names of classes, properties and ids as world files write them.
#pragma once

#include <cstdint>
#include <string>

#include "tql/id.h"

namespace host {

// The class number of a catalogue name. Raises EWorldError at `path` for a
// name that the catalogue doesn't have.
int32_t class_number(const std::string& name, const std::string& path);
// A property key: a catalogue name, or a property number in decimal. For the
// one name that occurs twice (capGridConf) the lower number. Raises
// EWorldError for neither.
int32_t property_number(const std::string& key, const std::string& path);
// The catalogue name of a property, or its number in decimal.
std::string property_key(int32_t number);
// An id in text form, "0.1.7"; "" is the empty id. Raises EWorldError for
// anything else, or more than 3 components.
tql::id_t parse_id(const std::string& text, const std::string& path);

}  // namespace host
