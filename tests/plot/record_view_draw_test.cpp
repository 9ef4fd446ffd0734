// The record plot's dialog: its fields, what they take, and what Draw makes of them. The drawing itself is tested
// apart.
#include "platform/toolkit/desktop.h"
#include "plot/placed.h"
#include "plot/record_draw_desk.h"

#include <array>
#include <filesystem>
#include <set>

namespace vantrel {
namespace {

constexpr const char* kNoNames = "Please select a Record or Channel";
constexpr const char* kWrongRange = "Please setting a correct range.";
constexpr const char* kTooLong = " The range should be set from 1 to 25000.";
constexpr const char* kEmpty = "The Record is NULL.";

// ---- The window

TEST_F(RecordDraw, Controls_stand_on_their_places) {
    Dialog([this] {
        Record_View_Draw& form = The<Record_View_Draw>();
        EXPECT_EQ(user.Caption(kDialog), "Record Draw");
        EXPECT_EQ(form.ClientArea()->size(), QSize(9285 / 15, 8985 / 15));
        ExpectPlaces({{&form.Frame1, {240, 120, 7455, 2295}},
                      {&form.Combo_record, {120, 240, 3495, 315}},
                      {&form.Combo_chan, {3840, 240, 3495, 315}},
                      {&form.Label1, {120, 720, 1215, 255}},
                      {&form.Data_RecordCount, {1680, 720, 855, 255}},
                      {&form.draw_all, {120, 1200, 3375, 255}},
                      {&form.draw_limit, {120, 1680, 3495, 375}},
                      {&form.draw_start, {1800, 1680, 735, 375}},
                      {&form.draw_stop, {2880, 1680, 735, 375}},
                      {&form.Label2, {3960, 720, 975, 255}},
                      {&form.color_box, {5040, 600, 2175, 375}},
                      {&form.Label4, {3960, 1200, 735, 255}},
                      {&form.offset_box, {5040, 1080, 2175, 405}},
                      {&form.Label3, {3960, 1800, 735, 255}},
                      {&form.division_box, {5040, 1680, 2175, 405}},
                      {&form.Command1, {7800, 240, 1335, 495}},
                      {&form.Command2, {7800, 960, 1335, 495}},
                      {&form.Command3, {7800, 1920, 1335, 495}},
                      {&form.draw_pic, {240, 2640, 8775, 5010}},
                      {&form.Slider1, {120, 7800, 9015, 255}},
                      {&form.Text1, {360, 8160, 375, 285}},
                      {&form.show_value, {240, 8520, 8775, 375}}});
    });
}

TEST_F(RecordDraw, The_settings_stand_inside_the_frame_and_all_else_outside) {
    Dialog([this] {
        const std::set<std::string> inside = {
            "Combo_record", "Combo_chan", "Label1",    "Data_RecordCount", "draw_all",   "draw_limit", "draw_start",
            "draw_stop",    "Label2",     "color_box", "Label4",           "offset_box", "Label3",     "division_box"};
        const QObject* const frame = user.FindControl(kDialog, "Frame1");
        for (const std::string& name : inside) EXPECT_EQ(user.FindControl(kDialog, name)->parent(), frame) << name;
        for (const char* name : {"Command1", "Command2", "Command3", "draw_pic", "Slider1", "Text1", "show_value"})
            EXPECT_NE(user.FindControl(kDialog, name)->parent(), frame) << name;
    });
}

TEST_F(RecordDraw, Controls_say_what_they_are) {
    Dialog([this] {
        const std::vector<std::pair<std::string, std::string>> texts = {
            {"Frame1", "Setting"},
            {"Combo_record", "Please choice a record."},
            {"Combo_chan", "Please chocice a channel."},
            {"Label1", "Data Quantity :"},
            {"Data_RecordCount", "0"},
            {"draw_all", "Drawing with all."},
            {"draw_limit", "Drawing data from                    to"},
            {"draw_start", ""},
            {"draw_stop", ""},
            {"Label2", "Color Print :"},
            {"color_box", ""},
            {"Label4", "Offset :"},
            {"offset_box", "0"},
            {"Label3", "Division :"},
            {"division_box", "1"},
            {"Command1", "Draw"},
            {"Command2", "Clean"},
            {"Command3", "Exit"},
            {"Text1", "1"},
            {"show_value", ""}};
        for (const auto& [control, text] : texts) EXPECT_EQ(Text(control), text) << control;
    });
}

TEST_F(RecordDraw, Opens_with_its_slider_from_1_to_11_and_neither_way_of_drawing_chosen) {
    Dialog([this] {
        const Slider& slider = The<Record_View_Draw>().Slider1;
        EXPECT_EQ(slider.Min(), 1);
        EXPECT_EQ(slider.Max(), 11);
        EXPECT_EQ(slider.Value(), 1);
        EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
        EXPECT_FALSE(Chosen("draw_all"));
        EXPECT_FALSE(Chosen("draw_limit"));
        EXPECT_TRUE(user.Enabled(kDialog, "draw_all"));
    });
}

TEST_F(RecordDraw, The_swatch_starts_in_the_colour_of_highlighted_text) {
    Dialog([] { EXPECT_EQ(The<Record_View_Draw>().color_box.BackColor(), HighlightText()); });
}

TEST_F(RecordDraw, Every_pixel_of_the_background_is_as_laid_out) {
    Dialog([] {
        constexpr std::array columns = {58, 116, 174, 232, 291, 349, 407, 465, 523};
        constexpr std::array rows = {32, 66, 99, 132, 166, 199, 232, 265, 299};
        const auto on_line = [](const auto& lines, int at) {
            return std::ranges::any_of(lines, [at](int line) { return at == line || at == line + 1; });
        };
        Picture expected{583, 334, {}};
        for (int y = 0; y < 334; ++y) {
            for (int x = 0; x < 583; ++x) {
                const bool edge = x == 0 || x == 582 || y == 333;
                const bool grid = edge || on_line(columns, x) || on_line(rows, y);
                expected.pixels.push_back(grid ? RGB(0, 96, 96) : RGB(0, 0, 0));
            }
        }
        ExpectSame(Plot(), expected);
    });
}

TEST_F(RecordDraw, Tab_goes_through_the_settings_the_buttons_and_the_cursor) {
    Dialog([this] {
        The<Record_View_Draw>().draw_all.SetValue(true);
        The<Record_View_Draw>().Combo_record.SetFocus();
        Texts stops;
        for (int i = 0; i < 13; ++i) {
            user.Press(kDialog, Qt::Key_Tab);
            stops.push_back(user.FindWindow(kDialog)->focusWidget()->objectName().toStdString());
        }
        EXPECT_EQ(stops, (Texts{"Combo_chan", "draw_all", "draw_start", "draw_stop", "color_box", "offset_box",
                                "division_box", "Command1", "Command2", "Command3", "Slider1", "Text1", "show_value"}));
    });
}

TEST_F(RecordDraw, Fits_the_screen_of_a_laptop) {
    Dialog([this] {
        const QSize size = user.FindWindow(kDialog)->size();
        EXPECT_LE(size.width(), 1366);
        EXPECT_LE(size.height(), 768 - 80);  // less a title bar and a panel
    });
}

// ---- Opening and closing

TEST_F(RecordDraw, Is_modal_from_the_menu_and_from_the_tool_bar) {
    for (const bool from_menu : {true, false}) {
        bool was_modal = false;
        user.WhenShown(kDialog, [&] {
            was_modal = user.FindWindow(kDialog)->isModal();
            user.Click(kDialog, "Command3");
        });
        from_menu ? user.Menu("Record_Draw") : user.Click("Form1", "Command9");
        EXPECT_TRUE(was_modal) << (from_menu ? "menu" : "tool bar");
        EXPECT_FALSE(user.Sees(kDialog));
    }
}

TEST_F(RecordDraw, Exit_and_the_close_box_unload_it) {
    Dialog([this] { user.Click(kDialog, "Command3"); });
    EXPECT_FALSE(IsLoaded<Record_View_Draw>());
    Dialog([this] { user.Close(kDialog); });
    EXPECT_FALSE(IsLoaded<Record_View_Draw>());
}

TEST_F(RecordDraw, Loads_anew_each_time) {
    MakeRecord(Record("Record1"), 3, Level);
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        Type("division_box", "2");
        Draw();
        EXPECT_GT(Dots(HighlightText()), 0);
    });
    MakeRecord(Record("Record2"), 1);
    Dialog([this] {
        EXPECT_EQ(user.Entries(kDialog, "Combo_record").size(), 2U);
        EXPECT_EQ(Text("Combo_record"), "Please choice a record.");
        EXPECT_EQ(Text("Data_RecordCount"), "0");
        EXPECT_EQ(Text("division_box"), "1");
        EXPECT_FALSE(Chosen("draw_all"));
        EXPECT_EQ(Dots(HighlightText()), 0);
        EXPECT_EQ(The<Record_View_Draw>().Record_Path, "");
        EXPECT_EQ(The<Record_View_Draw>().Slider1.Max(), 11);
    });
}

TEST_F(RecordDraw, Lists_what_ends_in_exactly_mdb_in_the_systems_order_with_its_extension) {
    for (const char* name : {"Record2.mdb", "x.mdb", "Record1.mdb", ".mdb", "Record3.MDB", "Record4.mdb-journal", "y"})
        WriteFileBytes((folder / "db/") + name, "");
    std::filesystem::create_directory(folder / "db/Folder.mdb");
    Texts expected;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "db")) {
        const std::string name = entry.path().filename().string();
        if (std::set<std::string>{"Record2.mdb", "x.mdb", "Record1.mdb", ".mdb", "Folder.mdb"}.contains(name))
            expected.push_back(name);
    }
    Dialog([&] { EXPECT_EQ(user.Entries(kDialog, "Combo_record"), expected); });
}

TEST_F(RecordDraw, Lists_the_channels_from_CH1_to_CH20) {
    Texts channels;
    for (int k = 1; k <= 20; ++k) channels.push_back("CH" + std::to_string(k));
    Dialog([&] { EXPECT_EQ(user.Entries(kDialog, "Combo_chan"), channels); });
}

TEST_F(RecordDraw, Opens_without_the_folder_of_records) {
    std::filesystem::remove(folder / "db");
    Dialog([this] { EXPECT_EQ(user.Entries(kDialog, "Combo_record"), Texts{}); });
    EXPECT_FALSE(std::filesystem::exists(folder / "db"));
}

// ---- Choosing a record

TEST_F(RecordDraw, A_chosen_record_shows_its_rows_and_is_drawn_whole) {
    MakeRecord(Record("Record1"), 7);
    Dialog([this] {
        user.Click(kDialog, "draw_limit");
        Choose("Record1.mdb");
        EXPECT_EQ(Text("Data_RecordCount"), "7");
        EXPECT_TRUE(Chosen("draw_all"));
        EXPECT_FALSE(Chosen("draw_limit"));
        EXPECT_TRUE(user.Enabled(kDialog, "draw_all"));
    });
}

TEST_F(RecordDraw, A_record_of_25000_rows_can_be_drawn_whole) {
    MakeRecord(Record("Record1"), 25000);
    Dialog([this] {
        Choose("Record1.mdb");
        EXPECT_EQ(Text("Data_RecordCount"), "25000");
        EXPECT_TRUE(user.Enabled(kDialog, "draw_all"));
        EXPECT_TRUE(Chosen("draw_all"));
        EXPECT_FALSE(Chosen("draw_limit"));
    });
}

TEST_F(RecordDraw, A_record_of_25001_rows_needs_a_range_until_a_smaller_one_is_chosen) {
    MakeRecord(Record("Record1"), 25001);
    MakeRecord(Record("Record2"), 2);
    Dialog([this] {
        Choose("Record2.mdb");
        Choose("Record1.mdb");
        EXPECT_EQ(Text("Data_RecordCount"), "25001");
        EXPECT_FALSE(user.Enabled(kDialog, "draw_all"));
        EXPECT_FALSE(Chosen("draw_all"));
        EXPECT_TRUE(Chosen("draw_limit"));
        Choose("Record2.mdb");
        EXPECT_TRUE(user.Enabled(kDialog, "draw_all"));
        EXPECT_TRUE(Chosen("draw_all"));
        EXPECT_FALSE(Chosen("draw_limit"));
    });
}

TEST_F(RecordDraw, A_record_without_rows_is_told_and_closed_and_changes_nothing) {
    MakeRecord(Record("Record1"), 7);
    MakeRecord(Record("Record2"), 0);
    Dialog([this] {
        Choose("Record1.mdb");
        user.Click(kDialog, "draw_limit");
        const Sight before = Standing();
        Choose("Record2.mdb");
        EXPECT_EQ(user.Messages(), Texts{kEmpty});
        EXPECT_EQ(Standing(), before);
        EXPECT_EQ(Text("Data_RecordCount"), "7");
        EXPECT_EQ(ErrorOf([] { The<Record_View_Draw>().Record_Db.OpenRecordset("select * from data"); }),
                  kObjectClosed);
    });
}

TEST_F(RecordDraw, A_chosen_record_stays_open_for_others_to_write_to) {
    MakeRecord(Record("Record1"), 7);
    Dialog([this] {
        Choose("Record1.mdb");
        EXPECT_EQ(ErrorOf([&] { Kill(Record("Record1")); }), kPermissionDenied);
        Recordset rows = TheDBEngine().OpenDatabase(Record("Record1")).OpenRecordset("select * from data");
        rows.AddNew();
        rows.Update();
        EXPECT_EQ(RowsOf(Record("Record1")).size(), 8U);
    });
}

TEST_F(RecordDraw, Closing_it_gives_the_chosen_record_free) {
    MakeRecord(Record("Record1"), 7);
    Dialog([this] { Choose("Record1.mdb"); });
    Kill(Record("Record1"));
    EXPECT_FALSE(FileExists(Record("Record1")));
}

TEST_F(RecordDraw, A_choice_alone_changes_nothing_in_the_file) {
    MakeRecord(Record("Record1"), 3);
    Recordset rows = TheDBEngine().OpenDatabase(Record("Record1")).OpenRecordset("select * from data");
    rows.AddNew();  // without a number: drawing would remove it
    rows.Update();
    rows = {};
    const std::string before = FileBytes(Record("Record1"));
    Dialog([this] {
        Choose("Record1.mdb");
        EXPECT_EQ(Text("Data_RecordCount"), "4");
    });
    EXPECT_EQ(FileBytes(Record("Record1")), before);
}

TEST_F(RecordDraw, A_typed_name_stays_as_it_is_typed_and_opens_nothing_by_itself) {
    MakeRecord(Record("Record1"), 3);
    Dialog([this] {
        Type("Combo_record", "record1.MDB");
        Type("Combo_chan", "ch1");
        user.Press(kDialog, "Combo_chan", Qt::Key_Return);
        user.Press(kDialog, Qt::Key_Tab);
        EXPECT_EQ(Text("Combo_record"), "record1.MDB");
        EXPECT_EQ(Text("Combo_chan"), "ch1");
        Type("Combo_record", "Record1.mdb");
        EXPECT_EQ(Text("Data_RecordCount"), "0");
        EXPECT_FALSE(Chosen("draw_all"));
        EXPECT_EQ(user.Messages(), Texts{});
    });
}

// ---- Fields

TEST_F(RecordDraw, Row_numbers_take_digits_and_backspace_only) {
    Dialog([this] {
        for (const char* field : {"draw_start", "draw_stop"}) {
            Type(field, "1a2-3+.,4 eE/:5");
            EXPECT_EQ(Text(field), "12345");
            user.Press(kDialog, field, Qt::Key_Backspace);
            EXPECT_EQ(Text(field), "1234");
            Type(field, "0123456789");
            EXPECT_EQ(Text(field), "0123456789");
        }
    });
}

TEST_F(RecordDraw, Division_and_offset_take_any_key) {
    Dialog([this] {
        for (const char* field : {"division_box", "offset_box"}) {
            Type(field, "-1.5E+3x");
            EXPECT_EQ(Text(field), "-1.5E+3x");
        }
    });
}

TEST_F(RecordDraw, The_swatch_takes_the_chosen_colour_offered_red_first) {
    Dialog([this] {
        user.AnswerColor(RGB(1, 2, 3));
        user.Click(kDialog, "color_box");
        EXPECT_EQ(user.OfferedColor(), kRed);
        EXPECT_EQ(The<Record_View_Draw>().color_box.BackColor(), RGB(1, 2, 3));
        user.AnswerColor(RGB(4, 5, 6));
        user.Click(kDialog, "color_box");
        EXPECT_EQ(user.OfferedColor(), kRed);
        EXPECT_EQ(The<Record_View_Draw>().color_box.BackColor(), RGB(4, 5, 6));
    });
}

TEST_F(RecordDraw, The_swatch_offers_its_colours_by_keyboard_too) {
    Dialog([this] {
        user.AnswerColor(RGB(1, 2, 3));
        user.Press(kDialog, "color_box", Qt::Key_Space);
        EXPECT_EQ(The<Record_View_Draw>().color_box.BackColor(), RGB(1, 2, 3));
    });
}

TEST_F(RecordDraw, A_cancelled_colour_paints_the_swatch_red) {
    Dialog([this] {
        The<Record_View_Draw>().color_box.SetBackColor(RGB(1, 2, 3));
        user.AnswerColor({});
        user.Click(kDialog, "color_box");
        EXPECT_EQ(The<Record_View_Draw>().color_box.BackColor(), kRed);
    });
}

// ---- Draw: the checks

TEST_F(RecordDraw, Division_and_offset_become_plain_numbers_before_the_names_are_checked) {
    struct Case {
        const char *division, *clean_division, *offset, *clean_offset;
    };
    Dialog([this] {
        for (const Case& it : {Case{"2.50V", "2.5", "-1.50x", "-1.5"}, Case{"0", "1", "", "0"},
                               Case{"-3", "1", "abc", "0"}, Case{"", "1", " 7 8", "7"}, Case{"x", "1", "+1E2", "100"},
                               Case{".5", "0.5", "-0", "0"}, Case{"0.25", "0.25", "1,5", "1"}}) {
            Type("division_box", it.division);
            Type("offset_box", it.offset);
            Draw();
            EXPECT_EQ(Text("division_box"), it.clean_division);
            EXPECT_EQ(Text("offset_box"), it.clean_offset);
        }
        EXPECT_EQ(user.Messages(), Texts(7, kNoNames));
    });
}

TEST_F(RecordDraw, Numbers_beyond_all_range_are_told) {
    Dialog([this] {
        for (const char* field : {"division_box", "offset_box"}) {
            Type(field, "1E999");
            Draw();
            Type(field, "1");
        }
        EXPECT_EQ(user.Messages(), Texts(2, "The record cannot be drawn.\n\nOverflow"));
    });
}

TEST_F(RecordDraw, Needs_CH_in_the_channel_and_Rec_in_the_record) {
    struct Case {
        const char *record, *channel;
    };
    MakeRecord(folder / "db/other.mdb", 3);
    Dialog([this] {
        for (const Case& it :
             {Case{"Please choice a record.", "CH1"}, Case{"Record1.mdb", "Please chocice a channel."},
              Case{"record1.mdb", "CH1"}, Case{"Record1.mdb", "ch1"}, Case{"Record1.mdb", "C H1"}, Case{"", "CH1"},
              Case{"Record1.mdb", ""}, Case{"REC1.mdb", "CH1"}, Case{"other.mdb", "CH1"}}) {
            Type("Combo_record", it.record);
            Type("Combo_chan", it.channel);
            Draw();
        }
        EXPECT_EQ(user.Messages(), Texts(9, kNoNames));
    });
}

TEST_F(RecordDraw, Rec_anywhere_in_the_name_will_do) {
    MakeRecord(folder / "db/myRec.mdb", 3, Level);
    Dialog([this] {
        Choose("myRec.mdb");
        ChooseChannel("CH1");
        Draw();
        EXPECT_EQ(user.Messages(), Texts{});
        EXPECT_GT(Dots(HighlightText()), 0);
    });
}

TEST_F(RecordDraw, Names_are_checked_before_the_range_and_the_range_boxes_then_stay) {
    Dialog([this] {
        ChooseRange("0", "");
        Draw();
        EXPECT_EQ(user.Messages(), Texts{kNoNames});
        EXPECT_EQ(Text("draw_start"), "0");
        EXPECT_EQ(Text("draw_stop"), "");
    });
}

struct Range {
    const char *start, *stop;
    const char *start_after, *stop_after;
    const char* message;
};

TEST_F(RecordDraw, A_wrong_range_is_mended_as_far_as_it_goes_and_then_told) {
    MakeRecord(Record("Record1"), 30);
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        const std::vector<Colour> empty = Plot().pixels;
        for (const Range& it :
             {Range{"5", "5", "5", "5", kWrongRange}, Range{"6", "5", "6", "5", kWrongRange},
              Range{"5", "", "5", "", kWrongRange}, Range{"", "", "1", "", kWrongRange},
              Range{"0", "1", "1", "1", kWrongRange}, Range{"30", "99", "30", "30", kWrongRange},
              Range{"99", "999", "99", "30", kWrongRange}, Range{"005", "003", "005", "003", kWrongRange},
              Range{"01", "01", "01", "01", kWrongRange}, Range{"30", "030", "30", "030", kWrongRange}}) {
            ChooseRange(it.start, it.stop);
            Draw();
            EXPECT_EQ(Text("draw_start"), it.start_after) << it.start << " to " << it.stop;
            EXPECT_EQ(Text("draw_stop"), it.stop_after) << it.start << " to " << it.stop;
            EXPECT_EQ(LastMessage(), it.message) << it.start << " to " << it.stop;
        }
        EXPECT_EQ(user.Messages().size(), 10U);
        EXPECT_EQ(Plot().pixels, empty);
        EXPECT_EQ(The<Record_View_Draw>().Record_Path, "");
    });
}

TEST_F(RecordDraw, A_start_below_1_becomes_1_and_a_stop_behind_the_end_the_end_and_both_are_drawn) {
    MakeRecord(Record("Record1"), 30, Level);
    struct Case {
        const char *start, *stop;
        int first, last;
    };
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        for (const Case& it : {Case{"0", "10", 1, 10}, Case{"", "2", 1, 2}, Case{"20", "31", 20, 30},
                               Case{"1", "30", 1, 30}, Case{"07", "0009", 7, 9}}) {
            ChooseRange(it.start, it.stop);
            Draw();
            EXPECT_EQ(Text("draw_start"), std::to_string(it.first));
            EXPECT_EQ(Text("draw_stop"), std::to_string(it.last));
            EXPECT_EQ(The<Record_View_Draw>().Slider1.Min(), it.first);
            EXPECT_EQ(The<Record_View_Draw>().Slider1.Max(), it.last);
        }
        EXPECT_EQ(user.Messages(), Texts{});
    });
}

TEST_F(RecordDraw, A_pasted_start_below_0_becomes_1_too) {
    MakeRecord(Record("Record1"), 5, Level);
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        ChooseRange("", "3");
        user.Paste(kDialog, "draw_start", "-7");
        Draw();
        EXPECT_EQ(Text("draw_start"), "1");
        EXPECT_EQ(user.Messages(), Texts{});
    });
}

TEST_F(RecordDraw, A_range_has_at_most_25001_rows_and_the_message_about_25000_comes_two_rows_later) {
    MakeRecord(Record("Record1"), 25010);
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        ASSERT_TRUE(Chosen("draw_limit"));
        for (const Range& it : {Range{"1", "25002", "", "", kWrongRange}, Range{"2", "25003", "", "", kWrongRange},
                                Range{"1", "25003", "", "", kTooLong}, Range{"2", "25004", "", "", kTooLong},
                                Range{"0", "99999", "", "", kTooLong}}) {
            ChooseRange(it.start, it.stop);
            Draw();
            EXPECT_EQ(LastMessage(), it.message) << it.start << " to " << it.stop;
        }
        EXPECT_EQ(user.Messages().size(), 5U);

        ChooseRange("2", "25002");
        InTheNextYield([this] { user.Click(kDialog, "Command3"); });
        Draw();
    });
    EXPECT_EQ(user.Messages().size(), 5U);
}

TEST_F(RecordDraw, The_range_is_held_against_the_quantity_on_show_whatever_is_typed) {
    MakeRecord(Record("Record1"), 5, Level);
    MakeRecord(Record("Record2"), 9, Level);
    Dialog([this] {
        Choose("Record1.mdb");
        Type("Combo_record", "Record2.mdb");
        ChooseChannel("CH1");
        ChooseRange("1", "9");
        Draw();
        EXPECT_EQ(Text("draw_stop"), "5");
        EXPECT_EQ(The<Record_View_Draw>().Record_Path, Record("Record2"));
        EXPECT_EQ(The<Record_View_Draw>().Slider1.Max(), 5);
    });
}

TEST_F(RecordDraw, A_name_that_is_no_channel_is_drawn_over_the_whole_range_of_a_shorter_record_too) {
    MakeRecord(Record("Record1"), 5, Level);
    MakeRecord(Record("Record2"), 9, Level);
    Dialog([this] {
        Choose("Record2.mdb");
        Type("Combo_record", "Record1.mdb");
        Type("Combo_chan", "CH99");
        ChooseRange("1", "9");
        Draw();
        EXPECT_EQ(user.Messages(), Texts{});
        EXPECT_EQ(The<Record_View_Draw>().Record_Path, Record("Record1"));
        EXPECT_EQ(The<Record_View_Draw>().Slider1.Max(), 9);
        EXPECT_EQ(The<Record_View_Draw>().draw_pic.LineCount(), 9U);
    });
}

TEST_F(RecordDraw, Row_numbers_are_rewritten_without_decimals_for_a_whole_drawing_too) {
    MakeRecord(Record("Record1"), 5, Level);
    struct Case {
        const char *pasted, *rewritten;
    };
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        for (const Case& it : {Case{"", "0"}, Case{"007", "7"}, Case{"2.5", "3"}, Case{"1E3", "1000"}, Case{"-4", "-4"},
                               Case{"x", "0"}}) {
            for (const char* field : {"draw_start", "draw_stop"}) {
                Type(field, "");
                if (*it.pasted) user.Paste(kDialog, field, it.pasted);
            }
            Draw();
            EXPECT_EQ(Text("draw_start"), it.rewritten) << it.pasted;
            EXPECT_EQ(Text("draw_stop"), it.rewritten) << it.pasted;
        }
        EXPECT_EQ(The<Record_View_Draw>().Slider1.Min(), 1);
        EXPECT_EQ(The<Record_View_Draw>().Slider1.Max(), 5);
        EXPECT_EQ(user.Messages(), Texts{});
    });
}

// ---- Draw: what it leaves

TEST_F(RecordDraw, Draw_notes_record_and_channel_shows_the_row_at_the_slider_and_closes_the_record) {
    MakeRecord(Record("Record1"), 5, [](int row, int k) { return std::to_string(row) + "." + std::to_string(k); });
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH3");
        ChooseRange("2", "4");
        Draw();
        EXPECT_EQ(The<Record_View_Draw>().Record_Path, Record("Record1"));
        EXPECT_EQ(The<Record_View_Draw>().Record_Channel, "CH3");
        EXPECT_EQ(Text("Text1"), "2");
        EXPECT_EQ(Text("show_value"), "2.3");
        Kill(Record("Record1"));
    });
}

TEST_F(RecordDraw, A_typed_record_is_drawn_whole_although_none_was_chosen) {
    MakeRecord(Record("Record1"), 5, Level);
    Dialog([this] {
        Type("Combo_record", "Record1.mdb");
        Type("Combo_chan", "CH1");
        Draw();
        EXPECT_EQ(user.Messages(), Texts{});
        EXPECT_EQ(The<Record_View_Draw>().Slider1.Max(), 5);
        EXPECT_GT(Dots(HighlightText()), 0);
    });
}

TEST_F(RecordDraw, One_Draw_lays_its_trace_over_the_one_before) {
    MakeRecord(Record("Record1"), 5, Level);
    constexpr Colour blue = RGB(0, 0, 255);
    Dialog([&] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        The<Record_View_Draw>().color_box.SetBackColor(kRed);
        Draw();
        const int red = Dots(kRed);
        EXPECT_GT(red, 500);
        ChooseChannel("CH2");
        The<Record_View_Draw>().color_box.SetBackColor(blue);
        Draw();
        EXPECT_EQ(Dots(kRed), red);
        EXPECT_GT(Dots(blue), 500);
    });
}

TEST_F(RecordDraw, Clean_takes_the_traces_away_and_nothing_else) {
    MakeRecord(Record("Record1"), 5, Level);
    Dialog([this] {
        const std::vector<Colour> empty = Plot().pixels;
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        Type("offset_box", "0.5");
        ChooseRange("2", "4");
        Draw();
        user.Move(kDialog, "Slider1", 3);
        Sight expected = Standing();
        ASSERT_NE(expected.pixels, empty);
        user.Click(kDialog, "Command2");
        expected.pixels = empty;
        EXPECT_EQ(Standing(), expected);
        EXPECT_EQ(Text("show_value"), "1");
        EXPECT_EQ(Text("Combo_record"), "Record1.mdb");
        EXPECT_EQ(Text("Combo_chan"), "CH1");
    });
}

TEST_F(RecordDraw, A_record_that_has_lost_its_rows_is_told_and_nothing_more_is_shown) {
    MakeRecord(Record("Record1"), 5, Level);
    MakeRecord(Record("Record2"), 0);
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        Draw();
        const Sight before = Standing();
        Type("Combo_record", "Record2.mdb");
        Draw();
        EXPECT_EQ(user.Messages(), Texts{kEmpty});
        Sight after = Standing();
        EXPECT_EQ(after.texts[0], Record("Record2"));
        after.texts[0] = Record("Record1");
        EXPECT_EQ(after, before);
    });
}

}  // namespace
}  // namespace vantrel
