// The record browser: the pages of long records.
#include "records/browser_desk.h"

namespace vantrel {
namespace {

class Pages : public BrowserDesk {
protected:
    void MakeAndOpen(int rows) {
        MakeRecord(Entry("Record1.mdb"), rows, RowAndChannel);
        OpenBrowser();
        OpenEntry("Record1.mdb");
    }
    /// Expects the rows from one number to another, and nothing else, below the headings.
    void ExpectPage(int from, int to) const {
        EXPECT_EQ(ShownNumbers(), Counting(from, to));
        for (const int row : {from, to}) {
            EXPECT_EQ(Cell(row - from + 2, 1), RowTime(row));
            EXPECT_EQ(Cell(row - from + 2, 2), RowAndChannel(row, 1));
            EXPECT_EQ(Cell(row - from + 2, 21), RowAndChannel(row, 20));
        }
    }
    /// Expects `blank` rows of empty cells, and behind them the rows numbered from 1 to `to`.
    void ExpectBlankRowsBefore(int blank, int to) const {
        Texts numbers(static_cast<std::size_t>(blank));
        for (const std::string& number : Counting(1, to)) numbers.push_back(number);
        EXPECT_EQ(ShownNumbers(), numbers);
        for (const int row : {2, blank + 1}) EXPECT_EQ(ShownRow(row), Texts(22)) << row;
    }
    static void ExpectRows(double from, double to, double total) {
        EXPECT_EQ(The<Record_View_Form>().RowFrom, from);
        EXPECT_EQ(The<Record_View_Form>().RowTo, to);
        EXPECT_EQ(The<Record_View_Form>().RowTotal, total);
    }
};

TEST_F(Pages, Record_of_999_rows_is_one_page) {
    MakeAndOpen(999);
    ExpectPage(1, 999);
    EXPECT_EQ(GridRows(), 1001);
    ExpectButtons(false, false);
    ExpectRows(1, 999, 999);
}

TEST_F(Pages, Record_of_1000_rows_has_a_second_page_without_a_row) {
    MakeAndOpen(1000);
    ExpectPage(1, 1000);
    ExpectButtons(false, true);
    Next();
    ExpectRows(1001, 1000, 1000);
    EXPECT_EQ(GridRows(), 2);
    ExpectButtons(true, false);
}

TEST_F(Pages, Back_from_the_empty_page_of_1000_rows_leaves_both_buttons_off) {
    MakeAndOpen(1000);
    Next();
    Previous();
    ExpectPage(1, 1000);
    ExpectRows(1, 1000, 1000);
    ExpectButtons(false, false);
}

TEST_F(Pages, Record_of_1001_rows_has_one_row_on_its_second) {
    MakeAndOpen(1001);
    ExpectPage(1, 1000);
    Next();
    ExpectPage(1001, 1001);
    ExpectButtons(true, false);
}

TEST_F(Pages, Record_of_2000_rows_has_two) {
    MakeAndOpen(2000);
    Next();
    ExpectPage(1001, 2000);
    ExpectButtons(true, false);
}

TEST_F(Pages, Record_of_2001_rows_has_three) {
    MakeAndOpen(2001);
    Next();
    ExpectPage(1001, 2000);
    ExpectButtons(true, true);
    Next();
    ExpectPage(2001, 2001);
    ExpectButtons(true, false);
}

TEST_F(Pages, Record_of_2500_rows_is_gone_through_forth_and_back) {
    MakeAndOpen(2500);
    ExpectPage(1, 1000);
    ExpectButtons(false, true);
    ExpectRows(1, 1000, 2500);
    Next();
    ExpectPage(1001, 2000);
    ExpectButtons(true, true);
    Next();
    ExpectPage(2001, 2500);
    ExpectButtons(true, false);
    ExpectRows(2001, 2500, 2500);
    Previous();
    ExpectPage(1001, 2000);
    ExpectButtons(true, true);
    Previous();
    ExpectPage(1, 1000);
    ExpectButtons(false, true);
}

TEST_F(Pages, Grid_of_a_shorter_page_shows_no_row_of_the_longer_one_before) {
    MakeAndOpen(1002);
    Next();
    EXPECT_EQ(GridRows(), 4);
    ExpectPage(1001, 1002);
}

// ---- Open without a selection

TEST_F(Pages, Open_without_a_selection_leaves_the_page_on_show_and_forgets_which_it_is) {
    MakeAndOpen(2500);
    Next();
    user.Click(kBrowser, "Command2");
    EXPECT_EQ(user.Messages(), Texts{"Please select a Record."});
    ExpectPage(1001, 2000);
    ExpectRows(1, -1, 2500);
    ExpectButtons(true, true);
}

TEST_F(Pages, Next_behind_an_Open_without_a_selection_shows_rows_0_to_999) {
    MakeAndOpen(2500);
    user.Click(kBrowser, "Command2");
    Next();
    ExpectRows(0, 999, 2500);
    EXPECT_EQ(GridRows(), 1002);
    ExpectBlankRowsBefore(1, 999);
    ExpectButtons(true, true);
}

TEST_F(Pages, Previous_from_row_0_shows_2001_rows_from_minus_1000_to_1000) {
    MakeAndOpen(2500);
    user.Click(kBrowser, "Command2");
    Next();
    Previous();
    ExpectRows(-1000, 1000, 2500);
    ExpectBlankRowsBefore(1001, 1000);
    ExpectButtons(true, true);
}

TEST_F(Pages, Next_from_row_0_goes_on_with_row_1000) {
    MakeAndOpen(2500);
    user.Click(kBrowser, "Command2");
    Next();
    Next();
    ExpectRows(1000, 1999, 2500);
    ExpectPage(1000, 1999);
    ExpectButtons(true, true);
}

TEST_F(Pages, Next_behind_an_Open_without_a_selection_has_its_last_row_where_the_record_has_1000) {
    MakeAndOpen(1000);
    user.Click(kBrowser, "Command2");
    Next();
    ExpectRows(0, 999, 1000);
    ExpectButtons(true, true);
}

// ---- Two records in a row

TEST_F(Pages, Second_long_record_is_opened_on_its_first_page_and_Previous_stays_on) {
    MakeRecord(Entry("Record2.mdb"), 1200, RowAndChannel);
    MakeAndOpen(2500);
    Next();
    OpenEntry("Record2.mdb");
    ExpectPage(1, 1000);
    ExpectRows(1, 1000, 1200);
    ExpectButtons(true, true);
}

TEST_F(Pages, Previous_before_the_first_page_shows_1000_blank_rows) {
    MakeRecord(Entry("Record2.mdb"), 1200, RowAndChannel);
    MakeAndOpen(2500);
    Next();
    OpenEntry("Record2.mdb");
    Previous();
    ExpectRows(-999, 0, 1200);
    EXPECT_EQ(ShownNumbers(), Texts(1000));
    EXPECT_EQ(ShownRow(1001), Texts(22));
    ExpectButtons(true, true);
}

TEST_F(Pages, Next_from_the_blank_page_is_the_first_one_again) {
    MakeRecord(Entry("Record2.mdb"), 1200, RowAndChannel);
    MakeAndOpen(2500);
    Next();
    OpenEntry("Record2.mdb");
    Previous();
    Next();
    ExpectPage(1, 1000);
    ExpectButtons(false, true);
}

TEST_F(Pages, Second_long_record_behind_a_last_page_turns_Next_on) {
    MakeRecord(Entry("Record2.mdb"), 1200, RowAndChannel);
    MakeAndOpen(1500);
    Next();
    ExpectButtons(true, false);
    OpenEntry("Record2.mdb");
    ExpectButtons(true, true);
}

TEST_F(Pages, Long_record_behind_a_first_page_leaves_Previous_off) {
    MakeRecord(Entry("Record2.mdb"), 1200, RowAndChannel);
    MakeAndOpen(2500);
    OpenEntry("Record2.mdb");
    ExpectButtons(false, true);
}

TEST_F(Pages, Short_record_behind_a_long_one_turns_both_buttons_off) {
    MakeRecord(Entry("Record2.mdb"), 5, RowAndChannel);
    MakeAndOpen(2500);
    Next();
    OpenEntry("Record2.mdb");
    ExpectPage(1, 5);
    ExpectButtons(false, false);
}

TEST_F(Pages, Next_and_Previous_are_of_the_record_that_was_opened_and_not_of_the_one_that_is_selected) {
    MakeRecord(Entry("Record2.mdb"), 5);
    MakeAndOpen(2500);
    Choose("Record2.mdb");
    Next();
    ExpectPage(1001, 2000);
    EXPECT_EQ(user.Entries(kBrowser, "List1")[static_cast<std::size_t>(user.Index(kBrowser, "List1"))], "Record2.mdb");
}

// ---- Records that change between two pages

TEST_F(Pages, Row_taken_out_between_two_pages_moves_the_next_page_by_one) {
    MakeAndOpen(2500);
    TakeOut("Record1.mdb", 500, 500);
    Next();
    EXPECT_EQ(ShownNumbers(), Counting(1001, 2000));
    EXPECT_EQ(Cell(2, 2), RowAndChannel(1002, 1));
    ExpectRows(1001, 2000, 2499);
    Next();
    EXPECT_EQ(ShownNumbers(), Counting(2001, 2499));
}

TEST_F(Pages, Row_taken_out_leaves_a_blank_row_at_the_end_of_a_last_page_that_was_reckoned_with_it) {
    MakeAndOpen(2000);
    TakeOut("Record1.mdb", 1, 1);
    Next();
    Texts numbers = Counting(1001, 1999);
    numbers.emplace_back();
    EXPECT_EQ(ShownNumbers(), numbers);
    ExpectRows(1001, 2000, 1999);
}

TEST_F(Pages, Rows_that_came_meanwhile_are_told_by_the_next_load_alone) {
    MakeAndOpen(1500);
    Database database = TheDBEngine().OpenDatabase(Entry("Record1.mdb"));
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    for (const auto& [column, text] : RowNumbered("1501")) rows.Set(column, text);
    rows.Update();
    database.Close();
    Next();
    EXPECT_EQ(ShownNumbers(), Counting(1001, 1500));
    ExpectRows(1001, 1500, 1501);
}

TEST_F(Pages, Record_that_falls_below_1000_rows_has_blank_rows_and_no_buttons_on_a_later_page) {
    MakeAndOpen(2500);
    TakeOut("Record1.mdb", 301, 2500);
    Next();
    ExpectRows(1001, 300, 300);
    EXPECT_EQ(ShownNumbers(), Texts(300));
    ExpectButtons(false, false);
}

TEST_F(Pages, Page_behind_the_end_of_a_record_that_has_become_shorter_has_no_rows) {
    MakeAndOpen(3500);
    Next();
    TakeOut("Record1.mdb", 1201, 3500);
    Previous();
    Next();
    ExpectRows(1001, 1200, 1200);
    TakeOut("Record1.mdb", 1101, 1200);
    Previous();
    ExpectRows(1, 1000, 1100);
    ExpectPage(1, 1000);
}

TEST_F(Pages, Pages_reckoned_before_a_record_became_much_shorter_are_empty_and_harm_nothing) {
    MakeAndOpen(5500);
    for (int page = 2; page <= 5; ++page) Next();
    TakeOut("Record1.mdb", 1501, 5500);
    Previous();  // rows 3001 to 4000 of 1500
    EXPECT_EQ(ShownNumbers(), Texts(1000));
    Next();  // rows 4001 to 1500
    ExpectRows(4001, 1500, 1500);
    EXPECT_EQ(GridRows(), 2);
    ExpectButtons(true, false);
}

TEST_F(Pages, Record_that_was_empty_and_gets_rows_is_shown_from_row_0_as_far_as_its_grid_goes) {
    MakeRecord(Entry("Record1.mdb"), 2500);
    MakeNumbered("Record2.mdb", {});
    OpenBrowser();
    OpenEntry("Record1.mdb");
    OpenEntry("Record2.mdb");
    std::filesystem::remove(Entry("Record2.mdb"));
    MakeRecord(Entry("Record2.mdb"), 3);
    Next();
    EXPECT_EQ(ShownNumbers(), (Texts{"", "1", "2"}));
    ExpectRows(0, 3, 3);
}

}  // namespace
}  // namespace vantrel
