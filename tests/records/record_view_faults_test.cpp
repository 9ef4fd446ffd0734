// The record browser: files that are no records, and records that a run writes to.
#include "records/browser_desk.h"
#include "support/anybody.h"
#include "support/child_process.h"

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vantrel {
namespace {

// ---- Files that cannot be read

class BadRecord : public BrowserDesk {
protected:
    /// Has the process end by error `number` when `steps` are done in the browser, and the folder `db` stay as it was.
    void ExpectEnd(int number, const User::Action& steps) {
        const auto before = Folder();
        EXPECT_EXIT(
            {
                TellRunTimeError();
                OpenBrowser();
                steps();
            },
            testing::ExitedWithCode(1), EndedBy(number));
        folder.TakeFilesOfChild();
        EXPECT_TRUE(Folder() == before) << "a file has changed";
    }
    void ExpectOpenEnds(int number) {
        ExpectEnd(number, [this] { OpenEntry("Record1.mdb"); });
    }
    /// A process that can read everything becomes one that has to ask.
    void BecomeAnybody() const {
#ifndef _WIN32
        constexpr uid_t kNobody = 65534;
        for (const std::string& path : {folder.Path(), folder / "db"}) chmod(path.c_str(), 0777);
        if (geteuid() == 0 && setuid(kNobody) != 0) std::_Exit(2);
#endif
    }

private:
    /// All entries with their bytes.
    std::map<std::string, std::string> Folder() const {
        std::map<std::string, std::string> entries;
        for (const std::string& name : RecordFiles()) {
            const bool is_folder = std::filesystem::is_directory(Entry(name));
            entries[name] = is_folder ? "a folder" : FileBytes(Entry(name));
        }
        return entries;
    }
};

TEST_F(BadRecord, That_is_no_database_ends_the_program_and_stays_as_it_was) {
    WriteFileBytes(Entry("Record1.mdb"), "a shopping list");
    ExpectOpenEnds(3343);
}

TEST_F(BadRecord, That_is_empty_ends_the_program_and_stays_empty) {
    WriteFileBytes(Entry("Record1.mdb"), "");
    ExpectOpenEnds(3343);
}

TEST_F(BadRecord, That_is_cut_off_ends_the_program_and_stays_as_it_was) {
    MakeRecord(Entry("Record1.mdb"), 500, RowAndChannel);
    const std::string whole = FileBytes(Entry("Record1.mdb"));
    for (const std::size_t length : {std::size_t{50}, std::size_t{100}, whole.size() / 2, whole.size() - 1}) {
        SCOPED_TRACE(length);
        WriteFileBytes(Entry("Record1.mdb"), whole.substr(0, length));
        ExpectOpenEnds(3343);
    }
}

TEST_F(BadRecord, That_is_garbled_behind_its_beginning_ends_the_program_and_stays_as_it_was) {
    MakeRecord(Entry("Record1.mdb"), 500, RowAndChannel);
    std::string bytes = FileBytes(Entry("Record1.mdb"));
    std::fill(bytes.begin() + 8192, bytes.end(), 'x');
    WriteFileBytes(Entry("Record1.mdb"), bytes);
    ExpectOpenEnds(3343);
}

TEST_F(BadRecord, Without_the_table_ends_the_program) {
    MakeTable("Record1.mdb", "READINGS", RecordColumns(), {RowNumbered("5")});
    ExpectOpenEnds(3078);
}

TEST_F(BadRecord, Without_the_numbers_ends_the_program) {
    MakeTable("Record1.mdb", "DATA", {"Time", "Ch1"}, {{{"Time", "t"}}});
    ExpectOpenEnds(3265);
}

TEST_F(BadRecord, Without_one_of_its_channels_ends_the_program_before_it_is_numbered) {
    Texts columns = RecordColumns();
    columns.pop_back();
    MakeTable("Record1.mdb", "DATA", columns, {{{"NUM", "5"}}});
    ExpectOpenEnds(3265);
}

TEST_F(BadRecord, That_is_a_folder_ends_the_program) {
    std::filesystem::create_directory(Entry("Record1.mdb"));
    ExpectOpenEnds(3051);
}

#ifndef _WIN32  // under Wine, no access list binds the superuser
TEST_F(BadRecord, That_may_not_be_read_ends_the_program) {
    MakeRecord(Entry("Record1.mdb"), 3);
    chmod(Entry("Record1.mdb").c_str(), 0);
    EXPECT_EXIT(
        {
            BecomeAnybody();
            TellRunTimeError();
            OpenBrowser();
            OpenEntry("Record1.mdb");
        },
        testing::ExitedWithCode(1), EndedBy(3051));
}
#endif

TEST_F(BadRecord, That_may_not_be_written_to_ends_the_program_and_stays_as_it_was) {
    if (WritesToEveryFile()) GTEST_SKIP() << "the user of this Wine may write to every file";
    using std::filesystem::perms;
    MakeNumbered("Record1.mdb", {"5"});
    const std::string bytes = FileBytes(Entry("Record1.mdb"));
    permissions(std::filesystem::path(Entry("Record1.mdb")), perms::owner_read | perms::others_read);
    EXPECT_EXIT(
        {
            BecomeAnybody();
            TellRunTimeError();
            OpenBrowser();
            OpenEntry("Record1.mdb");
        },
        testing::ExitedWithCode(1), EndedBy(3051));
    EXPECT_TRUE(FileBytes(Entry("Record1.mdb")) == bytes);
    permissions(std::filesystem::path(Entry("Record1.mdb")), perms::owner_all);
}

TEST_F(BadRecord, That_is_gone_by_the_time_of_Open_ends_the_program_and_does_not_come_into_being) {
    MakeRecord(Entry("Record1.mdb"), 3);
    EXPECT_EXIT(
        {
            TellRunTimeError();
            OpenBrowser();
            std::filesystem::remove(Entry("Record1.mdb"));
            OpenEntry("Record1.mdb");
        },
        testing::ExitedWithCode(1), EndedBy(3024));
    folder.TakeFilesOfChild();
    EXPECT_TRUE(RecordFiles().empty());
}

TEST_F(BadRecord, That_was_deleted_while_it_was_on_show_ends_the_program_with_the_next_page) {
    for (const std::string button : {"next_DB", "prev_DB"}) {
        std::filesystem::remove(Entry("Record1.mdb"));
        MakeRecord(Entry("Record1.mdb"), 2500);
        EXPECT_EXIT(
            {
                TellRunTimeError();
                OpenBrowser();
                OpenEntry("Record1.mdb");
                Next();
                DeleteEntry("Record1.mdb");
                user.Click(kBrowser, button);
            },
            testing::ExitedWithCode(1), EndedBy(3024))
            << button;
        folder.TakeFilesOfChild();
        EXPECT_TRUE(RecordFiles().empty());
    }
}

TEST_F(BadRecord, With_a_number_that_is_none_ends_the_program_and_keeps_the_numbers_set_right_before) {
    MakeNumbered("Record1.mdb", {"3", "many", "9"});
    EXPECT_EXIT(
        {
            TellRunTimeError();
            OpenBrowser();
            OpenEntry("Record1.mdb");
        },
        testing::ExitedWithCode(1), EndedBy(13));
    folder.TakeFilesOfChild();
    EXPECT_EQ(Column(RowsOf(Entry("Record1.mdb")), 0), (Texts{"1", "many", "9"}));
}

TEST_F(BadRecord, With_a_Null_in_a_row_on_show_ends_the_program) {
    for (const char* column : {"Time", "Ch1", "Ch20"}) {
        Row row = RowNumbered("2");
        row.erase(column);
        MakeTable("Record1.mdb", "DATA", RecordColumns(), {RowNumbered("1"), row});
        SCOPED_TRACE(column);
        ExpectOpenEnds(94);
        std::filesystem::remove(Entry("Record1.mdb"));
    }
}

TEST_F(BadRecord, With_a_Null_on_a_later_page_is_shown_up_to_it) {
    MakeRecord(Entry("Record1.mdb"), 1000);
    Database database = TheDBEngine().OpenDatabase(Entry("Record1.mdb"));
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    rows.Set("NUM", "1001");
    rows.Update();
    database.Close();
    OpenBrowser();
    OpenEntry("Record1.mdb");
    EXPECT_EQ(ShownNumbers(), Counting(1, 1000));
}

TEST_F(BadRecord, With_a_Null_ends_the_program_once_its_page_comes) {
    MakeRecord(Entry("Record1.mdb"), 1000);
    Database database = TheDBEngine().OpenDatabase(Entry("Record1.mdb"));
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    rows.Set("NUM", "1001");
    rows.Update();
    database.Close();
    ExpectEnd(94, [this] {
        OpenEntry("Record1.mdb");
        Next();
    });
}

// ---- Records in use

#ifndef _WIN32  // a process cannot be forked
TEST_F(BadRecord, That_another_program_has_open_is_not_deleted_and_ends_the_program) {
    MakeRecord(Entry("Record1.mdb"), 3);
    ChildProcess reader([&](const ChildProcess::Contact& contact) {
        Database database = TheDBEngine().OpenDatabase(Entry("Record1.mdb"));
        contact.Send();
        contact.Await();
    });
    ASSERT_TRUE(reader.Talk().Await());
    ExpectEnd(70, [this] { DeleteEntry("Record1.mdb"); });
    reader.Talk().Send();
    EXPECT_EQ(reader.End(), 0);
}
#endif

class BrowsedInARun : public BrowserDesk {
protected:
    void OpenWithRecord() {
        OpenConnected(1);
        Assign({"Record1"});
    }
    Texts Stored() const { return Column(RowsOf(Record("Record1")), 0); }
};

TEST_F(BrowsedInARun, Shows_the_rows_so_far_of_the_record_that_is_written_to_and_the_run_goes_on) {
    OpenWithRecord();
    Texts shown;
    AfterScans(3, [&] {
        OpenBrowser();
        OpenEntry("Record1.mdb");
        EXPECT_EQ(ShownNumbers(), Counting(1, static_cast<int>(ScanCount(0))));
        EXPECT_EQ(Cell(2, 2), "+1.5E+00");
        shown = ShownNumbers();
    });
    RunScans(6);
    EXPECT_GE(shown.size(), 3U);
    EXPECT_EQ(ShownNumbers(), shown) << "the page on show does not follow the run";
    EXPECT_EQ(Stored(), Counting(1, 6));
}

TEST_F(BrowsedInARun, Pages_through_the_record_that_is_written_to) {
    MakeRecord(Record("Record1"), 1500);
    OpenWithRecord();
    AfterScans(1, [&] {
        OpenBrowser();
        OpenEntry("Record1.mdb");
    });
    AfterScans(3, [&] {
        Next();
        EXPECT_GE(GridRows(), 502);
        Previous();
    });
    RunScans(5);
    EXPECT_EQ(ShownNumbers(), Counting(1, 1000));
    EXPECT_EQ(Stored(), Counting(1, 1505));
}

TEST_F(BrowsedInARun, Closes_the_gap_of_a_row_taken_out_while_the_run_numbers_on_by_its_scans) {
    OpenWithRecord();
    AfterScans(3, [&] {
        ASSERT_EQ(ScanCount(0), 3);
        TakeOut("Record1.mdb", 1, 1);
        OpenBrowser();
        OpenEntry("Record1.mdb");
        EXPECT_EQ(ShownNumbers(), Counting(1, 2));
    });
    RunScans(5);
    EXPECT_EQ(Stored(), (Texts{"1", "2", "4", "5"}));
}

TEST_F(BrowsedInARun, Shows_another_record_without_touching_the_run) {
    MakeRecord(Record("Record2"), 2);
    OpenWithRecord();
    AfterScans(2, [&] {
        OpenBrowser();
        OpenEntry("Record2.mdb");
        EXPECT_EQ(ShownNumbers(), Counting(1, 2));
    });
    RunScans(4);
    EXPECT_EQ(Stored(), Counting(1, 4));
}

TEST_F(BrowsedInARun, Holds_the_run_while_it_is_open_from_the_menu) {
    OpenWithRecord();
    user.WhenShown(kBrowser, [&] {
        const double scans = ScanCount(0);
        const auto moment = clock.Elapsed();
        OpenEntry("Record1.mdb");
        for (int i = 0; i < 5; ++i) DoEvents();
        EXPECT_EQ(ScanCount(0), scans);
        EXPECT_EQ(clock.Elapsed(), moment);
        user.Click(kBrowser, "Command4");
    });
    AfterScans(2, [&] { user.Menu("Record_View"); });
    RunScans(4);
    EXPECT_EQ(Stored(), Counting(1, 4));
}

TEST_F(BrowsedInARun, Deletes_another_record) {
    MakeRecord(Record("Record2"), 2);
    OpenWithRecord();
    AfterScans(2, [&] {
        OpenBrowser();
        DeleteEntry("Record2.mdb");
    });
    RunScans(4);
    EXPECT_EQ(RecordFiles(), Texts{"Record1.mdb"});
    EXPECT_EQ(Stored(), Counting(1, 4));
}

TEST_F(BrowsedInARun, Ends_the_program_over_deleting_the_record_that_is_written_to_and_its_rows_stay) {
    EXPECT_EXIT(
        {
            OpenWithRecord();
            TellRunTimeError();
            AfterScans(3, [&] {
                OpenBrowser();
                DeleteEntry("Record1.mdb");
            });
            RunScans(6);
        },
        testing::ExitedWithCode(1), EndedBy(70));
    folder.TakeFilesOfChild();
    EXPECT_GE(Stored().size(), 3U);
}

TEST_F(BrowsedInARun, Deletes_the_record_between_two_runs_and_the_next_Start_makes_it_anew) {
    OpenWithRecord();
    RunScans(3);
    OpenBrowser();
    DeleteEntry("Record1.mdb");
    EXPECT_FALSE(FileExists(Record("Record1")));
    EXPECT_EQ(RecordName(0), "Record1");
    RunScans(2);
    EXPECT_EQ(Stored(), Counting(1, 2));
}

}  // namespace
}  // namespace vantrel
