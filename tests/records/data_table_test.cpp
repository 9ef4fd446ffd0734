// See Value: the window of the latest scans, in all ways in which it comes into being.
#include "windows/DATA_Table.h"

#include "records/record_desk.h"
#include "support/geometry.h"

#include <QAbstractScrollArea>
#include <QImage>

namespace vantrel {
namespace {

class SeeValue : public RecordDesk {
protected:
    static MSFlexGrid& Table(int dev) { return The<DATA_Table>().MSFlexGrid1(dev); }
    static MSFlexGrid& Backing(int dev) { return The<Form1>().MSFlexGrid2(dev); }
    Texts ShownCounts() const {
        Texts counts;
        for (int row = 2; row < user.RowCount("DATA_Table", "MSFlexGrid1(0)"); ++row)
            counts.push_back(user.CellText("DATA_Table", "MSFlexGrid1(0)", row, 0));
        return counts;
    }
};

// ---- As designed

TEST_F(SeeValue, Has_its_caption_and_its_controls_at_their_places) {
    OpenConnected(4);
    user.Click("Form1", "Command6");
    EXPECT_EQ(user.Caption("DATA_Table"), "DATA TABLE");
    std::vector<Designed> design = {{"SSTab1", 0, 0, 8895, 10455}};
    for (int i = 0; i < 4; ++i) design.push_back({"MSFlexGrid1(" + std::to_string(i) + ")", 0, 360, 8895, 10095});
    ExpectDesign(The<DATA_Table>(), design);
}

TEST_F(SeeValue, Has_numbered_tabs_without_a_device_and_hides_them_all) {
    Open();
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(The<DATA_Table>().SSTab1.TabCaption(i), "Tab " + std::to_string(i));
        EXPECT_FALSE(The<DATA_Table>().SSTab1.TabVisible(i)) << i;
    }
}

TEST_F(SeeValue, Of_one_device_shows_one_tab_with_its_name) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    EXPECT_TRUE(user.SeesTab("DATA_Table", "SSTab1", 0));
    EXPECT_EQ(user.TabText("DATA_Table", "SSTab1", 0), "A");
    for (int i = 1; i < 4; ++i) EXPECT_FALSE(user.SeesTab("DATA_Table", "SSTab1", i)) << i;
}

TEST_F(SeeValue, Of_four_devices_hides_no_tab_and_shows_the_first) {
    OpenConnected(4);
    user.Click("Form1", "Command6");
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(user.SeesTab("DATA_Table", "SSTab1", i));
        EXPECT_EQ(user.TabText("DATA_Table", "SSTab1", i), std::string(1, static_cast<char>('A' + i)));
    }
    EXPECT_EQ(user.Index("DATA_Table", "SSTab1"), 0);
}

TEST_F(SeeValue, Has_each_table_on_the_tab_of_its_device) {
    OpenConnected(4);
    user.Click("Form1", "Command6");
    for (int tab = 3; tab >= 0; --tab) {
        user.ClickTab("DATA_Table", "SSTab1", tab);
        for (int dev = 0; dev < 4; ++dev)
            EXPECT_EQ(user.Sees("DATA_Table", "MSFlexGrid1(" + std::to_string(dev) + ")"), dev == tab) << tab << dev;
    }
}

TEST_F(SeeValue, Has_a_column_for_each_channel_that_the_device_has) {
    Open(Scanner("A", 1) + Scanner("B", 2));
    Connect({0, 1});
    user.Click("Form1", "Command6");
    for (int dev = 0; dev < 2; ++dev) {
        const int channels = dev == 0 ? 10 : 20;
        const MSFlexGrid& table = Table(dev);
        ASSERT_EQ(table.Cols(), channels + 2);
        EXPECT_EQ(table.Rows(), 3);
        EXPECT_EQ(table.FixedRows(), 2);
        EXPECT_EQ(table.FixedCols(), 2);
        EXPECT_EQ(table.TextMatrix(0, 0), "Scan");
        EXPECT_EQ(table.TextMatrix(0, 1), "Scan");
        EXPECT_EQ(table.TextMatrix(1, 0), "Scan Cycle");
        EXPECT_EQ(table.TextMatrix(1, 1), "Time");
        EXPECT_EQ(table.ColWidth(1), 2000);
        for (int ch = 1; ch <= channels; ++ch) {
            EXPECT_EQ(table.TextMatrix(0, ch + 1), "Channel");
            EXPECT_EQ(table.TextMatrix(1, ch + 1), "CH " + std::to_string(ch));
            EXPECT_EQ(table.ColWidth(ch + 1), 1500);
        }
    }
}

TEST_F(SeeValue, Draws_the_word_Channel_as_one_band) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    auto* grid = qobject_cast<QAbstractScrollArea*>(user.FindControl("DATA_Table", "MSFlexGrid1(0)"));
    ASSERT_NE(grid, nullptr);
    const QImage picture = grid->viewport()->grab().toImage();
    // The line between CH 2 and CH 3, which stand behind the two fixed columns and CH 1.
    const int edge = ToPixels(Table(0).ColWidth(0) + 2000 + 2 * 1500) - 1;
    const int height = ToPixels(Table(0).RowHeight(0));
    const int above_text = 1;
    EXPECT_EQ(picture.pixel(edge, above_text), picture.pixel(edge - 2, above_text));
    EXPECT_NE(picture.pixel(edge, height + above_text), picture.pixel(edge - 2, height + above_text));
}

TEST_F(SeeValue, Lets_the_main_window_be_worked_beside_it) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    RunScans(1);
    EXPECT_EQ(ShownCounts(), Texts{"1"});
}

// ---- Loaded by its button, by the first scan, and again

TEST_F(SeeValue, Loaded_by_its_button_before_a_run_follows_the_run) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    Texts in_run;
    AfterScans(2, [&] { in_run = ShownCounts(); });
    RunScans(3);
    EXPECT_EQ(in_run, (Texts{"1", "2"}));
    EXPECT_EQ(ShownCounts(), (Texts{"1", "2", "3"}));
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", 4, 2), "+1.5E+00");
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", 4, 4), "+3.5E+00\n");
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", 4, 5), " ");
}

TEST_F(SeeValue, Loaded_by_the_first_scan_stays_hidden_until_its_button_is_pressed) {
    OpenConnected(1);
    EXPECT_FALSE(IsLoaded<DATA_Table>());
    RunScans(3);
    EXPECT_TRUE(IsLoaded<DATA_Table>());
    EXPECT_FALSE(user.Sees("DATA_Table"));
    user.Click("Form1", "Command6");
    EXPECT_EQ(ShownCounts(), (Texts{"1", "2", "3"}));
}

TEST_F(SeeValue, Closed_in_a_run_shows_the_rows_that_came_meanwhile_when_it_is_opened_again) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    Texts reopened;
    AfterScans(2, [&] { user.Close("DATA_Table"); });
    AfterScans(4, [&] {
        EXPECT_FALSE(user.Sees("DATA_Table"));
        user.Click("Form1", "Command6");
        reopened = ShownCounts();
    });
    RunScans(5);
    EXPECT_EQ(reopened, (Texts{"1", "2", "3", "4"}));
    EXPECT_EQ(ShownCounts(), (Texts{"1", "2", "3", "4", "5"}));
}

TEST_F(SeeValue, Closed_after_a_run_shows_its_rows_when_it_is_opened_again) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    RunScans(3);
    const std::string last_time = user.CellText("DATA_Table", "MSFlexGrid1(0)", 4, 1);
    user.Close("DATA_Table");
    EXPECT_FALSE(IsLoaded<DATA_Table>());
    user.Click("Form1", "Command6");
    EXPECT_EQ(ShownCounts(), (Texts{"1", "2", "3"}));
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", 4, 1), last_time);
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", 4, 4), "+3.5E+00\n");
}

TEST_F(SeeValue, Copies_every_column_of_every_row_that_the_backing_copies_have) {
    OpenConnected(2);
    const auto text = [](int dev, int row, int col) {
        return std::to_string(dev) + "/" + std::to_string(row) + "/" + std::to_string(col);
    };
    for (int dev = 0; dev < 2; ++dev) {
        Backing(dev).SetRows(4 + dev);
        for (int row = 2; row < 4 + dev; ++row)
            for (int col = 0; col < 22; ++col) Backing(dev).SetTextMatrix(row, col, text(dev, row, col));
    }
    for (int dev = 0; dev < 2; ++dev) {
        ASSERT_EQ(Table(dev).Rows(), 4 + dev);
        for (int row = 2; row < 4 + dev; ++row)
            for (int col = 0; col < 22; ++col) EXPECT_EQ(Table(dev).TextMatrix(row, col), text(dev, row, col));
    }
}

TEST_F(SeeValue, Copies_the_row_of_a_backing_copy_of_one_scan) {
    OpenConnected(1);
    Backing(0).SetRows(3);
    Backing(0).SetTextMatrix(2, 0, "1");
    EXPECT_EQ(Table(0).Rows(), 3);
    EXPECT_EQ(Table(0).TextMatrix(2, 0), "1");
}

TEST_F(SeeValue, Copies_no_headings) {
    OpenConnected(1);
    Backing(0).SetRows(3);
    for (int row = 0; row < 2; ++row)
        for (int col = 0; col < 22; ++col) Backing(0).SetTextMatrix(row, col, "not to be copied");
    EXPECT_EQ(Table(0).TextMatrix(0, 0), "Scan");
    EXPECT_EQ(Table(0).TextMatrix(1, 21), "CH 20");
}

TEST_F(SeeValue, Is_laid_out_with_one_empty_row_where_the_backing_copy_has_none) {
    OpenConnected(1);
    ASSERT_LT(Backing(0).Rows(), 3);
    EXPECT_EQ(Table(0).Rows(), 3);
    EXPECT_EQ(Table(0).TextMatrix(2, 0), "");
}

TEST_F(SeeValue, Keeps_the_rows_of_the_run_before_until_the_first_scan_of_the_next) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    RunScans(4);
    Texts after_start;
    clock.At(static_cast<int>(clock.Elapsed()) + 100, [&] { after_start = ShownCounts(); });
    RunScans(2);
    EXPECT_EQ(after_start, (Texts{"1", "2", "3", "4"}));
    EXPECT_EQ(ShownCounts(), (Texts{"1", "2"}));
}

TEST_F(SeeValue, Opened_between_Start_and_the_first_scan_has_one_empty_row) {
    OpenConnected(1);
    RunScans(4);
    Unload<DATA_Table>();
    Texts after_start;
    clock.At(static_cast<int>(clock.Elapsed()) + 100, [&] {
        user.Click("Form1", "Command6");
        after_start = ShownCounts();
    });
    RunScans(1);
    EXPECT_EQ(after_start, Texts{""});
    EXPECT_EQ(ShownCounts(), Texts{"1"});
}

TEST_F(SeeValue, Is_built_anew_for_the_devices_of_a_new_connection) {
    OpenConnected(2);
    user.Click("Form1", "Command6");
    Connect({1});
    EXPECT_FALSE(user.Sees("DATA_Table"));
    user.Click("Form1", "Command6");
    EXPECT_EQ(user.TabText("DATA_Table", "SSTab1", 0), "B");
    EXPECT_FALSE(user.SeesTab("DATA_Table", "SSTab1", 1));
}

TEST_F(SeeValue, Loaded_unshown_is_thrown_away_by_a_new_connection) {
    OpenConnected(1);
    RunScans(1);
    ASSERT_TRUE(IsLoaded<DATA_Table>());
    Connect({0});
    EXPECT_FALSE(IsLoaded<DATA_Table>());
}

TEST_F(SeeValue, Closed_in_a_run_is_loaded_again_by_the_next_scan_and_not_shown) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    AfterScans(1, [&] { user.Close("DATA_Table"); });
    RunScans(3);
    EXPECT_TRUE(IsLoaded<DATA_Table>());
    EXPECT_FALSE(user.Sees("DATA_Table"));
}

TEST_F(SeeValue, Rolls_in_a_run_of_more_than_160_scans) {
    OpenConnected(1);
    user.Click("Form1", "Command6");
    AfterScans(162, [&] {
        user.Close("DATA_Table");
        user.Click("Form1", "Command6");
        EXPECT_EQ(ShownCounts().front(), "3");
    });
    RunScans(163);
    const Texts counts = ShownCounts();
    EXPECT_EQ(counts.size(), 160U);
    EXPECT_EQ(counts.front(), "4");
    EXPECT_EQ(counts.back(), "163");
}

}  // namespace
}  // namespace vantrel
