// Draw settings of all channels.
#include "windows/Form2.h"

#include "plot/placed.h"
#include "state/shared.h"
#include "support/desk.h"
#include "support/errors.h"
#include "windows/Form1.h"

#include <QAbstractItemView>
#include <QTest>

namespace vantrel {
namespace {

class AllSettings : public Desk {
protected:
    void OpenAndConnect(const std::vector<int>& rows = {0, 1}) {
        Open();
        Connect(rows);
    }

    /// Opens the dialog, runs `steps`, OK.
    void Settings(const User::Action& steps) {
        user.WhenShown("Form2", [this, steps] {
            steps();
            user.Click("Form2", "Command1");
        });
        user.Click("Form1", "Command8");
    }

    std::string Cell(int row, int col, int tab = 0) const {
        return user.CellText("Form2", "MSFlexGrid1(" + std::to_string(tab) + ")", row, col);
    }
    void ClickAt(int row, int col, int tab = 0) {
        user.ClickCell("Form2", "MSFlexGrid1(" + std::to_string(tab) + ")", row, col);
    }
};

TEST_F(AllSettings, Dialog_and_its_controls_have_their_sizes) {
    OpenAndConnect();
    Settings([this] {
        Form2& form = The<Form2>();
        EXPECT_EQ(form.ClientArea()->size(), QSize(7935 / 15, 6780 / 15));
        ExpectPlaces({{&form.SSTab1, {120, 120, 7695, 6135}}, {&form.Command1, {240, 6360, 7575, 375}}});
        EXPECT_EQ(user.Text("Form2", "Command1"), "OK");
        for (const int tab : {2, 3}) EXPECT_EQ(user.TabText("Form2", "SSTab1", tab), "Tab " + std::to_string(tab));
    });
}

TEST_F(AllSettings, Division_and_colour_are_set_by_keyboard) {
    OpenAndConnect();
    Settings([this] {
        const std::string grid = "MSFlexGrid1(0)";
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Space})
            user.Press("Form2", grid, key);
        QWidget* editor = user.FindWindow("Form2")->focusWidget();
        EXPECT_EQ(editor->objectName(), "Text1(0)");
        QTest::keyClicks(editor, "25");
        EXPECT_EQ(ChannelDivision(0, 1), "25") << "typed in place of what the cell held";
        user.AnswerColor(RGB(1, 2, 3));
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Space}) user.Press("Form2", grid, key);
        EXPECT_EQ(ChannelColor(0, 1), RGB(1, 2, 3));
    });
}

TEST_F(AllSettings, Each_device_has_a_tab_and_the_first_is_in_front) {
    OpenAndConnect({0, 1});
    Settings([this] {
        for (const int tab : {0, 1, 2, 3}) EXPECT_EQ(user.SeesTab("Form2", "SSTab1", tab), tab < 2);
        EXPECT_EQ(user.TabText("Form2", "SSTab1", 0), DeviceSerial(0));
        EXPECT_EQ(user.TabText("Form2", "SSTab1", 1), DeviceSerial(1));
        EXPECT_EQ(user.Index("Form2", "SSTab1"), 0);
    });
}

TEST_F(AllSettings, One_instrument_has_one_tab) {
    OpenAndConnect({0});
    Settings([this] {
        for (const int tab : {0, 1, 2, 3}) EXPECT_EQ(user.SeesTab("Form2", "SSTab1", tab), tab == 0);
    });
}

TEST_F(AllSettings, Four_instruments_have_all_tabs) {
    OpenAndConnect({0, 1, 2, 3});
    Settings([this] {
        for (const int tab : {0, 1, 2, 3}) EXPECT_TRUE(user.SeesTab("Form2", "SSTab1", tab));
    });
}

TEST_F(AllSettings, Grid_lists_the_settings_of_all_channels) {
    OpenAndConnect({0, 1, 2});
    ChannelColor(2, 9) = RGB(1, 2, 3);
    ChannelDivision(2, 9) = "2.50";
    ChannelOffset(2, 9) = "-1";
    Settings([this] {
        EXPECT_EQ(user.RowCount("Form2", "MSFlexGrid1(0)"), 21);
        EXPECT_EQ(user.RowCount("Form2", "MSFlexGrid1(2)"), 11);
        EXPECT_EQ(user.ColCount("Form2", "MSFlexGrid1(2)"), 4);
        const std::vector<std::string> headings = {"channel", "color", "Division", "Offset"};
        for (int col = 0; col < 4; ++col) EXPECT_EQ(Cell(0, col, 2), headings[static_cast<std::size_t>(col)]);
        for (int row = 1; row <= 10; ++row) {
            EXPECT_EQ(Cell(row, 0, 2), "CH " + std::to_string(row));
            EXPECT_EQ(Cell(row, 1, 2), "");
        }
        EXPECT_EQ(user.CellColour("Form2", "MSFlexGrid1(2)", 9, 1), ColorTable(8));
        EXPECT_EQ(user.CellColour("Form2", "MSFlexGrid1(2)", 10, 1), RGB(1, 2, 3));
        EXPECT_EQ(Cell(10, 2, 2), "2.50");
        EXPECT_EQ(Cell(10, 3, 2), "-1");
    });
}

TEST_F(AllSettings, Columns_share_the_width_and_the_first_is_a_little_narrower) {
    OpenAndConnect();
    Settings([] {
        MSFlexGrid& grid = The<Form2>().MSFlexGrid1(0);
        const float first = grid.ColWidth(0) + 100;
        for (const int col : {1, 2, 3})
            EXPECT_EQ(grid.ColWidth(col), std::nearbyint((grid.Width() - first) / 3)) << col;
    });
}

TEST_F(AllSettings, Editor_is_out_of_sight_until_a_setting_is_clicked) {
    OpenAndConnect();
    Settings([this] {
        for (const int tab : {0, 1, 2, 3}) EXPECT_FALSE(The<Form2>().Text1(tab).Visible());
        ClickAt(3, 2);
        EXPECT_TRUE(user.Sees("Form2", "Text1(0)"));
    });
}

TEST_F(AllSettings, Editor_takes_size_place_and_text_of_the_cell) {
    OpenAndConnect();
    ChannelOffset(0, 3) = "12.5";
    Settings([this] {
        ClickAt(4, 3);
        MSFlexGrid& grid = The<Form2>().MSFlexGrid1(0);
        TextBox& editor = The<Form2>().Text1(0);
        EXPECT_EQ(editor.Text(), "12.5");
        EXPECT_EQ(editor.Width(), grid.ColWidth(1));
        EXPECT_EQ(editor.Height(), grid.RowHeight(1));
        EXPECT_EQ(editor.Left(), grid.Left() + 2 * grid.ColWidth(1) + grid.ColWidth(0));
        EXPECT_EQ(editor.Top(), grid.Top() + 4 * grid.RowHeight(1));
    });
    EXPECT_EQ(ChannelOffset(0, 3), "12.5");
}

TEST_F(AllSettings, Keys_go_to_the_editor_as_soon_as_it_is_there_in_place_of_the_old_text) {
    OpenAndConnect();
    Settings([this] {
        for (const int row : {2, 3}) {
            ClickAt(row, 2);
            user.Press("Form2", Qt::Key_7);
            user.Press("Form2", Qt::Key_5);
            EXPECT_EQ(user.Text("Form2", "Text1(0)"), "75");
        }
    });
    EXPECT_EQ(ChannelDivision(0, 1), "75");
    EXPECT_EQ(ChannelDivision(0, 2), "75");
}

TEST_F(AllSettings, Events_run_once_the_editor_stands_on_its_cell) {
    OpenAndConnect();
    Settings([this] {
        ClickAt(2, 2);
        bool ran = false;
        clock.At(static_cast<int>(clock.Elapsed()), [&] { ran = true; });
        The<Form2>().MSFlexGrid1_Click(0);
        EXPECT_TRUE(ran);
    });
}

TEST_F(AllSettings, Typing_goes_into_cell_and_setting_at_once_and_nothing_checks_it) {
    OpenAndConnect();
    Settings([this] {
        ClickAt(2, 2);
        user.Type("Form2", "Text1(0)", "0");
        EXPECT_EQ(Cell(2, 2), "0");
        EXPECT_EQ(ChannelDivision(0, 1), "0");
        ClickAt(3, 3);
        user.Type("Form2", "Text1(0)", "1.50");
        ClickAt(4, 2);
        user.Type("Form2", "Text1(0)", "");
    });
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_EQ(ChannelDivision(0, 1), "0");
    EXPECT_EQ(ChannelOffset(0, 2), "1.50");
    EXPECT_EQ(ChannelDivision(0, 3), "");
    EXPECT_EQ(ChannelOffset(0, 1), "0");
}

TEST_F(AllSettings, Close_box_checks_nothing_either) {
    OpenAndConnect();
    ChannelDivision(0, 0) = "-2";
    user.WhenShown("Form2", [this] { user.Close("Form2"); });
    user.Click("Form1", "Command8");
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_EQ(ChannelDivision(0, 0), "-2");
}

TEST_F(AllSettings, Editor_left_open_on_another_tab_writes_to_the_cell_that_was_clicked_last) {
    OpenAndConnect();
    Settings([this] {
        ClickAt(2, 2, 0);
        user.ClickTab("Form2", "SSTab1", 1);
        ClickAt(5, 3, 1);
        user.Type("Form2", "Text1(1)", "55");
        user.ClickTab("Form2", "SSTab1", 0);
        user.Type("Form2", "Text1(0)", "22");
        EXPECT_EQ(Cell(5, 3), "22");
        EXPECT_EQ(Cell(2, 2), "1");
        ClickAt(2, 2, 0);
        user.Type("Form2", "Text1(0)", "7");
    });
    EXPECT_EQ(ChannelOffset(1, 4), "55");
    EXPECT_EQ(ChannelOffset(0, 4), "22");
    EXPECT_EQ(ChannelDivision(0, 1), "7") << "clicked again";
}

TEST_F(AllSettings, Click_on_an_editor_left_open_on_another_tab_writes_its_text_to_the_cell_clicked_last) {
    OpenAndConnect();
    ChannelDivision(0, 1) = "3";
    Settings([this] {
        ClickAt(2, 2, 0);
        user.ClickTab("Form2", "SSTab1", 1);
        ClickAt(5, 3, 1);
        user.ClickTab("Form2", "SSTab1", 0);
        user.Click("Form2", "Text1(0)");
    });
    EXPECT_EQ(ChannelOffset(0, 4), "3");
    EXPECT_EQ(ChannelDivision(0, 1), "3");
}

TEST_F(AllSettings, Editor_left_open_on_a_smaller_card_fails_at_a_channel_that_this_card_lacks) {
    OpenAndConnect({0, 1, 2});
    Settings([this] {
        user.ClickTab("Form2", "SSTab1", 2);
        ClickAt(2, 2, 2);
        user.ClickTab("Form2", "SSTab1", 0);
        ClickAt(20, 2, 0);
        user.ClickTab("Form2", "SSTab1", 2);
        EXPECT_EQ(ErrorOf([] { The<Form2>().Text1(2).SetText("5"); }), kGridRow);
    });
    EXPECT_EQ(ChannelDivision(2, 1), "1");
}

TEST_F(AllSettings, A_click_on_the_editor_takes_its_cell_up_again) {
    OpenAndConnect();
    Settings([this] {
        ClickAt(2, 2);
        MSFlexGrid& grid = The<Form2>().MSFlexGrid1(0);
        grid.SetRow(7);
        grid.SetCol(3);
        user.Click("Form2", "Text1(0)");
        EXPECT_EQ(grid.Row(), 2);
        EXPECT_EQ(grid.Col(), 2);
    });
}

TEST_F(AllSettings, Headings_and_labels_never_become_current_and_only_hide_the_editor) {
    OpenAndConnect();
    Settings([this] {
        for (const auto& [row, col] : {std::pair{0, 1}, {0, 2}, {5, 0}, {0, 0}}) {
            ClickAt(2, 2);
            ASSERT_TRUE(user.Sees("Form2", "Text1(0)"));
            ClickAt(row, col);
            EXPECT_FALSE(The<Form2>().Text1(0).Visible()) << row << ", " << col;
            EXPECT_EQ(The<Form2>().MSFlexGrid1(0).Row(), 2);
            EXPECT_EQ(The<Form2>().MSFlexGrid1(0).Col(), 2);
        }
    });
    EXPECT_EQ(user.OfferedColor(), std::nullopt);
    EXPECT_EQ(ChannelColor(0, 1), ColorTable(1));
}

TEST_F(AllSettings, A_colour_cell_offers_red_and_takes_the_chosen_colour) {
    OpenAndConnect();
    user.AnswerColor(RGB(9, 8, 7));
    Settings([this] {
        ClickAt(4, 1);
        EXPECT_EQ(user.OfferedColor(), kRed);
        EXPECT_EQ(user.CellColour("Form2", "MSFlexGrid1(0)", 4, 1), RGB(9, 8, 7));
        EXPECT_EQ(ChannelColor(0, 3), RGB(9, 8, 7));
    });
    EXPECT_EQ(user.CellColour("Form1", "MSFlexGrid1(0)", 1, 3), RGB(9, 8, 7));
}

TEST_F(AllSettings, A_colour_cell_leaves_the_editor_where_it_is) {
    OpenAndConnect();
    user.AnswerColor(RGB(9, 8, 7));
    Settings([this] {
        ClickAt(2, 2);
        ClickAt(4, 1);
        ASSERT_TRUE(user.Sees("Form2", "Text1(0)"));
        user.Type("Form2", "Text1(0)", "25");
        EXPECT_EQ(Cell(4, 1), "");
    });
    EXPECT_EQ(ChannelDivision(0, 1), "25");
}

TEST_F(AllSettings, A_colour_of_the_last_device_stands_in_its_live_table_after_the_close_box) {
    OpenAndConnect({0, 1, 2});
    user.AnswerColor(RGB(9, 8, 7));
    user.WhenShown("Form2", [this] {
        user.ClickTab("Form2", "SSTab1", 2);
        ClickAt(10, 1, 2);
        user.Close("Form2");
    });
    user.Click("Form1", "Command8");
    EXPECT_EQ(ChannelColor(2, 9), RGB(9, 8, 7));
    EXPECT_EQ(user.CellColour("Form1", "MSFlexGrid1(2)", 1, 9), RGB(9, 8, 7));
}

TEST_F(AllSettings, A_cancelled_colour_paints_the_channel_red) {
    OpenAndConnect();
    user.AnswerColor(std::nullopt);
    Settings([this] {
        ClickAt(4, 1);
        EXPECT_EQ(user.CellColour("Form2", "MSFlexGrid1(0)", 4, 1), RGB(255, 0, 0));
    });
    EXPECT_EQ(ChannelColor(0, 3), kRed);
}

TEST_F(AllSettings, Opens_with_the_settings_as_they_stand) {
    OpenAndConnect();
    Settings([this] { EXPECT_EQ(Cell(1, 2), "1"); });
    ChannelDivision(0, 0) = "6";
    Settings([this] {
        EXPECT_EQ(Cell(1, 2), "6");
        EXPECT_FALSE(The<Form2>().Text1(0).Visible());
    });
}

TEST_F(AllSettings, Opens_during_a_run_and_holds_it) {
    OpenAndConnect({0});
    Assign({"Record1"});
    clock.At(static_cast<int>(clock.Elapsed()) + 5'000, [this] {
        const double scans = ScanCount(0);
        Settings([this] {
            clock.Advance(60'000);
            ClickAt(1, 2);
            user.Type("Form2", "Text1(0)", "25");
        });
        EXPECT_EQ(ScanCount(0), scans);
    });
    RunAndStopAfter(80'000);
    EXPECT_EQ(ChannelDivision(0, 0), "25");
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"End of Job."});
}

TEST_F(AllSettings, Without_devices_no_tab_is_shown) {
    Open();
    user.WhenShown("Form2", [this] {
        for (const int tab : {0, 1, 2, 3}) EXPECT_FALSE(user.SeesTab("Form2", "SSTab1", tab));
        user.Click("Form2", "Command1");
    });
    The<Form2>().ShowModal();
}

}  // namespace
}  // namespace vantrel
