// All SCPI traffic once there are devices.
#pragma once

#include "platform/numbers.h"

#include <string>

namespace vantrel {

/// Sends `command`, to which it appends one line feed, to `device`. A command that holds a "?" is a query: 50 ms
/// later its reply is in ReplyBuffer and the status in VisaStatus. A reply that fails runs Stop and shows "Device is
/// disconnected !"; the caller goes on with a blank ReplyBuffer. A failed write shows at the next query only.
void SendScpi(std::string& command, Integer device);
inline void SendScpi(std::string&& command, Integer device) { SendScpi(command, device); }

/// Reads on in a reply that was longer than ReplyBuffer, with the same handling of a failure.
void ReadScpi(Integer device);

}  // namespace vantrel
