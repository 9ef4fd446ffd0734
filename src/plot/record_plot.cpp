// Draws a channel of a stored record, and reads its values back at the slider.

#include "platform/toolkit/desktop.h"
#include "platform/toolkit/dialogs.h"
#include "platform/toolkit/events.h"
#include "plot/trend_scale.h"
#include "records/record_store.h"
#include "state/shared.h"
#include "windows/Record_View_Draw.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace vantrel {

namespace {

constexpr const char* kNoReading = " ";
constexpr double kOverload = 9.9E+8;  // of a reading; and in twips, the step that is drawn for one beyond it
constexpr int kGridRows = 10;
const std::vector<std::string> kNoColumns;  // of rows that need only be there

bool IsChannel(const std::string& name) {
    static const std::vector<std::string> channels = [] {
        std::vector<std::string> names;
        for (int k = 1; k <= kChannels; ++k) names.push_back("CH" + Str(k));
        return names;
    }();
    return std::ranges::find(channels, name) != channels.end();
}

std::string NotThere(double row) { return "Row " + Str(row) + " is not in the record."; }

std::string HoldsNothing(double row, const std::string& channel) {
    return "Row " + Str(row) + " holds nothing for " + channel + ".";
}

}  // namespace

void Record_View_Draw::Draw_Record() {
    const int draw = draws;
    Slider1.SetEnabled(false);
    const double y_scale = Divide(static_cast<double>(draw_pic.Height()) / kGridRows, Val(division_box.Text()));
    if (!RepairRows()) {
        MsgBox("The Record is NULL.");
    } else {
        Slider1.SetMax(static_cast<int>(RoundHalfEven(Row_Last)));
        Slider1.SetMin(static_cast<int>(RoundHalfEven(Row_First)));
        DrawRows(draw, y_scale);
    }
    if (draws == draw) Slider1.SetEnabled(true);
}

/// Numbers the rows of the record anew and takes the range that is to be drawn. What cannot be drawn is refused here,
/// while the file can still be left as it was. False: the record has no rows.
bool Record_View_Draw::RepairRows() {
    const BusyCursor busy;
    Database::Transaction repair(Record_Db);
    try {
        if (Record_Rs.RecordCount() != 0) WalkRows();
        if (Record_Rs.RecordCount() != 0) TakeRange();
    } catch (const RunTimeError&) {
        repair.Undo();
        throw;
    }
    repair.Commit();
    return Record_Rs.RecordCount() != 0;
}

void Record_View_Draw::WalkRows() {
    RequireRecordColumns(Record_Rs);
    Renumber<std::int32_t>(Record_Rs);
    const std::string channel = Combo_chan.Text();
    if (IsChannel(channel)) CheckRows(channel);
}

/// Refuses a row of the range that cannot be drawn.
void Record_View_Draw::CheckRows(const std::string& channel) const {
    const double first = draw_limit.Value() ? Val(draw_start.Text()) : 1;
    const double last = draw_limit.Value() ? Val(draw_stop.Text()) : std::numeric_limits<double>::max();
    std::string fault;
    double row = first;
    Record_Rs.Scan(static_cast<std::int64_t>(first), {"num", channel}, [&](const auto& texts) {
        if (row > last) return false;
        if (texts[0] != Str(row))  // Kept: K-same-number
            fault = "Row " + Str(row) + " is not found under its number.";
        else if (!texts[1])
            fault = HoldsNothing(row, channel);
        row += 1;
        return fault.empty();
    });
    if (!fault.empty()) throw RunTimeError(kNoCurrentRecord, fault);
}

void Record_View_Draw::TakeRange() {
    Record_Rs.MoveLast();
    const auto count = static_cast<double>(Record_Rs.RecordCount());
    Row_First = draw_limit.Value() ? Val(draw_start.Text()) : 1;
    Row_Last = draw_limit.Value() ? Val(draw_stop.Text()) : count;
    if (Row_First == Row_Last) throw RunTimeError(kDivisionByZero, "A line needs two rows, and there is only one.");
    if (Row_Last > count && IsChannel(Combo_chan.Text()))
        throw RunTimeError(kNoCurrentRecord, NotThere(std::max(Row_First, count + 1)));
}

void Record_View_Draw::DrawRows(int draw, double y_scale) {
    const PictureBox::Frames frames(draw_pic);
    Database database = Record_Db;  // another record may be chosen meanwhile
    const double x_step = static_cast<double>(draw_pic.Width()) / (Row_Last - Row_First);
    const double base = static_cast<double>(draw_pic.Height()) / 2;
    double x = -x_step;  // Kept: K-from-outside
    double y = base;
    std::string t;
    std::string p;

    const auto step = [&](double dy) {
        if (!FitsSingle(y))
            throw RunTimeError(kOverflow, "The reading in row " + Str(Row_Index - 1) + ", behind a gap, is too large.");
        Trend_Step(draw_pic, x, y, x_step, dy, color_box.BackColor());
        x = draw_pic.CurrentX();
        y = draw_pic.CurrentY();
    };
    for (Row_Index = Row_First; Row_Index <= Row_Last; Row_Index += 1.0) {
        t = StoredText(database, Row_Index, Combo_chan.Text(), t);  // Kept: K-read-anew
        const double up = (Val(t) - Val(offset_box.Text())) * y_scale;
        const double d = up - (base - y);
        // Kept: K-gaps
        if (p == kNoReading && t != kNoReading) {
            x = x + x_step;
            // Not y - d: between two gaps the pen may have been at an overload, beyond all precision.
            y = base - up;
        } else if (Val(t) > kOverload) {
            // An overload drops off the lower edge. Kept: K-overload
            step(kOverload);
        } else if (Val(t) < -kOverload) {
            step(-kOverload);
        } else if (t == kNoReading) {
            x = x + x_step;
            y = -d;
        } else {
            step(-d);
        }
        p = t;
        DoEvents();
        if (draws != draw) return;
    }
}

std::string Record_View_Draw::StoredText(Database& database, double row, const std::string& channel,
                                         const std::string& otherwise) {
    const bool is_channel = IsChannel(channel);
    const std::vector<std::string> wanted(is_channel ? 1 : 0, channel);
    Record_Rs = database.OpenRecordset("select * from data where NUM='" + Str(row) + "'", wanted);
    if (!is_channel) return otherwise;
    if (Record_Rs.Bof()) throw RunTimeError(kNoCurrentRecord, NotThere(row));
    const std::optional<std::string> text = Record_Rs.Value(channel);
    if (!text) throw RunTimeError(kInvalidNull, HoldsNothing(row, channel));
    return *text;
}

void Record_View_Draw::Slider1_Click() {
    if (Record_Path.empty()) return;  // nothing has been drawn
    try {
        Database database = TheDBEngine().OpenDatabase(Record_Path);  // Kept: K-cursor
        Record_Rs = database.OpenRecordset("select * from data", kNoColumns);
        Record_Db = database;
        Row_Index = Slider1.Value();
        Text1.SetText(Str(Row_Index));
        if (Record_Rs.RecordCount() != 0) show_value.SetText(StoredText(Record_Db, Row_Index, Record_Channel, ""));
        Record_Db.Close();
    } catch (const RunTimeError& error) {
        Record_Db.Close();
        MsgBox("The value cannot be read.\n\n" + std::string(error.what()));
    }
}

}  // namespace vantrel
