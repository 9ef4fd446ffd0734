// The window toolkit: windows that load when first touched, and the controls on them.
//
// Positions and sizes are twips, 15 to the pixel at 96 dpi, y downward, counted from the top left corner of the
// parent's client area. They keep the value that they were given, fractions included; only the screen rounds.
//
// Events. What a user does reaches a handler through the dispatcher, which ends the program on a run-time error. What
// the program does to a control (SetText, SetListIndex, SetValue) runs the handler as a plain nested call, at once. A
// handler that is not set is no event. One thread; nothing here may be called from another.
#pragma once

#include "platform/clock.h"
#include "platform/errors.h"
#include "platform/numbers.h"
#include "platform/picture.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class QAction;
class QMenu;
class QObject;
class QWidget;

namespace vantrel {

// ------------------------------------------------------------------------------------------------ program and events

using Handler = std::function<void()>;

/// Sets up the toolkit, runs `start`, and handles events until the last window is gone. Returns the exit status.
int RunProgram(const Handler& start);

/// Ends the process at once, with all windows, exit status 0.
[[noreturn]] void End();

/// Lets every pending event run to its end.
void DoEvents();

/// A message box with one OK button. Returns when it is confirmed; events run meanwhile. The title is the program's.
void MsgBox(const std::string& text);

enum MsgBoxResult { kYes = 6, kNo = 7 };
/// A message box with a Yes and a No button and no title. No is what Enter and Escape answer.
MsgBoxResult AskYesNo(const std::string& text);

/// Sounds the system's beep.
void Beep();

/// Opens `address` in the default browser: through "cmd.exe /c start " where there is such an interpreter, else by the
/// desktop's own way.
void OpenWebAddress(const std::string& address);

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

/// The colour of button faces on this desktop.
Colour ButtonFace();

/// The colour of highlighted text on this desktop.
Colour HighlightText();

/// The wait cursor for as long as it lives.
class BusyCursor {
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

// ------------------------------------------------------------------------------------------------------------ windows

struct Size {
    float width, height;  ///< twips
};

/// What every window is made of. A window of the program is a struct on top of it that holds its controls as members
/// and overrides those of the four Form_ routines that it needs. Where an event causes one, the dispatcher runs it.
class Window {
public:
    enum Kind { kMain, kDialog };

    /// `client`: size of the client area, without a menu bar.
    Window(const std::string& name, const std::string& caption, Size client, Kind kind = kDialog);
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Runs when the object comes into being, before whoever touched it goes on.
    virtual void Form_Load() {}
    /// Runs when it is shown, or becomes the active window after another window of the program (a message box does not
    /// count).
    virtual void Form_Activate() {}
    /// Runs when it is unloaded after having been shown, whatever unloads it.
    virtual void Form_Unload() {}
    /// Runs when its close box (or Escape in a dialog) is pressed. Unloads it.
    virtual void Form_CloseBox() { unload_(); }

    /// Shows it as an ordinary window, or brings it to the front.
    void Show();
    /// Shows it and returns once it is hidden or unloaded. The other windows take no input meanwhile.
    void ShowModal();
    /// Takes it off the screen; object and control values stay.
    void Hide();
    bool Visible() const;
    std::string Caption() const;
    void SetCaption(const std::string& caption);

    QWidget* ClientArea() const { return client_; }

private:
    template <class W>
    friend W& The();
    template <class W>
    friend void Unload();
    friend class Dispatcher;
    friend class WindowFrame;
    friend class SystemMenu;
    friend class Menu;
    friend class MenuItem;

    QWidget* frame_;
    QWidget* client_;
    std::weak_ptr<Window> self_;  ///< what The() keeps it alive by
    Handler unload_;              ///< Unload<W> of its own type
    std::shared_ptr<class SystemMenu> system_menu_;
    bool is_main_;
    bool was_shown_ = false;
    bool unloading_ = false;
};

namespace detail {
/// The one object of window W, or none. Never destroyed with the process: End() takes everything at once.
template <class W>
std::shared_ptr<W>& Slot() {
    static auto* slot = new std::shared_ptr<W>;
    return *slot;
}
}  // namespace detail

/// Removes window W: its next touch loads it afresh (of the main window, the object stays, off the screen for good).
/// Nothing happens if it is not loaded or is being unloaded already. A handler of it that is still running may go on
/// using the object until it returns.
template <class W>
void Unload() {
    const std::shared_ptr<Window> window = detail::Slot<W>();
    if (!window || window->unloading_) return;
    window->unloading_ = true;
    if (window->was_shown_) window->Form_Unload();
    // The main window lives as long as the process: a run that is still going on must not meet a new one.
    if (!window->is_main_) detail::Slot<W>().reset();
    window->Hide();
}

/// True while window W has an object, shown or not.
template <class W>
bool IsLoaded() {
    return detail::Slot<W>() != nullptr;
}

/// Window W. The first touch makes it and runs its load step before it returns.
template <class W>
W& The() {
    if (const std::shared_ptr<W>& window = detail::Slot<W>()) return *window;
    const auto made = std::make_shared<W>();
    detail::Slot<W>() = made;
    Window& window = *made;
    window.self_ = made;
    window.unload_ = Unload<W>;
    window.Form_Load();
    // A load step that yields lets a handler unload the window again.
    if (detail::Slot<W>() != made) return The<W>();
    return *made;
}

// ------------------------------------------------------------------------------------------------------- system menu

/// The menu behind a title bar's icon: Restore, Move, Size, Minimize, Maximize, a separator, Close.
class SystemMenu;

inline constexpr int kMfByPositionRemove = 5120;

/// The system menu of `window`; nullptr if it has none. `revert` true puts the removed entries back.
SystemMenu* GetSystemMenu(Window& window, bool revert);
int GetMenuItemCount(const SystemMenu* menu);
/// Removes the entry at `position`, counted from 0. No such entry: no effect.
void RemoveMenu(SystemMenu* menu, int position, int flags);
/// Makes the window's title bar follow the menu: without Close there is no close box and a close request is refused,
/// without Size the window has a fixed size, without Maximize it has no maximise box.
void DrawMenuBar(Window& window);

// ----------------------------------------------------------------------------------------------------------- controls

/// Left, top, width and height in twips.
struct Box {
    float left, top, width, height;
};

class Frame;
class SSTab;

/// Where a control stands: on a window, in a frame, or on page `page` of a tab strip.
struct Place {
    Place(Window& on);
    Place(Frame& on);
    Place(SSTab& on, int page);
    Window* window;
    QWidget* parent;
    float top = 0;  ///< twips between the corner that positions count from and the parent's
};

/// What all controls share. The order in which the controls of a window are declared is their tab order, as long as
/// SetTabOrder gives no other.
class Control {
public:
    ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    float Left() const { return box_.left; }
    float Top() const { return box_.top; }
    float Width() const { return box_.width; }
    float Height() const { return box_.height; }
    void SetLeft(float left);
    void SetTop(float top);
    void SetWidth(float width);
    void SetHeight(float height);

    bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);
    /// Whether the control is to be seen when its window is.
    bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    std::string ToolTipText() const;
    void SetToolTipText(const std::string& text);
    Colour BackColor() const;
    /// Sets the background; the widget has it as property BackColor, too.
    void SetBackColor(Colour colour);
    void SetFocus();
    /// Whether the Tab key stops here, as it does at first. A click goes on giving it the focus.
    void SetTabStop(bool stop);

    QWidget* Widget() const { return widget_; }

protected:
    /// Takes `widget` into its place, under its name (its objectName).
    Control(const Place& place, const std::string& name, const Box& box, QWidget* widget);
    /// Runs `handler`, if set, for a user's action on this control: through the dispatcher.
    void Raise(const Handler& handler);

    QWidget* widget_;
    Window* window_;
    QObject* life_;  ///< lives as long as this object, which the widget outlives a little: owns what the widget calls

private:
    friend struct Place;
    void PlaceOnScreen();
    Box box_;
    bool enabled_ = true;
    bool visible_ = true;
    float page_offset_;  ///< Place::top
    bool has_back_color_ = false;
    Colour back_color_ = 0;
};

/// Has the Tab key go from each of `controls`, all of one window, to the next one.
void SetTabOrder(const std::vector<Control*>& controls);

/// Elements 0 to N-1 of one kind under the names name(0), name(1) ... An element that is not there raises error 340.
template <class C, int N>
class ControlArray {
public:
    /// All on one window, all with the same box; `rest` is handed to each element.
    template <class... Rest>
    ControlArray(Window& window, const std::string& name, const Box& box, const Rest&... rest) {
        for (int i = 0; i < N; ++i)
            elements_.emplace_back(
                std::make_unique<C>(Place(window), name + "(" + std::to_string(i) + ")", box, rest...));
    }
    /// Element i on page i of a tab strip.
    template <class... Rest>
    ControlArray(SSTab& tabs, const std::string& name, const Box& box, const Rest&... rest) {
        for (int i = 0; i < N; ++i)
            elements_.emplace_back(
                std::make_unique<C>(Place(tabs, i), name + "(" + std::to_string(i) + ")", box, rest...));
    }

    C& operator()(int i) {
        if (i < 0 || i >= N) throw RunTimeError(kControlArrayElement);
        return *elements_[static_cast<std::size_t>(i)];
    }
    static constexpr int Size() { return N; }

private:
    std::vector<std::unique_ptr<C>> elements_;
};

class Label : public Control {
public:
    Label(const Place& place, const std::string& name, const Box& box, const std::string& caption);
    std::string Caption() const;
    void SetCaption(const std::string& caption);
    /// Set when the window is made, it makes the label a link: a stop of the Tab key that Space and Enter click, too.
    Handler OnClick;
};

/// A box with a caption around other controls.
class Frame : public Control {
public:
    Frame(const Place& place, const std::string& name, const Box& box, const std::string& caption);
};

/// A small picture out of the program's icons.
class ImageBox : public Control {
public:
    ImageBox(const Place& place, const std::string& name, const Box& box, const std::string& icon);
};

class CommandButton : public Control {
public:
    /// `icon`: name of one of the program's icons, or empty.
    CommandButton(const Place& place, const std::string& name, const Box& box, const std::string& caption,
                  const std::string& icon = "", const std::string& tool_tip = "");
    Handler OnClick;
};

class TextBox : public Control {
public:
    TextBox(const Place& place, const std::string& name, const Box& box, const std::string& text = "");
    std::string Text() const;
    /// A text that differs runs OnChange.
    void SetText(const std::string& text);
    /// Selects the whole text as well, so that typing takes its place.
    void SetFocus();
    Handler OnChange;
    Handler OnClick;
    /// Asked for every character key (backspace, 8, is one; Tab, arrows, Delete and shortcuts are none); false swallows
    /// it. Pasted text is not asked for.
    std::function<bool(int character)> OnKeyPress;
};

class CheckBox : public Control {
public:
    CheckBox(const Place& place, const std::string& name, const Box& box, const std::string& caption);
    int Value() const;  ///< 0 or 1
    /// A value that differs runs OnClick.
    void SetValue(int value);
    std::string Caption() const;
    void SetCaption(const std::string& caption);
    Handler OnClick;
};

/// One of several choices: those of one window or frame switch each other off.
class OptionButton : public Control {
public:
    OptionButton(const Place& place, const std::string& name, const Box& box, const std::string& caption);
    bool Value() const;
    /// Runs OnClick if it comes to be chosen.
    void SetValue(bool chosen);
    Handler OnClick;
};

/// An editable combo box. Typed text is taken as it stands: no completion, no look-up, no change on leaving the field.
/// The list index of a text is that of the entry it equals exactly (of a picked one: the picked), else -1.
/// A user's pick is one OnClick, also of the entry that stands there; a user's typing is one OnChange a keystroke.
class ComboBox : public Control {
public:
    ComboBox(const Place& place, const std::string& name, const Box& box, const std::string& text = "");
    /// Empties the list and the field. Runs nothing.
    void Clear();
    /// Adds an entry at the end. Selects and runs nothing.
    void AddItem(const std::string& entry);
    int ListCount() const;
    /// Entry `i`; an empty text for an entry that is not there.
    std::string List(int i) const;
    int ListIndex() const;
    /// Selects entry `i` (-1: none, an empty field) and runs OnClick, also if it was selected. No such entry: error
    /// 380.
    void SetListIndex(int i);
    std::string Text() const;
    /// A text that differs runs OnChange.
    void SetText(const std::string& text);
    /// Marks `length` characters of the field from `start` on.
    void Select(int start, int length);
    Handler OnChange;
    Handler OnClick;

private:
    /// Takes note of the field's text, and lets the widget's index follow it.
    void TakeText();

    class ComboWidget* combo_;
    int index_ = -1;    ///< the picked entry
    std::string seen_;  ///< the text that the program knows of
};

/// A list of which at most one entry is selected.
class ListBox : public Control {
public:
    ListBox(const Place& place, const std::string& name, const Box& box);
    /// Empties the list. Runs nothing.
    void Clear();
    /// Adds an entry at the end. Selects and runs nothing.
    void AddItem(const std::string& entry);
    int ListCount() const;
    /// Entry `i`; an empty text for an entry that is not there.
    std::string List(int i) const;
    int ListIndex() const;  ///< -1 for none
    /// Selects entry `i` (-1: none). No such entry: error 380.
    void SetListIndex(int i);
    /// The selected entry; an empty text for none.
    std::string Text() const;
};

/// A date and time field. `format` uses yyyy MM dd HH hh mm ss; "hh" is the hour of the 12-hour clock, from 01 to 12:
/// the value keeps its half of the day whatever field is edited. The keys A and P take it to the half before and after
/// noon, and an hour that is typed as 00 or 13 to 23 to its own. The tool tip tells the full time with 24 hours.
class DTPicker : public Control {
public:
    DTPicker(const Place& place, const std::string& name, const Box& box, const std::string& format);
    DateTime Value() const;  ///< to the second
    void SetValue(DateTime value);
};

/// Two small arrow buttons around a whole number.
class UpDown : public Control {
public:
    UpDown(const Place& place, const std::string& name, const Box& box, int minimum, int maximum);
    int Value() const;
    int Max() const;
    /// Never runs OnChange, also where the value lies above.
    void SetMax(int maximum);
    Handler OnChange;  ///< the user moved the value
};

/// A thumb on a bar of whole numbers. A click beside the thumb brings it there.
class Slider : public Control {
public:
    Slider(const Place& place, const std::string& name, const Box& box);
    int Value() const;
    /// Kept within the bounds. Runs nothing.
    void SetValue(int value);
    int Min() const;
    int Max() const;
    // Each takes the other bound and the value along where they lie beyond it. Runs nothing.
    void SetMin(int minimum);
    void SetMax(int maximum);
    Handler OnScroll;  ///< the user moved the thumb
    Handler OnClick;   ///< the user let the mouse button go on it
};

/// A tab strip with pages. The strip itself takes `strip` twips at the top.
class SSTab : public Control {
public:
    static constexpr float kStrip = 360;  ///< height of the strip in twips; pages begin below it

    SSTab(const Place& place, const std::string& name, const Box& box, const std::vector<std::string>& captions);
    int Tab() const;
    void SetTab(int page);
    bool TabVisible(int page) const;
    void SetTabVisible(int page, bool visible);
    std::string TabCaption(int page) const;
    void SetTabCaption(int page, const std::string& caption);
};

/// A grid of texts with fixed rows and columns at its top and left, which stay when it scrolls. Rows and columns count
/// from 0, fixed ones included. A row or column that is not there raises error 30009 or 30010.
class MSFlexGrid : public Control {
public:
    MSFlexGrid(const Place& place, const std::string& name, const Box& box, int rows, int cols, int fixed_rows,
               int fixed_cols);

    int Rows() const;
    /// Fewer rows drop rows at the end, more add empty ones.
    void SetRows(int rows);
    int Cols() const;
    void SetCols(int cols);
    int FixedRows() const;
    int FixedCols() const;
    void SetFixed(int fixed_rows, int fixed_cols);

    /// The current cell. A user's click on a cell that is not fixed makes it the current one.
    int Row() const;
    void SetRow(int row);
    int Col() const;
    void SetCol(int col);
    std::string Text() const;
    void SetText(const std::string& text);
    Colour CellBackColor() const;
    void SetCellBackColor(Colour colour);

    std::string TextMatrix(int row, int col) const;
    void SetTextMatrix(int row, int col, const std::string& text);
    /// Empties every cell's text; colours stay.
    void Clear();
    /// Moves row `row` to position `to`; the rows between move up or down by one.
    void SetRowPosition(int row, int to);
    /// Aligns column `col` left with its headings, which stand in the middle of their cells at first.
    void SetColAlignmentLeft(int col);
    /// Shows equal neighbours of row `row` as one band.
    void SetMergeRow(int row, bool merge);
    /// With scroll bars, as at first, where the cells need them; without, a grid that never scrolls.
    void SetScrollBars(bool shown);

    float ColWidth(int col) const;  ///< twips
    void SetColWidth(int col, float width);
    float RowHeight(int row) const;  ///< twips
    void SetRowHeight(int row, float height);

    /// The cell under the mouse at the last click.
    int MouseRow() const { return mouse_row_; }
    int MouseCol() const { return mouse_col_; }
    Handler OnClick;

private:
    void CheckRow(int row) const;
    void CheckCol(int col) const;
    /// Gives the columns (rows) from `first` on their places in pixels.
    void PlaceCols();
    void PlaceRows(int first);

    class GridModel* cells_;
    class GridView* view_;
    std::vector<float> widths_, heights_;  ///< twips
    int row_, col_;                        ///< the current cell
    int mouse_row_ = 0, mouse_col_ = 0;
};

/// A drawing surface: a background that stays, and lines over it.
class PictureBox : public Control {
public:
    PictureBox(const Place& place, const std::string& name, const Box& box, const Drawing& background);
    /// Takes the lines away. The background stays; so does the pen.
    void Cls();
    /// Lines drawn since they were last taken away.
    std::size_t LineCount() const;
    /// Takes away all lines but the first `count`.
    void KeepLines(std::size_t count);
    /// The pen, in twips.
    float CurrentX() const;
    float CurrentY() const;
    void SetCurrent(float x, float y);
    /// A line one pixel wide from (x, y) to (x + dx, y + dy) in exactly `colour`; the pen moves to its end, worked out
    /// in single precision. Any length; what lies outside is cut off.
    void Line(float x, float y, float dx, float dy, Colour colour);
    /// Background and lines, at the background's size; also the widget's property `picture`.
    vantrel::Picture Image() const;

    /// While one lives, what is drawn comes onto the screen in the yields, but only once in a frame of 16 ms. Where it
    /// ends, the rest comes at once.
    class Frames {
    public:
        explicit Frames(PictureBox& surface);
        ~Frames();
        Frames(const Frames&) = delete;
        Frames& operator=(const Frames&) = delete;

    private:
        QWidget* widget_;
    };
};

class Menu {
public:
    Menu(Window& window, const std::string& name, const std::string& caption);
    QMenu* Widget() const { return menu_; }

private:
    friend class MenuItem;
    Window* window_;
    QMenu* menu_;
};

/// An entry of a menu, or of the menu bar itself. The caption "-" makes a separator.
class MenuItem {
public:
    MenuItem(Menu& menu, const std::string& name, const std::string& caption);
    MenuItem(Window& window, const std::string& name, const std::string& caption);
    ~MenuItem();
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;
    bool Enabled() const;
    void SetEnabled(bool enabled);
    Handler OnClick;

private:
    void Wire();
    Window* window_;
    QAction* action_;
    QObject* life_;  ///< lives as long as this object
};

}  // namespace vantrel
