#include "windows/Record_View_Draw.h"

#include "platform/files.h"
#include "platform/text.h"
#include "platform/toolkit/desktop.h"
#include "platform/toolkit/dialogs.h"
#include "state/shared.h"

#include <algorithm>

namespace vantrel {

namespace {

// Kept: K-25000
constexpr int kFirstTooMany = 25001;  // rows: a record of so many is not drawn whole

void Refuse(const RunTimeError& error) { MsgBox("The record cannot be drawn.\n\n" + std::string(error.what())); }

}  // namespace

Record_View_Draw::Record_View_Draw() : Window("Record_View_Draw", "Record Draw", {9285, 8985}) {
    color_box.SetBackColor(HighlightText());
    color_box.SetToolTipText("Choose the colour of the next trace");
    draw_limit.SetGaps({&draw_start, &draw_stop});
    // A name that is being typed is none yet: it is opened by Draw.
    // Kept: K-picked-only
    Combo_record.OnClick = [this] { Combo_record_Click(); };
    color_box.OnClick = [this] { color_box_Click(); };
    draw_start.OnKeyPress = draw_stop.OnKeyPress = TypesWholeNumber;
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
    Command3.OnClick = [this] { Command3_Click(); };
    Slider1.OnScroll = Slider1.OnClick = [this] { Slider1_Click(); };
}

void Record_View_Draw::Form_Load() {
    for (const std::string& entry : DbEntries()) Combo_record.AddItem(entry);  // Kept: K-mdb
    for (int k = 1; k <= kChannels; ++k) Combo_chan.AddItem("CH" + Str(k));
    Slider1.SetMin(1);
    Slider1.SetMax(11);
}

void Record_View_Draw::Form_Unload() { ++draws; }

void Record_View_Draw::Open_Draw_Record(const std::string& path) {
    const BusyCursor busy;  // while another program has the record locked
    Database database = TheDBEngine().OpenDatabase(path);
    Record_Rs = database.OpenRecordset("select * from data");
    Record_Db = database;
}

void Record_View_Draw::Combo_record_Click() {
    const BusyCursor busy;
    try {
        Open_Draw_Record(DbEntryPath(Combo_record.Text()));
        if (Record_Rs.RecordCount() == 0) {
            MsgBox("The Record is NULL.");
            Record_Db.Close();
            return;
        }
        Record_Rs.MoveLast();
        const std::int64_t count = Record_Rs.RecordCount();
        Data_RecordCount.SetCaption(Str(static_cast<double>(count)));
        const bool is_drawn_whole = count < kFirstTooMany;
        draw_all.SetEnabled(is_drawn_whole);
        draw_all.SetValue(is_drawn_whole);
        draw_limit.SetValue(!is_drawn_whole);
    } catch (const RunTimeError& error) {
        MsgBox("The record cannot be opened.\n\n" + Combo_record.Text() + ": " + error.what());
    }
}

// Kept: K-red
void Record_View_Draw::color_box_Click() { color_box.SetBackColor(ShowColor(kRed)); }

void Record_View_Draw::Command1_Click() {
    try {
        if (!CheckFields()) return;
    } catch (const RunTimeError& error) {
        Refuse(error);
        return;
    }
    Draw();
}

/// Puts the fields of Draw into shape. False: they do not do, and the user has been told.
bool Record_View_Draw::CheckFields() {
    const double division = Val(division_box.Text());  // Kept: K-fields-first
    division_box.SetText(division > 0 ? Str(division) : "1");
    offset_box.SetText(Str(Val(offset_box.Text())));
    // Kept: K-rec
    const std::string channel = Combo_chan.Text();
    const std::string record = Combo_record.Text();
    if (!Contains(channel, "CH") || !Contains(record, "Rec")) {
        MsgBox("Please select a Record or Channel");
        return false;
    }
    if (draw_limit.Value() && !CheckRange()) return false;  // Kept: K-no-choice
    draw_start.SetText(WholeText(Val(draw_start.Text())));
    draw_stop.SetText(WholeText(Val(draw_stop.Text())));
    return true;
}

bool Record_View_Draw::CheckRange() {
    if (Val(draw_start.Text()) < 1) draw_start.SetText("1");
    if (Val(Data_RecordCount.Caption()) < Val(draw_stop.Text())) draw_stop.SetText(Data_RecordCount.Caption());
    const double a = Val(draw_start.Text());
    const double b = Val(draw_stop.Text());
    if (a > 0 && a < b && b - a < kFirstTooMany) return true;
    // Kept: K-25000
    MsgBox(b - a > kFirstTooMany ? " The range should be set from 1 to 25000." : "Please setting a correct range.");
    return false;
}

void Record_View_Draw::Draw() {
    const RecordPlotState before = *this;
    const int slider_min = Slider1.Min();
    const int slider_max = Slider1.Max();
    const int slider_value = Slider1.Value();
    const bool slider_enabled = Slider1.Enabled();
    lines_kept = draw_pic.LineCount();
    try {
        DrawChosen(++draws);
    } catch (const RunTimeError& error) {
        draw_pic.KeepLines(lines_kept);
        const std::size_t still_kept = std::min(lines_kept, before.lines_kept);  // Clean may have taken lines away
        static_cast<RecordPlotState&>(*this) = before;
        lines_kept = still_kept;
        Slider1.SetMin(slider_min);
        Slider1.SetMax(slider_max);
        Slider1.SetValue(slider_value);
        Slider1.SetEnabled(slider_enabled);
        Refuse(error);
    }
}

void Record_View_Draw::DrawChosen(int draw) {
    const std::string path = DbEntryPath(Combo_record.Text());
    Open_Draw_Record(path);
    Record_Path = path;
    Record_Channel = Combo_chan.Text();
    Draw_Record();  // Kept: K-laid-over
    if (draws == draw) Slider1_Click();
}

void Record_View_Draw::Command2_Click() {
    draw_pic.Cls();
    lines_kept = 0;
}

void Record_View_Draw::Command3_Click() { Unload<Record_View_Draw>(); }

}  // namespace vantrel
