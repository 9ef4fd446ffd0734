// The rows of a record: values, walking, changing.
#include "platform/dbengine_record.h"
#include "support/errors.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

// ---- Values

class StoredValue : public Record {
protected:
    std::string After(const FieldInput& value) {
        Recordset rows = All();
        rows.AddNew();
        rows.Set("Ch1", value);
        rows.Update();
        Recordset fresh = TheDBEngine().OpenDatabase(path).OpenRecordset("select * from data");
        fresh.MoveLast();
        return fresh.Text("Ch1");
    }
};

TEST_F(StoredValue, Of_a_whole_number_has_no_point) { EXPECT_EQ(After(51.0), "51"); }

TEST_F(StoredValue, Of_a_number_is_its_shortest_form) {
    EXPECT_EQ(After(0.1 + 0.2), "0.3");
    EXPECT_EQ(After(9.9e37), "9.9E+37");
}

TEST_F(StoredValue, Of_a_date_is_the_date_text) {
    const DateTime moment = CDate("2026-03-04 10:00:05");
    EXPECT_EQ(After(DateTime{moment.ms + 999}), "2026-03-04 10:00:05");
}

TEST_F(StoredValue, Of_a_text_is_the_text_as_it_stands) {
    for (const std::string& text :
         {std::string("+1.00000E+00\n"), std::string(" "), std::string(""), std::string("007"), std::string("1.0"),
          std::string("\xff\xfe"), std::string("a\0b", 3)})
        EXPECT_EQ(After(text), text);
}

TEST_F(StoredValue, Can_have_255_characters_and_no_more) {
    EXPECT_EQ(After(std::string(255, 'x')), std::string(255, 'x'));
    EXPECT_EQ(ErrorOf([&] { After(std::string(256, 'x')); }), kFieldTooSmall);
    std::string umlauts;
    for (int i = 0; i < 255; ++i) umlauts += "\xc3\xbc";
    EXPECT_EQ(After(umlauts), umlauts);
    EXPECT_EQ(ErrorOf([&] { After(umlauts + "x"); }), kFieldTooSmall);
}

TEST_F(Record, Reads_Null_as_no_value_and_not_as_empty_text) {
    AddRows(database, {""});
    EXPECT_EQ(All().Value("num"), std::nullopt);
    EXPECT_EQ(ErrorOf([&] { All().Text("num"); }), kInvalidNull);
}

// ---- Walking

TEST_F(Record, Without_rows_is_an_empty_set) {
    Recordset rows = All();
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Value("num"); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), kNoCurrentRecord);
}

TEST_F(Record, Stands_on_its_first_row_when_opened) {
    AddRows(database, {"1", "2"});
    const Recordset rows = All();
    EXPECT_EQ(rows.Text("num"), "1");
    EXPECT_FALSE(rows.Bof());
    EXPECT_FALSE(rows.Eof());
}

TEST_F(Record, Is_walked_in_the_order_of_insertion) {
    const Texts order{"2", "10", "1", "x", "1"};
    AddRows(database, order);
    EXPECT_EQ(Walk(All()), order);
}

TEST_F(Record, Ends_behind_its_last_row) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.MoveNext();
    EXPECT_FALSE(rows.Eof());
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_FALSE(rows.Bof());
    EXPECT_EQ(ErrorOf([&] { rows.Value("num"); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), kNoCurrentRecord);
}

TEST_F(Record, MoveLast_stands_on_the_last_row) {
    AddRows(database, {"1", "2", "3"});
    Recordset rows = All();
    rows.MoveLast();
    EXPECT_EQ(rows.Text("num"), "3");
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    rows.MoveFirst();
    EXPECT_EQ(rows.Text("num"), "1");
}

TEST_F(Record, RecordCount_counts_the_rows_reached_so_far) {
    AddRows(database, {"1", "2", "3"});
    Recordset rows = All();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveFirst();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 3);
    rows.MoveFirst();
    EXPECT_EQ(rows.RecordCount(), 3);
}

TEST_F(Record, RecordCount_does_not_count_removed_rows) {
    AddRows(database, {"1", "2", "3"});
    Recordset rows = All();
    rows.MoveLast();
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveFirst();
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(Walk(All()), (Texts{"2"}));
}

TEST_F(Record, RecordCount_stays_above_0_while_rows_are_left) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 0);
}

TEST_F(Record, RecordCount_counts_added_rows) {
    Recordset rows = All();
    rows.AddNew();
    rows.Update();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.AddNew();
    rows.Update();
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 2);
}

TEST_F(Record, RecordCount_counts_the_rows_that_a_query_found) {
    AddRows(database, {"5", "1", "5"});
    for (const auto& [number, count] : {std::pair("5", 2), std::pair("1", 1)}) {
        Recordset found = Find(number);
        found.MoveLast();
        EXPECT_EQ(found.RecordCount(), count) << number;
    }
}

TEST_F(Record, RecordCount_leaves_out_the_rows_that_came_after_its_opening) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    AddRows(database, {"3"});
    Find("3");
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 2);
}

TEST_F(Record, Has_no_last_row_once_all_are_deleted) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    for (const char* number : {"1", "2"}) Delete(number);
    EXPECT_TRUE(Find("1").Bof());
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), kNoCurrentRecord);
    EXPECT_TRUE(rows.Eof());
}

TEST_F(Record, Can_be_emptied_in_a_walk) {
    AddRows(database, {"", "", ""});
    Recordset rows = All();
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(Stored().empty());
}

TEST_F(Record, Stands_on_no_row_after_Delete_until_the_next_move) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.Delete();
    EXPECT_EQ(ErrorOf([&] { rows.Value("num"); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), kNoCurrentRecord);
    EXPECT_FALSE(rows.Eof());
    rows.MoveNext();
    EXPECT_EQ(rows.Text("num"), "2");
}

TEST_F(Record, Copies_of_a_recordset_share_one_position) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    const Recordset copy = rows;
    rows.MoveNext();
    EXPECT_EQ(copy.Text("num"), "2");
}

// ---- Changing

TEST_F(Record, Stores_a_change_at_Update) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.MoveNext();
    rows.Edit();
    rows.Set("num", 7.0);
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
    rows.Update();
    EXPECT_EQ(rows.Text("num"), "7");
    EXPECT_EQ(rows.Text("Ch1"), "reading 2");
    EXPECT_EQ(Stored(), (Texts{"1", "7"}));
}

TEST_F(Record, Drops_a_change_at_a_move_without_Update) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.Edit();
    rows.Set("num", "9");
    rows.MoveNext();
    rows.MoveFirst();
    EXPECT_EQ(rows.Text("num"), "1");
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kNoCurrentEdit);
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
}

TEST_F(Record, Drops_a_new_row_at_a_move_without_Update) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "2");
    rows.MoveFirst();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kNoCurrentEdit);
    EXPECT_EQ(Stored(), (Texts{"1"}));
}

TEST_F(Record, Refuses_to_set_or_update_without_AddNew_or_Edit) {
    AddRows(database, {"1"});
    Recordset rows = All();
    EXPECT_EQ(ErrorOf([&] { rows.Set("num", "2"); }), kNoCurrentEdit);
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), kNoCurrentEdit);
}

TEST_F(Record, Shows_the_new_row_while_it_is_prepared_and_the_current_row_after_it) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.AddNew();
    EXPECT_EQ(rows.Value("num"), std::nullopt);
    rows.Set("num", "2");
    EXPECT_EQ(rows.Text("num"), "2");
    rows.Update();
    EXPECT_EQ(rows.Text("num"), "1");
}

TEST_F(Record, Reaches_the_rows_that_it_added_itself) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.AddNew();
    rows.Set("num", "2");
    rows.Update();
    EXPECT_EQ(Walk(rows), (Texts{"1", "2"}));
}

TEST_F(Record, Reaches_a_row_once_that_it_added_in_the_place_of_a_deleted_last_one) {
    AddRows(database, {"1", "2", ""});
    Recordset rows = All();
    rows.MoveLast();
    rows.Delete();
    rows.AddNew();
    rows.Set("num", "3");
    rows.Update();
    EXPECT_EQ(rows.RecordCount(), 3);
    EXPECT_EQ(Walk(rows), (Texts{"1", "2", "3"}));
}

TEST_F(Record, Stays_as_it_is_after_an_edit_in_which_nothing_was_set) {
    AddRows(database, {"1", "2"});
    Recordset rows = All();
    rows.Edit();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 0);
    EXPECT_EQ(Stored(), (Texts{"1", "2"}));
    EXPECT_EQ(ErrorOf([&] { rows.Set("num", "5"); }), kNoCurrentEdit);
}

TEST_F(Record, Stores_every_column_that_was_set) {
    AddRows(database, {"1"});
    Recordset rows = All();
    rows.Edit();
    rows.Set("NUM", "7");
    rows.Set("Ch1", "changed");
    rows.Update();
    EXPECT_EQ(Stored(), Texts{"7"});
    EXPECT_EQ(Walk(All(), "Ch1"), Texts{"changed"});
}

TEST_F(Record, Writes_only_the_columns_that_were_set) {
    AddRows(database, {"1"});
    Recordset mine = All();
    mine.Edit();
    mine.Set("num", "5");
    Recordset other = All();
    other.Edit();
    other.Set("Ch1", "changed");
    other.Update();
    mine.Update();
    EXPECT_EQ(All().Text("num"), "5");
    EXPECT_EQ(All().Text("Ch1"), "changed");
}

}  // namespace
}  // namespace vantrel
