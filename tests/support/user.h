// A person at the screen: looks at the windows and works them with mouse and keyboard, as Qt delivers them.
#pragma once

#include "platform/picture.h"
#include "platform/toolkit/menu.h"

#include <QObject>
#include <QPointer>
#include <Qt>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QMessageBox;
class QWidget;

namespace vantrel {

/// Windows and controls go by their names: "Set_Dev", "ch(12)". Whatever a person could not do (a window that is not
/// there or is behind a modal one, a control that is hidden or disabled) fails the test.
///
/// Message boxes are noted and confirmed by themselves. A modal window needs an action given by WhenShown before: it
/// runs inside the modal loop, and the window has to be gone when it ends. One that is left open fails the test and is
/// closed, so that no test hangs.
class User : public QObject {
public:
    using Action = std::function<void()>;

    User();
    ~User() override;

    // ---- looking
    /// True if window `window` is on the screen.
    bool Sees(const std::string& window) const;
    /// True if the control is to be seen in it.
    bool Sees(const std::string& window, const std::string& control) const;
    bool Enabled(const std::string& window, const std::string& control) const;
    /// The text of a field, the caption of anything else, with no mark for a shortcut in it.
    std::string Text(const std::string& window, const std::string& control) const;
    std::string ToolTip(const std::string& window, const std::string& control) const;
    std::string Caption(const std::string& window) const;
    bool Checked(const std::string& window, const std::string& control) const;
    /// The current entry of a combo, the selected one of a list (-1 for none), the tab of a tab strip or the value of
    /// an up-down or slider.
    int Index(const std::string& window, const std::string& control) const;
    std::vector<std::string> Entries(const std::string& window, const std::string& control) const;
    std::string CellText(const std::string& window, const std::string& grid, int row, int col) const;
    Colour CellColour(const std::string& window, const std::string& grid, int row, int col) const;
    int RowCount(const std::string& window, const std::string& grid) const;
    int ColCount(const std::string& window, const std::string& grid) const;
    bool SeesTab(const std::string& window, const std::string& tabs, int page) const;
    std::string TabText(const std::string& window, const std::string& tabs, int page) const;
    bool MenuEnabled(const std::string& entry) const;
    /// The widgets themselves, for what is not here. A test fails when they are not there.
    QWidget* FindWindow(const std::string& window) const;
    QWidget* FindControl(const std::string& window, const std::string& control) const;

    // ---- acting
    void Click(const std::string& window, const std::string& control);
    void ClickCell(const std::string& window, const std::string& grid, int row, int col);
    void ClickTab(const std::string& window, const std::string& tabs, int page);
    /// Replaces the text of a field, key by key.
    void Type(const std::string& window, const std::string& control, const std::string& text);
    /// Types at the place of the cursor.
    void TypeOn(const std::string& window, const std::string& control, const std::string& text);
    /// Pastes over the text of a field.
    void Paste(const std::string& window, const std::string& control, const std::string& text);
    /// Opens a combo's list and picks `entry` from it.
    void Pick(const std::string& window, const std::string& combo, const std::string& entry);
    /// Clicks on an entry of a list.
    void Choose(const std::string& window, const std::string& list, const std::string& entry);
    /// Presses a key with the control focused.
    void Press(const std::string& window, const std::string& control, Qt::Key key,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses a key in the window, wherever its focus is.
    void Press(const std::string& window, Qt::Key key);
    /// The close box of the title bar.
    void Close(const std::string& window);
    /// A menu entry, by the name of its action.
    void Menu(const std::string& entry);
    /// Moves a slider, or an up-down, to a value.
    void Move(const std::string& window, const std::string& control, int value);

    // ---- what comes up by itself
    /// The message boxes so far, in order.
    const std::vector<std::string>& Messages() const { return messages_; }
    /// Runs once when a message box comes up that holds `part`, before it is confirmed.
    void WhenMessage(const std::string& part, const Action& action);
    /// Answers the next message box that holds `part` with its No button.
    void AnswerNo(const std::string& part);
    /// Runs once when the window has come up.
    void WhenShown(const std::string& window, const Action& action);
    /// What the next colour dialogs are answered with; no colour cancels.
    void AnswerColor(std::optional<Colour> colour) { colours_.push_back(colour); }
    /// The colour that the last colour dialog came up with.
    std::optional<Colour> OfferedColor() const { return offered_color_; }
    /// The beeps so far, of the whole process.
    static int Beeps();
    /// What the next file dialogs are answered with, one after the other where a dialog comes back with its question
    /// for consent answered by No; an empty path cancels.
    void AnswerFile(const std::string& path) { files_.push_back(path); }

protected:
    bool eventFilter(QObject* on, QEvent* event) override;

private:
    struct Script {
        std::string on;
        Action action;
        bool no = false;
    };
    QWidget* Usable(const std::string& window) const;
    QWidget* Usable(const std::string& window, const std::string& control) const;
    void Appeared(const QPointer<QWidget>& window);
    void MessageAppeared(QMessageBox& box);
    void WindowAppeared(const QPointer<QWidget>& window);
    void CloseLeftOpen(const QPointer<QWidget>& window, const std::string& why);
    static std::optional<Script> Take(std::deque<Script>& scripts, const std::function<bool(const Script&)>& fits);

    std::vector<std::string> messages_;
    std::deque<Script> message_scripts_;
    std::deque<Script> window_scripts_;
    std::deque<std::optional<Colour>> colours_;
    std::deque<std::string> files_;
    std::optional<Colour> offered_color_;
};

}  // namespace vantrel
