// Time as the user's clock on the wall shows it.
#pragma once

#include <cstdint>
#include <ctime>

namespace vantrel::os {

/// The calendar fields of the moment `seconds` after 1970-01-01 00:00:00 UTC.
std::tm LocalTime(std::int64_t seconds);

/// The moment of calendar fields, in seconds after 1970-01-01 00:00:00 UTC. Summer time or not: whatever holds on that
/// day.
std::int64_t FromLocalTime(std::tm fields);

}  // namespace vantrel::os
