// The slider under the record plot, which reads the stored value of a row.
#include "plot/record_plot_desk.h"

#include <QMouseEvent>
#include <QSlider>
#include <QTest>

namespace vantrel {
namespace {

class ValueCursor : public RecordPlotDesk {
protected:
    void MoveTo(int row) { user.Move(kDialog, "Slider1", row); }
    QWidget* Thumb() { return user.FindControl(kDialog, "Slider1"); }
    /// Ten rows in which CHk of row r reads "r.k".
    void MakeTen() {
        AddRows("Record1", 10, [](int row, const std::string& column) -> Cell {
            return column == "NUM" ? std::to_string(row) : std::to_string(row) + "." + column.substr(2);
        });
    }
};

TEST_F(ValueCursor, Reads_nothing_before_the_first_draw) {
    MakeTen();
    Choose("Record1");
    EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
    ExpectSlider(1, 11, 1);
    MoveTo(5);
    user.Click(kDialog, "Slider1");
    ExpectShown("1", "");
    EXPECT_EQ(user.Messages(), std::vector<std::string>{});
}

TEST_F(ValueCursor, Reads_the_row_at_the_thumb_when_the_plot_is_drawn) {
    MakeTen();
    Choose("Record1");
    Draw();
    ExpectShown("1", "1.1");
}

TEST_F(ValueCursor, Reads_the_row_that_the_thumb_is_moved_to) {
    MakeTen();
    Choose("Record1");
    Draw();
    MoveTo(7);
    ExpectShown("7", "7.1");
    EXPECT_EQ(The<Record_View_Draw>().Row_Index, 7);
    user.Press(kDialog, "Slider1", Qt::Key_Right);
    ExpectShown("8", "8.1");
    user.Press(kDialog, "Slider1", Qt::Key_End);
    ExpectShown("10", "10.1");
}

TEST_F(ValueCursor, Reads_each_of_the_twenty_channels_from_its_column) {
    MakeTen();
    Choose("Record1");
    for (int k = 1; k <= 20; ++k) {
        const std::string number = std::to_string(k);
        user.Pick(kDialog, "Combo_chan", "CH" + number);
        Draw();
        ExpectShown("1", "1." + number);
    }
}

TEST_F(ValueCursor, At_the_far_left_of_a_range_shows_its_first_row) {
    MakeReadings("Record1", std::vector<Cell>(300, "2"));
    Choose("Record1");
    SetRange(100, 200);
    Draw();
    ExpectShown("100", "2");
}

TEST_F(ValueCursor, Draws_no_mark_on_the_plot) {
    MakeTen();
    Choose("Record1");
    Draw();
    const Picture drawn = Plot();
    MoveTo(5);
    ExpectSame(Plot(), drawn);
}

TEST_F(ValueCursor, Shows_the_value_as_it_is_stored_whatever_offset_and_division_are) {
    const std::vector<Cell> stored = {"+1.50000000E+00", " ", "", "  2 V ", "+3.5E+00\n", "+9.90000000E+37"};
    MakeReadings("Record1", stored);
    Choose("Record1");
    user.Type(kDialog, "offset_box", "5");
    user.Type(kDialog, "division_box", "20");
    Draw();
    for (int row = 1; row <= 6; ++row) {
        MoveTo(row);
        EXPECT_EQ(The<Record_View_Draw>().show_value.Text(), *stored[static_cast<std::size_t>(row) - 1]);
    }
}

TEST_F(ValueCursor, Reads_the_channel_that_was_drawn_whatever_the_combos_show_by_now) {
    MakeTen();
    MakeReadings("Record2", std::vector<Cell>(10, "another"));
    Choose("Record1", "CH3");
    Draw();
    Choose("Record2", "CH4");
    MoveTo(4);
    ExpectShown("4", "4.3");
}

TEST_F(ValueCursor, Follows_a_narrower_second_draw) {
    MakeTen();
    Choose("Record1");
    Draw();
    MoveTo(9);
    SetRange(3, 6);
    Draw();
    ExpectSlider(3, 6, 6);
    ExpectShown("6", "6.1");
    MoveTo(1);
    ExpectShown("3", "3.1");
}

TEST_F(ValueCursor, Shows_an_empty_text_for_a_channel_that_names_no_column) {
    MakeTen();
    Choose("Record1");
    Draw();
    user.Type(kDialog, "Combo_chan", "CH21");
    Draw();
    ExpectShown("1", "");
    MoveTo(4);
    ExpectShown("4", "");
    EXPECT_EQ(user.Messages(), std::vector<std::string>{});
}

TEST_F(ValueCursor, Leaves_the_record_closed) {
    MakeTen();
    Choose("Record1");
    Draw();
    EXPECT_EQ(ErrorOf([&] { The<Record_View_Draw>().Record_Db.OpenRecordset("select * from data"); }), kObjectClosed);
    MoveTo(3);
    EXPECT_EQ(ErrorOf([&] { The<Record_View_Draw>().Record_Db.OpenRecordset("select * from data"); }), kObjectClosed);
    Kill(Record("Record1"));  // refused for a file in use
    EXPECT_FALSE(FileExists(Record("Record1")));
}

TEST_F(ValueCursor, Reads_what_the_row_holds_by_now) {
    MakeTen();
    Choose("Record1");
    Draw();
    Database database = TheDBEngine().OpenDatabase(Record("Record1"));
    Recordset row = database.OpenRecordset("select * from data where NUM='2'");
    row.Edit();
    row.Set("CH1", "changed");
    row.Update();
    MoveTo(2);
    ExpectShown("2", "changed");
}

TEST_F(ValueCursor, A_click_reads_again_where_the_thumb_does_not_move) {
    MakeTen();
    Choose("Record1");
    Draw();
    MoveTo(10);
    The<Record_View_Draw>().show_value.SetText("");
    QWidget* slider = Thumb();
    QTest::mouseClick(slider, Qt::LeftButton, Qt::NoModifier, {slider->width() - 2, slider->height() / 2});
    ExpectShown("10", "10.1");
    The<Record_View_Draw>().show_value.SetText("");
    QTest::mouseClick(slider, Qt::RightButton, Qt::NoModifier, slider->rect().center());
    ExpectShown("10", "");
}

TEST_F(ValueCursor, Reads_rows_while_the_thumb_is_dragged) {
    MakeReadings("Record1", std::vector<Cell>(100, "2"));
    Choose("Record1");
    Draw();
    QWidget* slider = Thumb();
    const int y = slider->height() / 2;
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, {5, y});
    QMouseEvent drag(QEvent::MouseMove, QPointF(slider->width() / 2.0, y), slider->mapToGlobal(QPointF(300, y)),
                     Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(slider, &drag);
    const int row = The<Record_View_Draw>().Slider1.Value();
    EXPECT_NEAR(row, 50, 5);
    ExpectShown(std::to_string(row), "2");
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, {slider->width() / 2, y});
    ExpectShown(std::to_string(row), "2");
}

// ---------------------------------------------------------------------------------------------------- what goes wrong

TEST_F(ValueCursor, Tells_that_the_record_is_gone_and_makes_no_new_file) {
    MakeTen();
    Choose("Record1");
    Draw();
    Kill(Record("Record1"));
    MoveTo(2);
    ASSERT_EQ(user.Messages().size(), 1U);
    EXPECT_EQ(user.Messages()[0], "The value cannot be read.\n\n" + ErrorText(kFileMissing));
    ExpectShown("1", "1.1");
    EXPECT_FALSE(FileExists(Record("Record1")));
    MoveTo(3);
    EXPECT_EQ(user.Messages().size(), 2U);
}

TEST_F(ValueCursor, Tells_that_the_row_is_gone_and_shows_its_number) {
    MakeTen();
    Choose("Record1");
    Draw();
    Database database = TheDBEngine().OpenDatabase(Record("Record1"));
    database.OpenRecordset("select * from data where NUM='2'").Delete();
    MoveTo(2);
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"The value cannot be read.\n\nRow 2 is not in the record."});
    ExpectShown("2", "1.1");
    MoveTo(3);
    ExpectShown("3", "3.1");
}

TEST_F(ValueCursor, Tells_that_the_row_holds_nothing_by_now) {
    MakeTen();
    Choose("Record1");
    Draw();
    Kill(Record("Record1"));
    MakeReadings("Record1", {"1", {}, "3"});
    MoveTo(2);
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"The value cannot be read.\n\nRow 2 holds nothing for CH1."});
    ExpectShown("2", "1.1");
}

TEST_F(ValueCursor, Keeps_the_record_of_the_last_draw_that_succeeded) {
    MakeTen();
    MakeReadings("Record2", {"1", {}, "3"});
    Choose("Record1", "CH5");
    Draw();
    Choose("Record2", "CH1");
    Draw();
    ASSERT_EQ(user.Messages().size(), 1U);
    MoveTo(9);
    ExpectShown("9", "9.5");
}

}  // namespace
}  // namespace vantrel
