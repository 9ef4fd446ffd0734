// The trend of a run: the latest readings of every channel of every device, newest at the left.
#pragma once

namespace vantrel {

/// Takes the latest readings into the history and draws all traces anew. Yields once for each channel.
void Draw_Trend();

}  // namespace vantrel
