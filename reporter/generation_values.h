// Small pieces of a generation that need no database: the report's flags,
// its time zone, its order number and its mail destination.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/generation_context.h"
#include "base/zone.h"
#include "tql/patch.h"

// Sets the flags that `report` carries (goodScore, warnScore, alertScore,
// includeConfig and the five graph flags); an absent property leaves its
// flag as it was. A null or non-boolean one raises errors::tql.
void readReportFlags(const tql::patch_t& report, ReportFlags& flags);

// The report's `order` plus 1. A missing or non-uint `order` is the fatal
// assertion "Couldn't get order property from template".
uint32_t nextOrder(const tql::patch_t& report);

// The addresses of `destination`, split at ';', ',', ':' and ' ' with no
// empty entries. A string list (as some servers store it) is split element
// by element. Absent or null: none.
std::vector<std::string> destinationAddresses(const tql::patch_t& report);

// Splits `text` at every one of ";,: "; runs give no empty entries.
std::vector<std::string> splitAddresses(const std::string& text);
