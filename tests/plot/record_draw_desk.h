// The record plot's dialog, with a person before it.
#pragma once

#include "plot/expected_plot.h"
#include "support/desk.h"
#include "support/errors.h"
#include "support/records.h"
#include "support/texts.h"
#include "windows/Form1.h"
#include "windows/Record_View_Draw.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vantrel {

inline constexpr const char* kDialog = "Record_View_Draw";

/// CH1 lies one grid row above the zero line, every other channel one below.
inline std::string Level(int, int channel) { return channel == 1 ? "1" : "-1"; }

class RecordDraw : public Desk {
protected:
    RecordDraw() { Open(""); }

    /// Opens the dialog, runs `steps`, Exit.
    void Dialog(const User::Action& steps) {
        user.WhenShown(kDialog, [this, steps] {
            steps();
            if (user.Sees(kDialog)) user.Click(kDialog, "Command3");
        });
        user.Menu("Record_Draw");
    }
    std::string Text(const std::string& control) const { return user.Text(kDialog, control); }
    bool Chosen(const std::string& option) const { return user.Checked(kDialog, option); }
    void Type(const std::string& control, const std::string& text) { user.Type(kDialog, control, text); }
    void Choose(const std::string& record) { user.Pick(kDialog, "Combo_record", record); }
    void ChooseChannel(const std::string& channel) { user.Pick(kDialog, "Combo_chan", channel); }
    void ChooseRange(const std::string& from, const std::string& to) {
        user.Click(kDialog, "draw_limit");
        Type("draw_start", from);
        Type("draw_stop", to);
    }
    void Draw() { user.Click(kDialog, "Command1"); }
    /// Has `action` done in the program's next yield.
    void InTheNextYield(const User::Action& action) { QMetaObject::invokeMethod(&user, action, Qt::QueuedConnection); }
    std::string LastMessage() const { return user.Messages().empty() ? "" : user.Messages().back(); }
    static Picture Plot() { return The<Record_View_Draw>().draw_pic.Image(); }
    static int Dots(Colour colour) {
        const Picture plot = Plot();
        return static_cast<int>(std::ranges::count(plot.pixels, colour));
    }

    /// All that the user sees and the cursor rests on, but for the two combos.
    struct Sight {
        Texts texts;
        std::vector<Colour> pixels;
        bool operator==(const Sight&) const = default;
    };
    Sight Standing() const {
        const Record_View_Draw& form = The<Record_View_Draw>();
        Sight now = {{form.Record_Path, form.Record_Channel, Str(form.Slider1.Min()), Str(form.Slider1.Max()),
                      Str(form.Slider1.Value()), Str(form.Slider1.Enabled()), Str(form.draw_all.Enabled())},
                     Plot().pixels};
        for (const char* field :
             {"Data_RecordCount", "draw_start", "draw_stop", "offset_box", "division_box", "Text1", "show_value"})
            now.texts.push_back(Text(field));
        for (const char* option : {"draw_all", "draw_limit"}) now.texts.push_back(Chosen(option) ? "on" : "off");
        return now;
    }
};

}  // namespace vantrel
