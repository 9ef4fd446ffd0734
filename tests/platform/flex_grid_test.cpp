// The grid: cells with texts and colours, fixed ones in front.
#include "platform/trial_window.h"
#include "support/errors.h"
#include "support/user.h"

#include <QApplication>
#include <QClipboard>
#include <QFontMetrics>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace vantrel {

namespace {

using Happened = std::vector<std::string>;

class Grids : public testing::Test {
protected:
    Grids() {
        The<Trial>().Show();
        DoEvents();
        happened.clear();
        grid.OnClick = [this] {
            happened.push_back(std::to_string(grid.MouseRow()) + "," + std::to_string(grid.MouseCol()));
        };
    }
    MSFlexGrid& grid = The<Trial>().MSFlexGrid1(0);
    QTableView& view = *static_cast<QTableView*>(grid.Widget());
    User user;
};

/// A table that is looked at somewhere, with a cell marked or a few selected, while its first row below the headings is
/// rolled.
struct Looked {
    std::string name;
    std::function<void(MSFlexGrid&, QTableView&)> prepare;
};

/// What a user has before the eyes and under the keys.
struct Sight {
    std::vector<std::string> texts;
    std::vector<Colour> colours;
    int row, col;  // the current cell of the program
    QPoint current;
    QStringList selected;
    int scrolled;
    QImage picture;
};

class RolledTables : public Grids {
protected:
    static constexpr int kHeadings = 2;
    static constexpr int kRows = 60;

    void Fill() {
        grid.SetRows(kHeadings);
        view.clearSelection();
        view.setCurrentIndex({});
        view.verticalScrollBar()->setValue(0);
        grid.SetCols(8);
        grid.SetRows(kRows);
        for (int row = 0; row < kRows; ++row) {
            grid.SetRowHeight(row, 240);
            for (int col = 0; col < 8; ++col)
                grid.SetTextMatrix(row, col, std::to_string(row) + "/" + std::to_string(col));
        }
        grid.SetRow(9);
        grid.SetCol(4);
        grid.SetCellBackColor(RGB(20, 40, 200));
        Settle();
    }

    void AddScan() {
        for (int col = 0; col < 8; ++col) grid.SetTextMatrix(grid.Rows() - 1, col, "new " + std::to_string(col));
        Settle();
    }

    /// Until what is laid out and painted later is on the screen.
    void Settle() const {
        QTest::qWait(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Screen() == FreshlyPainted(); }));
    }

    QImage Screen() const {
        const QWidget& window = *view.window();
        const QRect place(view.mapTo(&window, QPoint(0, 0)), view.size());
        return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32).copy(place);
    }

    QImage FreshlyPainted() const { return view.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    Sight Seen() {
        Sight sight{{},
                    {},
                    grid.Row(),
                    grid.Col(),
                    {view.currentIndex().row(), view.currentIndex().column()},
                    {},
                    view.verticalScrollBar()->value(),
                    Screen()};
        for (const QModelIndex& cell : view.selectionModel()->selectedIndexes())
            sight.selected << QString("%1,%2").arg(cell.row()).arg(cell.column());
        sight.selected.sort();
        for (int row = 0; row < grid.Rows(); ++row)
            for (int col = 0; col < grid.Cols(); ++col) {
                sight.texts.push_back(grid.TextMatrix(row, col));
                grid.SetRow(row);
                grid.SetCol(col);
                sight.colours.push_back(grid.CellBackColor());
            }
        grid.SetRow(sight.row);
        grid.SetCol(sight.col);
        return sight;
    }

    static std::vector<Looked> Looks() {
        const auto current = [](int row, int col) {
            return [=](MSFlexGrid&, QTableView& view) { view.setCurrentIndex(view.model()->index(row, col)); };
        };
        const auto selected = [](int first, int last) {
            return [=](MSFlexGrid&, QTableView& view) {
                view.selectionModel()->select({view.model()->index(first, 2), view.model()->index(last, 4)},
                                              QItemSelectionModel::Select);
            };
        };
        return {{"plain", [](MSFlexGrid&, QTableView&) {}},
                {"current cell in the rolled row", current(2, 3)},
                {"current cell in the next row", current(3, 3)},
                {"current cell below", current(10, 3)},
                {"current cell in the last row", current(kRows - 1, 3)},
                {"rolled row selected with others", selected(2, 4)},
                {"other rows selected", selected(5, 8)},
                {"last rows selected", selected(kRows - 3, kRows - 1)},
                {"focus",
                 [](MSFlexGrid&, QTableView& view) {
                     view.setFocus();
                     view.setCurrentIndex(view.model()->index(7, 3));
                 }},
                {"high row", [](MSFlexGrid& grid, QTableView&) { grid.SetRowHeight(6, 480); }},
                {"rows between pixels",
                 [](MSFlexGrid& grid, QTableView&) {
                     for (int row = 0; row < kRows; ++row) grid.SetRowHeight(row, 250);
                 }},
                {"few rows", [](MSFlexGrid& grid, QTableView&) { grid.SetRows(5); }},
                {"merged heading", [](MSFlexGrid& grid, QTableView&) { grid.SetMergeRow(0, true); }}};
    }
};

}  // namespace

TEST_F(Grids, In_an_array_raise_error_340_beyond_its_ends) {
    for (const int index : {-1, 4}) EXPECT_EQ(ErrorOf([&] { The<Trial>().MSFlexGrid1(index); }), kControlArrayElement);
}

TEST_F(Grids, Rows_dropped_at_the_end_come_back_empty) {
    grid.SetTextMatrix(1, 1, "kept");
    grid.SetTextMatrix(5, 1, "lost");
    grid.SetRows(3);
    grid.SetRows(6);
    EXPECT_EQ(grid.TextMatrix(1, 1), "kept");
    EXPECT_EQ(grid.TextMatrix(5, 1), "");
    EXPECT_EQ(user.RowCount("Trial", "MSFlexGrid1(0)"), 6);
}

TEST_F(Grids, Rows_that_come_back_have_the_height_that_they_had) {
    grid.SetRowHeight(5, 315);
    grid.SetRows(3);
    grid.SetRows(6);
    EXPECT_EQ(grid.RowHeight(5), 315);
}

TEST_F(Grids, A_list_that_is_looked_at_at_its_end_goes_on_showing_its_end) {
    grid.SetRows(100);
    DoEvents();
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    const int before = view.verticalScrollBar()->maximum();
    grid.SetRows(101);
    DoEvents();
    EXPECT_GT(view.verticalScrollBar()->maximum(), before);
    EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
}

TEST_F(Grids, A_list_that_is_looked_at_elsewhere_stays_where_it_is) {
    grid.SetRows(100);
    DoEvents();
    view.verticalScrollBar()->setValue(50);
    grid.SetRows(101);
    DoEvents();
    EXPECT_EQ(view.verticalScrollBar()->value(), 50);
}

TEST_F(Grids, Headings_stand_in_the_middle_unless_their_column_is_aligned_left) {
    const auto alignment = [this](int row, int col) {
        return Qt::Alignment(view.model()->index(row, col).data(Qt::TextAlignmentRole).toInt()) &
               Qt::AlignHorizontal_Mask;
    };
    grid.SetColAlignmentLeft(3);
    EXPECT_EQ(alignment(0, 2), Qt::AlignHCenter);
    EXPECT_EQ(alignment(0, 3), Qt::AlignLeft);
    EXPECT_EQ(alignment(4, 2), Qt::AlignLeft);
}

TEST_F(Grids, A_cell_that_is_not_there_is_an_error) {
    const auto number_of = [](const auto& routine) {
        try {
            routine();
        } catch (const RunTimeError& error) {
            return error.Number();
        }
        return 0;
    };
    EXPECT_EQ(number_of([&] { grid.SetRow(6); }), kGridRow);
    EXPECT_EQ(number_of([&] { grid.SetRow(-1); }), kGridRow);
    EXPECT_EQ(number_of([&] { grid.SetRows(-1); }), kGridRow);
    EXPECT_EQ(number_of([&] { grid.SetCols(-1); }), kGridCol);
    EXPECT_EQ(number_of([&] { grid.SetCol(-1); }), kGridCol);
    EXPECT_EQ(number_of([&] { grid.SetTextMatrix(0, 5, ""); }), kGridCol);
    EXPECT_EQ(number_of([&] { grid.SetRowHeight(6, 300); }), kGridRow);
}

TEST_F(Grids, Clearing_empties_the_texts_and_keeps_the_colours) {
    grid.SetRow(3);
    grid.SetCol(4);
    grid.SetText("x");
    grid.SetCellBackColor(255);
    grid.Clear();
    EXPECT_EQ(user.CellText("Trial", "MSFlexGrid1(0)", 3, 4), "");
    EXPECT_EQ(user.CellColour("Trial", "MSFlexGrid1(0)", 3, 4), 255);
    EXPECT_EQ(grid.CellBackColor(), 255);
}

TEST_F(Grids, Without_scroll_bars_it_never_scrolls) {
    grid.SetColWidth(2, 9000);
    DoEvents();
    ASSERT_GT(view.horizontalScrollBar()->maximum(), 0);
    grid.SetScrollBars(false);
    DoEvents();
    EXPECT_EQ(view.viewport()->size(), view.size());
    view.scrollTo(view.model()->index(5, 4));
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);
    grid.SetColWidth(3, 9000);
    DoEvents();
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
    grid.SetScrollBars(true);
    DoEvents();
    EXPECT_GT(view.horizontalScrollBar()->maximum(), 0);
}

TEST_F(Grids, A_row_moves_and_those_between_close_up) {
    for (int row = 2; row < 6; ++row) grid.SetTextMatrix(row, 0, std::to_string(row));
    grid.SetRowPosition(2, 5);
    EXPECT_EQ(grid.TextMatrix(2, 0) + grid.TextMatrix(3, 0) + grid.TextMatrix(4, 0) + grid.TextMatrix(5, 0), "3452");
    grid.SetRowPosition(5, 3);
    EXPECT_EQ(grid.TextMatrix(2, 0) + grid.TextMatrix(3, 0) + grid.TextMatrix(4, 0) + grid.TextMatrix(5, 0), "3245");
}

TEST_F(Grids, A_click_on_a_cell_makes_it_the_current_one) {
    user.ClickCell("Trial", "MSFlexGrid1(0)", 3, 4);
    EXPECT_EQ(happened, Happened{"3,4"});
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(grid.Col(), 4);
}

TEST_F(Grids, A_click_on_a_fixed_cell_is_told_but_leaves_the_current_one) {
    user.ClickCell("Trial", "MSFlexGrid1(0)", 3, 4);
    user.ClickCell("Trial", "MSFlexGrid1(0)", 1, 2);
    EXPECT_EQ(happened, (Happened{"3,4", "1,2"}));
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(grid.Col(), 4);
}

TEST_F(Grids, Space_on_the_current_cell_is_a_click) {
    user.ClickCell("Trial", "MSFlexGrid1(0)", 3, 3);
    user.Press("Trial", "MSFlexGrid1(0)", Qt::Key_Right);
    user.Press("Trial", "MSFlexGrid1(0)", Qt::Key_Space);
    EXPECT_EQ(happened, (Happened{"3,3", "3,4"}));
}

TEST_F(Grids, The_first_key_goes_to_the_first_cell_and_none_into_the_headings) {
    struct Step {
        Qt::Key key;
        int row, col;
    };
    for (const Step& it :
         {Step{Qt::Key_Down, 2, 2}, Step{Qt::Key_Up, 2, 2}, Step{Qt::Key_Left, 2, 2}, Step{Qt::Key_Right, 2, 3},
          Step{Qt::Key_Down, 3, 3}, Step{Qt::Key_Home, 3, 2}, Step{Qt::Key_End, 3, 4}, Step{Qt::Key_PageUp, 2, 4}}) {
        user.Press("Trial", "MSFlexGrid1(0)", it.key);
        EXPECT_EQ(std::pair(grid.Row(), grid.Col()), std::pair(it.row, it.col)) << it.key;
        EXPECT_EQ(view.currentIndex(), view.model()->index(it.row, it.col)) << it.key;
    }
}

TEST_F(Grids, The_first_key_in_a_scrolled_table_goes_to_a_cell_in_sight) {
    grid.SetRows(200);
    DoEvents();
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    user.Press("Trial", "MSFlexGrid1(0)", Qt::Key_Down);
    EXPECT_GT(grid.Row(), 150);
}

TEST_F(Grids, The_focus_alone_leaves_the_current_cell) {
    grid.SetRow(4);
    grid.SetCol(3);
    The<Trial>().Text1.SetFocus();
    view.setFocus(Qt::TabFocusReason);
    DoEvents();
    EXPECT_EQ(std::pair(grid.Row(), grid.Col()), std::pair(4, 3));
    user.Press("Trial", "MSFlexGrid1(0)", Qt::Key_Space);
    EXPECT_EQ(happened, Happened{});
}

TEST_F(Grids, Fixed_cells_stay_when_the_others_scroll) {
    grid.SetRows(200);
    DoEvents();
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(200, 20));
    EXPECT_EQ(happened, Happened{"1,3"});
}

TEST_F(Grids, Tab_leaves_the_grid) { EXPECT_FALSE(view.tabKeyNavigation()); }

TEST_F(Grids, Columns_end_where_their_sum_ends) {
    grid.SetCols(4);
    for (int col = 0; col < 4; ++col) grid.SetColWidth(col, 1713.75F);
    EXPECT_EQ(view.columnWidth(0) + view.columnWidth(1) + view.columnWidth(2) + view.columnWidth(3), 457);
    EXPECT_EQ(grid.ColWidth(3), 1713.75F);
}

TEST_F(Grids, What_is_too_little_for_a_column_goes_to_the_last_one) {
    constexpr float kSpare = 9 * 15;
    grid.SetCols(4);
    for (int col = 0; col < 4; ++col) grid.SetColWidth(col, (grid.Width() - kSpare) / 4);
    EXPECT_EQ(view.columnViewportPosition(3) + view.columnWidth(3), view.width());
    EXPECT_EQ(grid.ColWidth(3), (grid.Width() - kSpare) / 4);
    grid.SetColWidth(0, grid.ColWidth(0) - 20 * 15);
    EXPECT_LT(view.columnViewportPosition(3) + view.columnWidth(3), view.width() - 20);
}

TEST_F(Grids, The_line_feed_of_a_reading_makes_it_no_narrower) {
    const std::string reading = "+1.23456789E+00";
    const double needed = QFontMetricsF(view.font()).horizontalAdvance(QString::fromStdString(reading));
    grid.SetColWidth(3, static_cast<float>((std::ceil(needed) + 1) * 15));
    grid.SetTextMatrix(3, 3, reading);
    const QImage plain = view.viewport()->grab().toImage();
    grid.SetTextMatrix(3, 3, reading + "\n");
    EXPECT_EQ(view.viewport()->grab().toImage(), plain);
    grid.SetTextMatrix(3, 3, reading + "0");
    EXPECT_NE(view.viewport()->grab().toImage(), plain);
}

TEST_F(Grids, Rows_have_their_heights) {
    grid.SetRowHeight(3, 315);
    EXPECT_EQ(view.rowHeight(3), 21);
    EXPECT_EQ(view.rowHeight(4), 16);
    EXPECT_EQ(grid.RowHeight(4), 240);
}

TEST_F(Grids, A_selection_is_copied_with_tabs_and_line_ends) {
    for (int row = 3; row < 5; ++row)
        for (int col = 3; col < 5; ++col) grid.SetTextMatrix(row, col, std::to_string(row * 10 + col));
    view.selectionModel()->select({view.model()->index(3, 3), view.model()->index(4, 4)},
                                  QItemSelectionModel::ClearAndSelect);
    user.Press("Trial", "MSFlexGrid1(0)", Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "33\t34\n43\t44");
}

TEST_F(Grids, A_cell_that_holds_a_line_feed_is_copied_without_it_so_that_its_row_stays_one_line) {
    grid.SetTextMatrix(3, 3, "+1.5");
    grid.SetTextMatrix(3, 4, "+2.5 \n");
    grid.SetTextMatrix(4, 3, "+\t3\r");
    view.selectionModel()->select({view.model()->index(3, 3), view.model()->index(4, 4)},
                                  QItemSelectionModel::ClearAndSelect);
    user.Press("Trial", "MSFlexGrid1(0)", Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "+1.5\t+2.5 \n+ 3\t");
}

TEST_F(Grids, A_merged_row_is_drawn_as_one_band) {
    for (int col = 2; col < 5; ++col) grid.SetTextMatrix(0, col, "Channel");
    const auto line_between = [&] {
        const int x = view.columnViewportPosition(3) - 1;
        return view.viewport()->grab().toImage().pixelColor(x, 3) != view.palette().color(QPalette::Button);
    };
    EXPECT_TRUE(line_between());
    grid.SetMergeRow(0, true);
    EXPECT_FALSE(line_between());
}

TEST_F(Grids, Show_on_the_screen_each_cell_that_has_changed_headings_and_merged_rows_too) {
    grid.SetCols(20);
    grid.SetRows(50);
    grid.SetMergeRow(0, true);
    DoEvents();
    view.horizontalScrollBar()->setValue(45);
    view.verticalScrollBar()->setValue(25);
    DoEvents();
    QWidget& window = *view.window();
    const std::vector<std::pair<int, int>> cells{{5, 4}, {5, 0}, {1, 4}, {0, 3}, {0, 4}, {1, 1}};
    for (const auto& [row, col] : cells) {
        const QImage before = view.viewport()->grab().toImage();
        grid.SetTextMatrix(row, col, "changed");
        DoEvents();
        const QImage drawn = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QImage screen = window.screen()->grabWindow(window.winId()).toImage();
        EXPECT_NE(view.viewport()->grab().toImage(), before) << row << ", " << col;
        EXPECT_EQ(screen.convertToFormat(QImage::Format_RGB32), drawn) << row << ", " << col;
    }
}

// Each where the table is not scrolled, somewhere, and (nearly) to its end.
TEST_F(RolledTables, Look_as_if_the_row_had_been_moved_to_the_end_and_the_last_row_dropped_and_added) {
    for (const Looked& looked : Looks()) {
        for (const int scrolled : {0, 24, 400, -16, -5, 0x7FFF}) {
            SCOPED_TRACE(looked.name + ", scrolled to " + std::to_string(scrolled));
            const auto begin = [&] {
                Fill();
                looked.prepare(grid, view);
                Settle();
                QScrollBar& bar = *view.verticalScrollBar();
                bar.setValue(scrolled < 0 ? bar.maximum() + scrolled : scrolled);
                Settle();
            };
            begin();
            grid.SetRowPosition(kHeadings, grid.Rows() - 1);
            grid.SetRows(grid.Rows() - 1);
            grid.SetRows(grid.Rows() + 1);
            AddScan();
            const Sight expected = Seen();
            begin();
            const QImage before = Screen();
            grid.RollRow(kHeadings);
            AddScan();
            const Sight sight = Seen();
            EXPECT_EQ(sight.texts, expected.texts);
            EXPECT_EQ(sight.colours, expected.colours);
            EXPECT_EQ(sight.row, expected.row);
            EXPECT_EQ(sight.col, expected.col);
            EXPECT_EQ(sight.current, expected.current);
            EXPECT_EQ(sight.selected, expected.selected);
            EXPECT_EQ(sight.scrolled, expected.scrolled);
            EXPECT_NE(sight.picture, before);
            EXPECT_EQ(sight.picture, expected.picture);
        }
    }
}

}  // namespace vantrel
