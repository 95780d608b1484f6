// The --zone option shared by the subcommands that work with local time.
#pragma once

#include "base/args.h"
#include "base/zone.h"

namespace tools {

using cli::Args;

// --zone Z, a 32-bit integer; the zone of TZ when not given. Raises
// error::EParseError for a value out of range.
zone_t zone_arg(Args& args);

}  // namespace tools
