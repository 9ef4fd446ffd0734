// The ways in which the world outside ends the program.
#pragma once

namespace vantrel {

/// From now on the end of the desktop session, SIGTERM and SIGHUP unload the program's windows.
void WatchSessionEnd();

}  // namespace vantrel
