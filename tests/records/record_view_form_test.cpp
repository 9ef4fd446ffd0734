// The record browser: its window, and a record of one page.
#include "windows/Record_View_Form.h"

#include "platform/toolkit/events.h"
#include "records/browser_desk.h"
#include "support/geometry.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMessageBox>
#include <filesystem>

namespace vantrel {
namespace {

// ---- The window

class Browser : public BrowserDesk {};

TEST_F(Browser, Bears_its_caption_and_has_its_controls_at_their_places) {
    OpenBrowser();
    EXPECT_EQ(user.Caption(kBrowser), "Record View");
    ExpectDesign(The<Record_View_Form>(), {{"List1", 120, 120, 8535, 2205},
                                           {"Command1", 8760, 120, 2055, 375},
                                           {"Command2", 8760, 600, 2055, 375},
                                           {"Command3", 8760, 1080, 2055, 375},
                                           {"Command5", 8760, 1560, 2055, 375},
                                           {"Command4", 8760, 2040, 2055, 375},
                                           {"MSFlexGrid1", 120, 2520, 10695, 5175},
                                           {"prev_DB", 2400, 7800, 2895, 375},
                                           {"next_DB", 5400, 7800, 2415, 375}});
}

TEST_F(Browser, Has_its_captions_on_its_buttons) {
    OpenBrowser();
    const std::vector<std::pair<std::string, std::string>> captions = {
        {"Command1", "Fresh"}, {"Command2", "Open"},    {"Command3", "Deleted"}, {"Command5", "CSV"},
        {"Command4", "Exit"},  {"prev_DB", "Previous"}, {"next_DB", "Next"},
    };
    for (const auto& [button, caption] : captions) EXPECT_EQ(user.Text(kBrowser, button), caption);
}

TEST_F(Browser, Comes_up_with_its_paging_buttons_off_and_all_others_on) {
    OpenBrowser();
    ExpectButtons(false, false);
    for (const char* control : {"List1", "Command1", "Command2", "Command3", "Command4", "Command5", "MSFlexGrid1"})
        EXPECT_TRUE(user.Enabled(kBrowser, control)) << control;
}

TEST_F(Browser, Has_a_grid_of_headings_and_one_empty_row) {
    OpenBrowser();
    const MSFlexGrid& grid = The<Record_View_Form>().MSFlexGrid1;
    ASSERT_EQ(grid.Cols(), 22);
    ASSERT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.FixedCols(), 2);
    EXPECT_EQ(grid.FixedRows(), 2);
    Texts first = {"Scan", "Scan"};
    Texts second = {"Scan Cycle", "Time"};
    for (const std::string& channel : Counting(1, 20)) {
        first.emplace_back("Channel");
        second.push_back("CH " + channel);
    }
    EXPECT_EQ(ShownRow(0), first);
    EXPECT_EQ(ShownRow(1), second);
    EXPECT_EQ(ShownRow(2), Texts(22));
    EXPECT_EQ(grid.ColWidth(1), 2000);
    for (int col = 2; col < 22; ++col) EXPECT_EQ(grid.ColWidth(col), 1500) << col;
}

TEST_F(Browser, Draws_the_word_Channel_as_one_band) {
    OpenBrowser();
    auto* grid = qobject_cast<QAbstractScrollArea*>(user.FindControl(kBrowser, "MSFlexGrid1"));
    ASSERT_NE(grid, nullptr);
    const QImage picture = grid->viewport()->grab().toImage();
    const MSFlexGrid& cells = The<Record_View_Form>().MSFlexGrid1;
    // The line between CH 2 and CH 3, which stand behind the two fixed columns and CH 1.
    const int edge = ToPixels(cells.ColWidth(0) + 2000 + 2 * 1500) - 1;
    const int height = ToPixels(cells.RowHeight(0));
    const int above_text = 1;
    EXPECT_EQ(picture.pixel(edge, above_text), picture.pixel(edge - 2, above_text));
    EXPECT_NE(picture.pixel(edge, height + above_text), picture.pixel(edge - 2, height + above_text));
}

TEST_F(Browser, Fits_its_controls_and_a_small_screen) {
    OpenBrowser();
    const Window& window = The<Record_View_Form>();
    for (const char* control : {"List1", "Command1", "Command4", "MSFlexGrid1", "prev_DB", "next_DB"})
        EXPECT_TRUE(window.ClientArea()->rect().contains(OnScreen(window, control))) << control;
    const QSize small_screen(1024, 600);
    EXPECT_EQ(window.ClientArea()->window()->size().boundedTo(small_screen), window.ClientArea()->window()->size());
}

TEST_F(Browser, Is_gone_through_by_Tab_from_the_list_over_the_buttons_to_the_grid_and_the_pages) {
    MakeRecord(Entry("Record1.mdb"), 2500);
    OpenBrowser();
    EXPECT_EQ(user.FindWindow(kBrowser)->focusWidget()->objectName(), "List1");
    OpenEntry("Record1.mdb");
    Next();
    user.FindControl(kBrowser, "List1")->setFocus();
    Texts stops;
    for (int i = 0; i < 9; ++i) {
        stops.push_back(user.FindWindow(kBrowser)->focusWidget()->objectName().toStdString());
        user.Press(kBrowser, Qt::Key_Tab);
    }
    EXPECT_EQ(stops, (Texts{"List1", "Command1", "Command2", "Command3", "Command5", "Command4", "MSFlexGrid1",
                            "prev_DB", "next_DB"}));
}

TEST_F(Browser, Is_worked_by_keys_alone) {
    MakeRecord(Entry("Record1.mdb"), 3);
    OpenBrowser();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Space}) {
        Fresh();
        user.Press(kBrowser, "List1", key);
        EXPECT_EQ(user.Index(kBrowser, "List1"), 0) << key;
    }
    user.Press(kBrowser, "Command2", Qt::Key_Space);
    EXPECT_EQ(ShownNumbers(), Counting(1, 3));
}

TEST_F(Browser, Has_its_entries_selected_one_after_the_other_by_the_arrow_keys) {
    for (const char* entry : {"a.mdb", "b.mdb", "c.mdb"}) MakeRecord(Entry(entry), 1);
    OpenBrowser();
    std::vector<int> selected;
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) {
        user.Press(kBrowser, "List1", key);
        selected.push_back(user.Index(kBrowser, "List1"));
    }
    EXPECT_EQ(selected, (std::vector<int>{0, 1, 2, 1}));
}

TEST_F(Browser, Is_worked_beside_the_main_window_when_the_tool_bar_opened_it) {
    OpenBrowser();
    EXPECT_FALSE(user.FindWindow(kBrowser)->isModal());
    user.Menu("About");
    EXPECT_TRUE(user.Sees("about_form"));
    EXPECT_TRUE(user.Sees(kBrowser));
}

TEST_F(Browser, Holds_the_main_window_when_the_menu_opened_it) {
    Open("");
    bool is_modal = false;
    bool has_returned = false;
    user.WhenShown(kBrowser, [&] {
        is_modal = user.FindWindow(kBrowser)->isModal();
        EXPECT_FALSE(has_returned);
        user.Click(kBrowser, "Command4");
    });
    The<Form1>().Record_View_Click();
    has_returned = true;
    EXPECT_TRUE(is_modal);
    EXPECT_FALSE(user.Sees(kBrowser));
}

TEST_F(Browser, That_is_open_beside_becomes_modal_by_the_menu_and_keeps_its_page) {
    MakeRecord(Entry("Record1.mdb"), 3);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    user.WhenShown(kBrowser, [&] {
        EXPECT_TRUE(user.FindWindow(kBrowser)->isModal());
        EXPECT_EQ(ShownNumbers(), Counting(1, 3));
        user.Click(kBrowser, "Command4");
    });
    user.Menu("Record_View");
    EXPECT_FALSE(IsLoaded<Record_View_Form>());
}

TEST_F(Browser, Begins_anew_with_an_empty_grid_after_Exit) {
    MakeRecord(Entry("Record1.mdb"), 2500);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    Next();
    user.Click(kBrowser, "Command4");
    EXPECT_FALSE(IsLoaded<Record_View_Form>());
    OpenBrowser();
    EXPECT_EQ(ShownNumbers(), Texts{""});
    ExpectButtons(false, false);
    EXPECT_EQ(Listed(), Texts{"Record1.mdb"});
}

TEST_F(Browser, Is_unloaded_by_its_close_box_too) {
    OpenBrowser();
    user.Close(kBrowser);
    EXPECT_FALSE(IsLoaded<Record_View_Form>());
}

TEST_F(Browser, Gives_the_cells_of_its_table_to_the_clipboard) {
    MakeRecord(Entry("Record1.mdb"), 3, RowAndChannel);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    user.ClickCell(kBrowser, "MSFlexGrid1", 2, 2);
    user.Press(kBrowser, "MSFlexGrid1", Qt::Key_Right, Qt::ShiftModifier);
    user.Press(kBrowser, "MSFlexGrid1", Qt::Key_Down, Qt::ShiftModifier);
    user.Press(kBrowser, "MSFlexGrid1", Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "1/1\t1/2\n2/1\t2/2");
}

// ---- Open

class OpenedRecord : public BrowserDesk {};

TEST_F(OpenedRecord, Shows_each_row_with_its_number_time_and_twenty_channels) {
    MakeRecord(Entry("Record1.mdb"), 3, RowAndChannel);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    ASSERT_EQ(GridRows(), 5);
    for (int row = 1; row <= 3; ++row) {
        Texts cells = {std::to_string(row), RowTime(row)};
        for (int channel = 1; channel <= 20; ++channel) cells.push_back(RowAndChannel(row, channel));
        EXPECT_EQ(ShownRow(row + 1), cells);
    }
}

TEST_F(OpenedRecord, Shows_cells_as_they_are_stored) {
    const Texts texts = {" ", "+1.50000000E+00\n", "  two  ",
                         "\xC2\xB5"
                         "A"};
    MakeRecord(Entry("Record1.mdb"), 1,
               [&](int, int channel) { return texts[std::min<std::size_t>(std::size_t(channel) - 1, 3)]; });
    OpenBrowser();
    OpenEntry("Record1.mdb");
    for (int channel = 1; channel <= 20; ++channel)
        EXPECT_EQ(Cell(2, channel + 1), texts[std::min<std::size_t>(std::size_t(channel) - 1, 3)]);
}

TEST_F(OpenedRecord, Needs_a_selection) {
    MakeRecord(Entry("Record1.mdb"), 1);
    OpenBrowser();
    user.Click(kBrowser, "Command2");
    EXPECT_EQ(user.Messages(), Texts{"Please select a Record."});
    EXPECT_EQ(ShownNumbers(), Texts{""});
}

TEST_F(OpenedRecord, Tells_that_a_selection_is_missing_under_the_name_of_the_program) {
    OpenBrowser();
    user.WhenMessage("Please select", [&] {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "VANTREL");
        ASSERT_EQ(box->buttons().size(), 1);
        EXPECT_NE(box->button(QMessageBox::Ok), nullptr);
    });
    user.Click(kBrowser, "Command2");
}

TEST_F(OpenedRecord, Takes_the_selection_away_so_that_a_second_Open_asks_for_one_and_Deleted_does_nothing) {
    MakeRecord(Entry("Record1.mdb"), 1);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    EXPECT_EQ(user.Index(kBrowser, "List1"), -1);
    user.Click(kBrowser, "Command2");
    EXPECT_EQ(user.Messages(), Texts{"Please select a Record."});
    user.Click(kBrowser, "Command3");
    EXPECT_EQ(user.Messages().size(), 1U);
    EXPECT_TRUE(FileExists(Entry("Record1.mdb")));
}

TEST_F(OpenedRecord, Brings_the_list_up_to_date) {
    MakeRecord(Entry("Record1.mdb"), 1);
    OpenBrowser();
    Choose("Record1.mdb");
    std::filesystem::rename(Entry("Record1.mdb"), Entry("kept.mdb"));
    MakeRecord(Entry("Record1.mdb"), 2);
    user.Click(kBrowser, "Command2");
    Texts listed = Listed();
    std::ranges::sort(listed);
    EXPECT_EQ(listed, (Texts{"Record1.mdb", "kept.mdb"}));
    EXPECT_EQ(ShownNumbers(), Counting(1, 2));
}

TEST_F(OpenedRecord, May_bear_a_name_without_the_word_Record) {
    MakeRecord(Entry("old.mdb"), 2);
    OpenBrowser();
    OpenEntry("old.mdb");
    EXPECT_EQ(ShownNumbers(), Counting(1, 2));
}

TEST_F(OpenedRecord, Replaces_the_rows_of_a_longer_one) {
    MakeRecord(Entry("Record1.mdb"), 5, RowAndChannel);
    MakeRecord(Entry("Record2.mdb"), 2);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    OpenEntry("Record2.mdb");
    EXPECT_EQ(ShownNumbers(), Counting(1, 2));
    EXPECT_EQ(Cell(2, 2), " ");
}

TEST_F(OpenedRecord, Is_remembered_by_its_whole_path) {
    MakeRecord(Entry("Record1.mdb"), 1);
    OpenBrowser();
    EXPECT_EQ(The<Record_View_Form>().RecordFile, "");
    OpenEntry("Record1.mdb");
    EXPECT_EQ(The<Record_View_Form>().RecordFile, Entry("Record1.mdb"));
    EXPECT_EQ(The<Record_View_Form>().RowTotal, 1);
}

TEST_F(OpenedRecord, Is_not_remembered_before_it_is_loaded) {
    MakeRecord(Entry("Record1.mdb"), 1);
    MakeNumbered("Record2.mdb", {});
    OpenBrowser();
    OpenEntry("Record1.mdb");
    user.WhenMessage("The Record is NULL",
                     [&] { EXPECT_EQ(The<Record_View_Form>().RecordFile, Entry("Record1.mdb")); });
    OpenEntry("Record2.mdb");
    EXPECT_EQ(The<Record_View_Form>().RecordFile, Entry("Record2.mdb"));
}

TEST_F(OpenedRecord, Is_left_closed) {
    MakeRecord(Entry("Record1.mdb"), 1);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    Kill(Entry("Record1.mdb"));
    EXPECT_FALSE(FileExists(Entry("Record1.mdb")));
}

TEST_F(OpenedRecord, Lets_nothing_else_run_while_it_is_loaded) {
    MakeRecord(Entry("Record1.mdb"), 1500);
    OpenBrowser();
    Choose("Record1.mdb");
    bool has_run = false;
    QMetaObject::invokeMethod(
        qApp, [&] { has_run = true; }, Qt::QueuedConnection);
    The<Record_View_Form>().Command2_Click();
    EXPECT_EQ(ShownNumbers(), Counting(1, 1000));
    EXPECT_FALSE(has_run);
    DoEvents();
    EXPECT_TRUE(has_run);
}

// ---- A record without rows

TEST_F(OpenedRecord, Without_rows_leaves_the_headings_alone_and_says_so) {
    MakeRecord(Entry("Record1.mdb"), 3);
    MakeNumbered("Record2.mdb", {});
    OpenBrowser();
    OpenEntry("Record1.mdb");
    OpenEntry("Record2.mdb");
    EXPECT_EQ(user.Messages(), Texts{"The Record is NULL"});
    EXPECT_EQ(GridRows(), 2);
    EXPECT_EQ(Cell(1, 0), "Scan Cycle");
    Kill(Entry("Record2.mdb"));  // it is closed again
}

TEST_F(OpenedRecord, Without_rows_leaves_buttons_and_total_as_they_were) {
    MakeRecord(Entry("Record1.mdb"), 2500);
    MakeNumbered("Record2.mdb", {});
    OpenBrowser();
    OpenEntry("Record1.mdb");
    Next();
    OpenEntry("Record2.mdb");
    ExpectButtons(true, true);
    EXPECT_EQ(The<Record_View_Form>().RowTotal, 2500);
    EXPECT_EQ(The<Record_View_Form>().RowFrom, 1);
    EXPECT_EQ(The<Record_View_Form>().RowTo, -1);
}

TEST_F(OpenedRecord, In_which_no_row_has_a_number_is_emptied_and_then_has_no_rows) {
    MakeTable("Record1.mdb", "DATA", RecordColumns(), {{{"Time", "a"}}, {{"Time", "b"}}});
    OpenBrowser();
    OpenEntry("Record1.mdb");
    EXPECT_EQ(user.Messages(), Texts{"The Record is NULL"});
    EXPECT_TRUE(RowsOf(Entry("Record1.mdb")).empty());
}

// ---- The repair of the numbering

TEST_F(OpenedRecord, Is_numbered_anew_in_its_file_and_in_the_grid) {
    MakeNumbered("Record1.mdb", {"1", "2", "5", "7"});
    OpenBrowser();
    OpenEntry("Record1.mdb");
    EXPECT_EQ(ShownNumbers(), Counting(1, 4));
    EXPECT_EQ(Column(RowsOf(Entry("Record1.mdb")), 0), Counting(1, 4));
}

TEST_F(OpenedRecord, Loses_its_rows_without_a_number) {
    std::vector<Row> rows = {RowNumbered("1"), {{"Time", "without"}}, RowNumbered("3")};
    rows.back()["Ch1"] = "last";
    MakeTable("Record1.mdb", "DATA", RecordColumns(), rows);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    EXPECT_EQ(ShownNumbers(), Counting(1, 2));
    EXPECT_EQ(Cell(3, 2), "last");
    EXPECT_EQ(RowsOf(Entry("Record1.mdb")).size(), 2U);
}

TEST_F(OpenedRecord, Whose_numbering_needs_nothing_is_not_touched) {
    MakeRecord(Entry("Record1.mdb"), 1500, RowAndChannel);
    const std::string bytes = FileBytes(Entry("Record1.mdb"));
    using std::filesystem::last_write_time;
    const auto long_ago = last_write_time(Entry("Record1.mdb")) - std::chrono::hours(100);
    last_write_time(Entry("Record1.mdb"), long_ago);
#ifndef _WIN32  // the time of a folder cannot be set
    last_write_time(folder / "db", long_ago);
#endif
    OpenBrowser();
    OpenEntry("Record1.mdb");
    Next();
    Previous();
    EXPECT_TRUE(FileBytes(Entry("Record1.mdb")) == bytes);
    EXPECT_EQ(last_write_time(Entry("Record1.mdb")), long_ago);
#ifndef _WIN32
    EXPECT_EQ(last_write_time(folder / "db"), long_ago) << "a file came or went beside it";
#endif
}

TEST_F(OpenedRecord, Keeps_a_number_that_agrees_as_a_number_and_shows_no_row_for_it) {
    MakeNumbered("Record1.mdb", {"1", "02", "3.0", "4"});
    OpenBrowser();
    OpenEntry("Record1.mdb");
    EXPECT_EQ(ShownNumbers(), (Texts{"1", "", "", "4"}));
    EXPECT_EQ(ShownRow(3), Texts(22));
    EXPECT_EQ(Column(RowsOf(Entry("Record1.mdb")), 0), (Texts{"1", "02", "3.0", "4"}));
}

TEST_F(OpenedRecord, Of_100000_rows_is_numbered_to_its_end) {
    MakeRecord(Entry("Record1.mdb"), 100001);
    TakeOut("Record1.mdb", 1, 1);
    OpenBrowser();
    OpenEntry("Record1.mdb");
    EXPECT_EQ(ShownNumbers(), Counting(1, 1000));
    EXPECT_EQ(The<Record_View_Form>().RowTotal, 100000);
    Database database = TheDBEngine().OpenDatabase(Entry("Record1.mdb"));
    Recordset rows = database.OpenRecordset("select * from data");
    rows.MoveLast();
    EXPECT_EQ(rows.Text("num"), "100000");
    Next();
    EXPECT_EQ(ShownNumbers(), Counting(1001, 2000));
}

}  // namespace
}  // namespace vantrel
