// The program's life and its events.
//
// What a user does reaches a handler through the dispatcher, which ends the program on a run-time error. What the
// program does to a control (SetText, SetListIndex, SetValue) runs the handler as a plain nested call, at once. A
// handler that is not set is not an event. One thread; nothing of the toolkit may be called from another.
#pragma once

#include <functional>

namespace vantrel {

using Handler = std::function<void()>;

/// Sets up the toolkit, runs `start`, and handles events until the last window is gone. Returns the exit status.
int RunProgram(const Handler& start);

/// Ends the process at once, with all windows, exit status 0.
[[noreturn]] void End();

/// Lets every pending event run to its end.
void DoEvents();

}  // namespace vantrel
