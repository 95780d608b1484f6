// Names of the class and property numbers of the database schema.
//
// Both tables are copied into ordered maps at the first lookup of either.
// The lookups never fail: an unknown number yields "<unknown class: N>" or
// "<unknown property: N>". Safe to call from the one thread only.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace tql {

std::string class_name(int32_t class_number);
std::string property_name(int32_t property_number);

// The whole catalogues, number to name (unassigned numbers absent).
const std::map<int32_t, std::string>& class_names();
const std::map<int32_t, std::string>& property_names();

}  // namespace tql
