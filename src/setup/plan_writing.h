// Sends the edited plan to the instruments.
#pragma once

namespace vantrel {

/// SET of the scanner card dialog: takes its working arrays as the plan, sends scan timer and functions to every
/// instrument, reads each back at once, and says that it is done.
void WriteDevicePlans();

}  // namespace vantrel
