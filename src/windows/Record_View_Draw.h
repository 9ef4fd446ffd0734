// The record plot: one channel of a stored record against the row number, with a slider that reads stored values.
#pragma once

#include "platform/dbengine.h"
#include "platform/picture.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/picture_box.h"
#include "platform/toolkit/window.h"

namespace vantrel {

/// The drawn background of the record plot: 10 columns by 10 rows, 583 by 334 pixels.
Drawing RecordPlotBackground();

/// Which record is drawn, and how far. A Draw that fails puts it back as it was, so that a Draw in whose yield it was
/// pressed goes on.
struct RecordPlotState {
    Database Record_Db;          ///< the database open at present
    Recordset Record_Rs;         ///< the recordset in use
    std::string Record_Path;     ///< full path of the record of the last Draw; empty before the first
    std::string Record_Channel;  ///< text of Combo_chan at the last Draw

    double Row_Index = 0;  ///< the row that is drawn or read
    double Row_First = 0;  ///< of the range that is drawn
    double Row_Last = 0;

    int draws = 0;  ///< Draws so far but for those that failed; closing the dialog counts as one. A later one ends the
                    ///< one under way.
    std::size_t lines_kept = 0;  ///< lines on draw_pic that do not belong to the Draw under way
};

struct Record_View_Draw : Window, RecordPlotState {
    Record_View_Draw();

    Frame Frame1{*this, "Frame1", {240, 120, 7455, 2295}, "Setting"};
    ComboBox Combo_record{Frame1, "Combo_record", {120, 240, 3495, 315}, "Please choice a record."};  // Kept: K-texts
    ComboBox Combo_chan{Frame1, "Combo_chan", {3840, 240, 3495, 315}, "Please chocice a channel."};
    Label Label1{Frame1, "Label1", {120, 720, 1215, 255}, "Data Quantity :"};
    Label Data_RecordCount{Frame1, "Data_RecordCount", {1680, 720, 855, 255}, "0"};
    OptionButton draw_all{Frame1, "draw_all", {120, 1200, 3375, 255}, "Drawing with all."};
    OptionButton draw_limit{Frame1, "draw_limit", {120, 1680, 3495, 375}, "Drawing data from                    to"};
    TextBox draw_start{Frame1, "draw_start", {1800, 1680, 735, 375}};
    TextBox draw_stop{Frame1, "draw_stop", {2880, 1680, 735, 375}};
    Label Label2{Frame1, "Label2", {3960, 720, 975, 255}, "Color Print :"};
    Label color_box{Frame1, "color_box", {5040, 600, 2175, 375}, ""};
    Label Label4{Frame1, "Label4", {3960, 1200, 735, 255}, "Offset :"};
    TextBox offset_box{Frame1, "offset_box", {5040, 1080, 2175, 405}, "0"};
    Label Label3{Frame1, "Label3", {3960, 1800, 735, 255}, "Division :"};
    TextBox division_box{Frame1, "division_box", {5040, 1680, 2175, 405}, "1"};
    CommandButton Command1{*this,  "Command1", {7800, 240, 1335, 495},
                           "Draw", "",         "Draw the channel over what is drawn already"};
    CommandButton Command2{*this, "Command2", {7800, 960, 1335, 495}, "Clean", "", "Take all traces away"};
    CommandButton Command3{*this, "Command3", {7800, 1920, 1335, 495}, "Exit", "", "Close this window"};
    PictureBox draw_pic{*this, "draw_pic", {240, 2640, 8775, 5010}, RecordPlotBackground()};
    Slider Slider1{*this, "Slider1", {120, 7800, 9015, 255}};
    TextBox Text1{*this, "Text1", {360, 8160, 375, 285}, "1"};
    TextBox show_value{*this, "show_value", {240, 8520, 8775, 375}};

    // Defined in plot/Record_View_Draw.cpp:
    void Form_Load() override;
    void Form_Unload() override;
    void Combo_record_Click();
    void color_box_Click();
    void Command1_Click();  ///< Draw
    void Command2_Click();  ///< Clean
    void Command3_Click();  ///< Exit
    /// Opens the record at `path` into Record_Db and all its rows into Record_Rs.
    void Open_Draw_Record(const std::string& path);

    // Defined in plot/record_plot.cpp:
    void Slider1_Click();  ///< reads the value at the slider
    /// Draws the channel over the range, after a repair of the row numbers in the file. Yields after every row. What
    /// cannot be drawn is a run-time error that says what it is; what the repair wrote is then taken back, unless rows
    /// have been drawn already.
    void Draw_Record();

private:
    // Defined in plot/Record_View_Draw.cpp:
    bool CheckFields();
    bool CheckRange();
    void Draw();
    /// The steps of Draw, which stop early when a later Draw, or the closing of the dialog, ends this one.
    void DrawChosen(int draw);

    // Defined in plot/record_plot.cpp:
    bool RepairRows();
    void WalkRows();
    void TakeRange();
    void CheckRows(const std::string& channel) const;
    void DrawRows(int draw, double y_scale);  ///< `y_scale`: twips per unit of value
    /// The text of `channel`, "CH1" to "CH20", in row `row`; `otherwise` for any other channel.
    std::string StoredText(Database& database, double row, const std::string& channel, const std::string& otherwise);
};

}  // namespace vantrel
