// The Qt application behind the program.
#pragma once

class QApplication;
class QWidget;

namespace vantrel {

/// The application object with the program's name, style, colours and font. Made by the first call; it lives as long as
/// the process. It gets no command line.
QApplication& SetUpApplication();

/// Ends the process without running another destructor.
[[noreturn]] void ExitNow(int status);

/// The end of the desktop session, or a request to terminate: unloads the main window, then the others.
void EndSession();

/// Ends the event loop of RunProgram if no window of the program is on the screen.
void QuitWithoutWindows();

/// Moves a window over the middle of `owner` (of the screen, if there is none) and onto the screen, where its title bar
/// has room even if the window is higher than the screen.
void PlaceOver(QWidget* window, const QWidget* owner);

}  // namespace vantrel
