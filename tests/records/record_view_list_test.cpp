// The record browser: the list of the folder, and deleting what it lists.
#include "records/browser_desk.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <fstream>

namespace vantrel {
namespace {

// ---- The list

class RecordList : public BrowserDesk {
protected:
    void Touch(const Texts& entries) const {
        for (const std::string& entry : entries) {
            const std::string path = Entry(entry);
            std::ofstream file{std::filesystem::path(std::u8string(path.begin(), path.end()))};
        }
    }
    /// What a listing of the folder gives, with the wanted ending, in its order.
    Texts InTheSystemsOrder() const {
        Texts names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "db"))
            if (entry.path().extension() == ".mdb") names.push_back(entry.path().filename().string());
        return names;
    }
};

TEST_F(RecordList, Has_the_entries_that_end_in_mdb_in_small_letters) {
    Touch({"a.mdb", "Record 2.mdb", "B.MDB", "c.Mdb", "d.mdb.bak", "emdb", "f.mdbx", "g.txt", "h..mdb", "mdb"});
    OpenBrowser();
    Texts listed = Listed();
    std::ranges::sort(listed);
    EXPECT_EQ(listed, (Texts{"Record 2.mdb", "a.mdb", "h..mdb"}));
}

TEST_F(RecordList, Tells_while_it_is_empty_how_a_record_is_made) {
    OpenBrowser();
    EXPECT_EQ(user.ToolTip("Record_View_Form", "List1"),
              "There is no record yet: the first Start with a record from Set Record makes one.");
}

#ifndef _WIN32  // the system lists a folder by name
TEST_F(RecordList, Stands_in_the_order_in_which_the_system_lists_the_folder) {
    Texts entries;
    for (const std::string& number : Counting(1, 40)) entries.push_back("Record" + number + ".mdb");
    Touch(entries);
    ASSERT_FALSE(std::ranges::is_sorted(InTheSystemsOrder())) << "an order by chance proves nothing";
    OpenBrowser();
    EXPECT_EQ(Listed(), InTheSystemsOrder());
}
#endif

TEST_F(RecordList, Has_folders_too) {
    std::filesystem::create_directory(Entry("abc.mdb"));
    std::filesystem::create_directory(Entry("abc"));
    OpenBrowser();
    EXPECT_EQ(Listed(), Texts{"abc.mdb"});
}

TEST_F(RecordList, Has_names_that_begin_with_a_point) {
    Touch({".Record1.mdb"});
    OpenBrowser();
    EXPECT_EQ(Listed(), Texts{".Record1.mdb"});
}

TEST_F(RecordList, Has_names_with_letters_beyond_ASCII) {
    Touch({"Record \xC3\xA4\xE2\x82\xAC.mdb"});
    OpenBrowser();
    EXPECT_EQ(Listed(), Texts{"Record \xC3\xA4\xE2\x82\xAC.mdb"});
}

TEST_F(RecordList, Does_not_look_into_folders_or_beside_the_folder_db) {
    std::filesystem::create_directory(Entry("inner"));
    Touch({"inner/a.mdb", "../b.mdb"});
    OpenBrowser();
    EXPECT_EQ(Listed(), Texts{});
}

TEST_F(RecordList, Is_empty_without_the_folder) {
    std::filesystem::remove(folder / "db");
    OpenBrowser();
    EXPECT_EQ(Listed(), Texts{});
    EXPECT_FALSE(std::filesystem::exists(folder / "db"));
}

TEST_F(RecordList, Follows_the_folder_by_Fresh_alone) {
    Touch({"a.mdb"});
    OpenBrowser();
    Touch({"b.mdb"});
    std::filesystem::remove(Entry("a.mdb"));
    EXPECT_EQ(Listed(), Texts{"a.mdb"});
    Fresh();
    EXPECT_EQ(Listed(), Texts{"b.mdb"});
}

TEST_F(RecordList, Loses_its_selection_by_Fresh) {
    Touch({"a.mdb"});
    OpenBrowser();
    Choose("a.mdb");
    EXPECT_EQ(user.Index(kBrowser, "List1"), 0);
    Fresh();
    EXPECT_EQ(user.Index(kBrowser, "List1"), -1);
}

TEST_F(RecordList, Comes_up_without_a_selection_and_gets_none_by_its_focus) {
    Touch({"a.mdb"});
    OpenBrowser();
    EXPECT_EQ(user.Index(kBrowser, "List1"), -1);
    user.Press(kBrowser, "Command1", Qt::Key_Backtab);
    EXPECT_EQ(user.Index(kBrowser, "List1"), -1);
}

// ---- Deleted

class DeletedRecord : public BrowserDesk {
protected:
    void SetUp() override {
        MakeRecord(Entry("Record1.mdb"), 1);
        MakeRecord(Entry("old.mdb"), 1);
        OpenBrowser();
    }
};

TEST_F(DeletedRecord, Is_asked_for_by_its_name_in_quotes) {
    user.AnswerNo("delete");
    DeleteEntry("Record1.mdb");
    EXPECT_EQ(user.Messages(), Texts{"Will you delete the \"Record1.mdb\"?"});
}

TEST_F(DeletedRecord, Is_asked_for_without_a_title_by_Yes_and_No) {
    user.WhenMessage("delete", [&] {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "");
        EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
    });
    DeleteEntry("Record1.mdb");
}

TEST_F(DeletedRecord, Beeps_before_it_asks) {
    user.WhenMessage("delete", [] { EXPECT_EQ(User::Beeps(), 1); });
    DeleteEntry("Record1.mdb");
    EXPECT_EQ(User::Beeps(), 1);
}

TEST_F(DeletedRecord, Is_gone_after_Yes_from_folder_and_list) {
    DeleteEntry("Record1.mdb");
    EXPECT_EQ(RecordFiles(), Texts{"old.mdb"});
    EXPECT_EQ(Listed(), Texts{"old.mdb"});
}

TEST_F(DeletedRecord, Is_still_there_while_it_is_asked_for) {
    user.WhenMessage("delete", [&] { EXPECT_TRUE(FileExists(Entry("Record1.mdb"))); });
    DeleteEntry("Record1.mdb");
}

TEST_F(DeletedRecord, Stays_after_No_and_the_list_is_read_again) {
    MakeRecord(Entry("Record2.mdb"), 1);
    user.AnswerNo("delete");
    DeleteEntry("Record1.mdb");
    EXPECT_TRUE(FileExists(Entry("Record1.mdb")));
    EXPECT_EQ(Listed().size(), 3U);
    EXPECT_EQ(user.Index(kBrowser, "List1"), -1);
}

TEST_F(DeletedRecord, Stays_after_Enter_and_after_Escape) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        user.WhenMessage("delete", [&] { QTest::keyClick(QApplication::activeModalWidget(), key); });
        DeleteEntry("Record1.mdb");
        EXPECT_TRUE(FileExists(Entry("Record1.mdb"))) << key;
    }
}

TEST_F(DeletedRecord, Needs_the_word_Record_in_its_name_and_is_not_even_asked_for_without) {
    MakeRecord(Entry("record8.mdb"), 1);
    MakeRecord(Entry("RECORD9.mdb"), 1);
    Fresh();
    for (const char* entry : {"old.mdb", "record8.mdb", "RECORD9.mdb"}) {
        DeleteEntry(entry);
        EXPECT_TRUE(FileExists(Entry(entry))) << entry;
        EXPECT_GE(user.Index(kBrowser, "List1"), 0) << "the list was read again";
    }
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_EQ(User::Beeps(), 0);
}

TEST_F(DeletedRecord, May_have_the_word_Record_anywhere_in_its_name) {
    MakeRecord(Entry("my Records of May.mdb"), 1);
    Fresh();
    DeleteEntry("my Records of May.mdb");
    EXPECT_EQ(user.Messages(), Texts{"Will you delete the \"my Records of May.mdb\"?"});
    EXPECT_FALSE(FileExists(Entry("my Records of May.mdb")));
}

TEST_F(DeletedRecord, Needs_a_selection) {
    user.Click(kBrowser, "Command3");
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_EQ(RecordFiles().size(), 2U);
}

TEST_F(DeletedRecord, May_be_any_file) {
    WriteFileBytes(Entry("Record9.mdb"), "a shopping list");
    Fresh();
    DeleteEntry("Record9.mdb");
    EXPECT_FALSE(FileExists(Entry("Record9.mdb")));
}

TEST_F(DeletedRecord, Stays_on_show) {
    OpenEntry("Record1.mdb");
    DeleteEntry("Record1.mdb");
    EXPECT_EQ(ShownNumbers(), Counting(1, 1));
}

TEST_F(DeletedRecord, Takes_a_journal_with_it_that_a_crash_left) {
    WriteFileBytes(Entry("Record1.mdb-journal"), "");
    DeleteEntry("Record1.mdb");
    EXPECT_EQ(RecordFiles(), Texts{"old.mdb"});
}

TEST_F(DeletedRecord, Is_told_to_be_none_where_a_folder_bears_the_name) {
    std::filesystem::create_directory(Entry("Record3.mdb"));
    Fresh();
    DeleteEntry("Record3.mdb");
    EXPECT_EQ(user.Messages().back(), "There is no file \"Record3.mdb\" to delete.");
    EXPECT_TRUE(std::filesystem::is_directory(Entry("Record3.mdb")));
}

TEST_F(DeletedRecord, Is_told_to_be_none_where_somebody_else_was_quicker) {
    user.WhenMessage("delete the", [&] { std::filesystem::remove(Entry("Record1.mdb")); });
    DeleteEntry("Record1.mdb");
    EXPECT_EQ(user.Messages().back(), "There is no file \"Record1.mdb\" to delete.");
    EXPECT_EQ(Listed(), Texts{"old.mdb"});
}

}  // namespace
}  // namespace vantrel
