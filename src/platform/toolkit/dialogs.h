// Dialogs that ask and tell: message boxes, the colour chooser, the file dialog.
#pragma once

#include "platform/picture.h"

#include <string>

namespace vantrel {

/// A message box with one OK button. Returns when it is confirmed; events run meanwhile. The title is the program's.
void MsgBox(const std::string& text);

enum MsgBoxResult { kYes = 6, kNo = 7 };
/// A message box with a Yes and a No button and no title. No is what Enter and Escape answer.
MsgBoxResult AskYesNo(const std::string& text);

/// The full colour chooser with `start` chosen. Returns the chosen colour, or `start` when it is cancelled.
Colour ShowColor(Colour start);

/// A dialog that asks for a file.
struct CommonDialog {
    std::string DefaultExt;  ///< taken for a name without an extension
    std::string Filter;      ///< a pattern, as "*.csv"
    std::string FileName;    ///< what was chosen last, with its path: the dialog comes up with it

    /// Asks where to save, and for consent before an existing file is taken. Cancel: error 32755, and FileName stays.
    void ShowSave();
};

}  // namespace vantrel
