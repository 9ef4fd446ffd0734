// The controls: label, frame, image, button, fields, choices, lists, date and number fields, slider, tab strip.
#pragma once

#include "platform/clock.h"
#include "platform/toolkit/control.h"

#include <functional>
#include <string>
#include <vector>

namespace vantrel {

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
    /// `icon`: name of one of the program's icons, or empty. `spoken_name`: what a screen reader calls a button without
    /// a caption; if empty, the tool tip.
    CommandButton(const Place& place, const std::string& name, const Box& box, const std::string& caption,
                  const std::string& icon = "", const std::string& tool_tip = "", const std::string& spoken_name = "");
    Handler OnClick;
};

class TextBox : public Control {
public:
    TextBox(const Place& place, const std::string& name, const Box& box, const std::string& text = "");
    std::string Text() const;
    /// A text that differs runs OnChange.
    void SetText(const std::string& text);
    /// Selects the whole text as well, so that typing takes its place.
    void SetFocus() override;
    Handler OnChange;
    Handler OnClick;
    /// Asked for every character key (backspace, 8, and Escape, 27, are two; Tab, arrows, Delete and shortcuts are
    /// none); false swallows it. Pasted text is not asked for.
    std::function<bool(int character)> OnKeyPress;
};

/// What a field for a whole number lets pass: digits and backspace.
bool TypesWholeNumber(int character);

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
    /// Has the caption leave room for `controls`, from the left, which stand in it: several blanks in a row are the gap
    /// for one of them.
    void SetGaps(const std::vector<const Control*>& controls);
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

}  // namespace vantrel
