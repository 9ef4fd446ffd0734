// Records that the record plot cannot open or draw.
#include "plot/record_draw_desk.h"
#include "support/anybody.h"

#include <QSlider>
#include <QTest>
#include <QWindow>
#include <filesystem>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vantrel {
namespace {

/// A record of which something has been cut off.
std::string CutRecord(const std::string& path, std::size_t bytes) {
    MakeRecord(path, 200);
    const std::string whole = FileBytes(path);
    std::filesystem::remove(path);
    return whole.substr(0, bytes);
}

class BadRecords : public RecordDraw {
protected:
    /// Gives up an administrator's right to read and write every file; the test's own stay its own.
    void BecomeNobody() const {
#ifndef _WIN32
        constexpr uid_t nobody = 65534;
        if (geteuid() != 0) return;
        std::vector<std::string> own = Files();
        own.push_back(folder.Path());
        for (const std::string& path : own) ASSERT_EQ(chown(path.c_str(), nobody, nobody), 0) << path;
        ASSERT_EQ(setegid(nobody), 0);
        ASSERT_EQ(seteuid(nobody), 0);
#endif
    }
    /// Chooses `entry` of the list and draws it. `at_choice`, `at_draw`: the messages, an empty one for none. Nothing
    /// on the screen and no byte of the file may change, and no file come or go.
    void ExpectRefused(const std::string& entry, const std::string& at_choice, const std::string& at_draw) {
        MakeRecord(Record("RecordGood"), 5, Level);
        const std::string path = (folder / "db/") + entry;
        const std::string bytes = BytesOf(path);
        const Texts files = Files();
        Dialog([&] {
            Choose("RecordGood.mdb");
            ChooseChannel("CH1");
            Draw();
            const Sight before = Standing();
            ExpectMessage([&] { Choose(entry); }, at_choice);
            if (!at_choice.empty()) {
                EXPECT_EQ(Standing(), before);
            }
            const Sight chosen = Standing();
            ExpectMessage([&] { Draw(); }, at_draw);
            EXPECT_EQ(Standing(), chosen);
            Choose("RecordGood.mdb");
            Draw();
            EXPECT_EQ(Standing(), before) << "the dialog goes on";
        });
        EXPECT_EQ(BytesOf(path), bytes);
        EXPECT_EQ(Files(), files);
    }

private:
    static std::string BytesOf(const std::string& path) {
        return std::filesystem::is_regular_file(path) ? FileBytes(path) : "";
    }
    void ExpectMessage(const User::Action& action, const std::string& message) {
        const std::size_t before = user.Messages().size();
        action();
        const Texts told(user.Messages().begin() + static_cast<std::ptrdiff_t>(before), user.Messages().end());
        EXPECT_EQ(told, message.empty() ? Texts{} : Texts{message});
    }
    Texts Files() const {
        Texts names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path()))
            names.push_back(entry.path().string());
        std::ranges::sort(names);
        return names;
    }
};

std::string AtChoice(const std::string& entry, int error) {
    return "The record cannot be opened.\n\n" + entry + ": " + ErrorText(error);
}

std::string AtDraw(int error) { return "The record cannot be drawn.\n\n" + ErrorText(error); }

TEST_F(BadRecords, File_that_is_no_database) {
    WriteFileBytes(Record("Record1"), std::string(5000, 'x'));
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNotADatabase), AtDraw(kNotADatabase));
}

TEST_F(BadRecords, Empty_file) {
    WriteFileBytes(Record("Record1"), "");
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNotADatabase), AtDraw(kNotADatabase));
}

TEST_F(BadRecords, Database_cut_off_in_its_first_page) {
    WriteFileBytes(Record("Record1"), CutRecord(Record("Record1"), 1000));
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNotADatabase), AtDraw(kNotADatabase));
}

TEST_F(BadRecords, Database_cut_off_in_its_rows) {
    WriteFileBytes(Record("Record1"), CutRecord(Record("Record1"), 12288));
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNotADatabase), AtDraw(kNotADatabase));
}

TEST_F(BadRecords, Database_without_the_table) {
    Database database = TheDBEngine().CreateDatabase(Record("Record1"), "", 0);
    TableDef table;
    table.Name = "OTHER";
    table.Fields.Append({"NUM"});
    database.AppendTableDef(table);
    database.Close();
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kTableMissing), AtDraw(kTableMissing));
}

TEST_F(BadRecords, Table_with_other_columns) {
    Database database = TheDBEngine().CreateDatabase(Record("Record1"), "", 0);
    TableDef table;
    table.Name = "DATA";
    for (const char* column : {"NUM", "Time", "Ch1"}) table.Fields.Append({column});
    database.AppendTableDef(table);
    Recordset rows = database.OpenRecordset("select * from data");
    for (const char* number : {"7", "9"}) {  // that a repair would change
        rows.AddNew();
        rows.Set("NUM", number);
        rows.Update();
    }
    database.Close();
    ExpectRefused("Record1.mdb", "", AtDraw(kItemNotFound));
}

TEST_F(BadRecords, Folder_that_bears_a_records_name) {
    std::filesystem::create_directory(Record("Record1"));
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNoPermission), AtDraw(kNoPermission));
}

#ifndef _WIN32  // a link takes a right that users lack
TEST_F(BadRecords, Link_to_a_file_that_is_missing) {
    std::filesystem::create_symlink(folder / "elsewhere.mdb", Record("Record1"));
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kFileMissing), AtDraw(kFileMissing));
}
#endif

#ifndef _WIN32  // under Wine, no access list binds the superuser
TEST_F(BadRecords, File_that_may_not_be_read) {
    MakeRecord(Record("Record1"), 5);
    const std::string bytes = FileBytes(Record("Record1"));
    BecomeNobody();
    std::filesystem::permissions(Record("Record1"), std::filesystem::perms::none);
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNoPermission), AtDraw(kNoPermission));
    std::filesystem::permissions(Record("Record1"), std::filesystem::perms::owner_read);
    EXPECT_EQ(FileBytes(Record("Record1")), bytes);
}
#endif

TEST_F(BadRecords, File_that_may_not_be_written) {
    if (WritesToEveryFile()) GTEST_SKIP() << "the user of this Wine may write to every file";
    MakeRecord(Record("Record1"), 5);
    BecomeNobody();
    std::filesystem::permissions(Record("Record1"), std::filesystem::perms::owner_read);
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNoPermission), AtDraw(kNoPermission));
    std::filesystem::permissions(Record("Record1"), std::filesystem::perms::owner_all);
}

#ifndef _WIN32  // there are no pipes among the files
TEST_F(BadRecords, Pipe_that_bears_a_records_name) {
    ASSERT_EQ(mkfifo(Record("Record1").c_str(), 0600), 0);
    ExpectRefused("Record1.mdb", AtChoice("Record1.mdb", kNoPermission), AtDraw(kNoPermission));
}
#endif

TEST_F(BadRecords, Record_that_was_deleted_since_it_was_listed) {
    MakeRecord(Record("Record1"), 5);
    Dialog([this] {
        Kill(Record("Record1"));
        ChooseChannel("CH1");
        Choose("Record1.mdb");
        Draw();
        EXPECT_EQ(user.Messages(), (Texts{AtChoice("Record1.mdb", kFileMissing), AtDraw(kFileMissing)}));
    });
    EXPECT_FALSE(FileExists(Record("Record1")));
}

TEST_F(BadRecords, Number_that_is_none) {
    MakeRecord(Record("Record1"), 3);
    Recordset rows = TheDBEngine().OpenDatabase(Record("Record1")).OpenRecordset("select * from data");
    rows.MoveFirst();
    rows.Edit();
    rows.Set("NUM", "5");
    rows.Update();
    rows.MoveNext();
    rows.Edit();
    rows.Set("NUM", "two");
    rows.Update();
    rows = {};
    ExpectRefused("Record1.mdb", "", AtDraw(kTypeMismatch));
}

TEST_F(BadRecords, Typed_names_that_lead_nowhere_are_told_and_make_no_file) {
    MakeRecord(Record("Record1"), 5, Level);
    MakeRecord(folder / "Record2.mdb", 5, Level);
    const std::string outside = FileBytes(folder / "Record2.mdb");
    struct Case {
        const char* name;
        int error;
    };
    Dialog([&] {
        Type("Combo_chan", "CH1");
        const std::vector<Colour> empty = Plot().pixels;
        const std::vector<Case> cases{Case{"Record9.mdb", kFileMissing},       Case{"Record1", kFileMissing},
#ifndef _WIN32  // large letters are the same as small ones in names
                                      Case{"Record1.MDB", kFileMissing},
#endif
                                      Case{" Record1.mdb", kFileMissing},      Case{"../Record2.mdb", kNotAValidName},
                                      Case{"..\\Record2.mdb", kNotAValidName}, Case{"./Record1.mdb", kNotAValidName},
                                      Case{"/Record1.mdb", kNotAValidName}};
        for (const Case& it : cases) {
            Type("Combo_record", it.name);
            Draw();
            EXPECT_EQ(LastMessage(), AtDraw(it.error)) << it.name;
        }
        EXPECT_EQ(user.Messages().size(), cases.size());
        EXPECT_EQ(Plot().pixels, empty);
        EXPECT_EQ(The<Record_View_Draw>().Record_Path, "");
    });
    const auto files = std::filesystem::directory_iterator(folder / "db");
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
    EXPECT_EQ(FileBytes(folder / "Record2.mdb"), outside);
}

TEST_F(BadRecords, Drag_of_the_cursor_over_a_record_that_is_gone_is_told_once) {
    MakeRecord(Record("Record1"), 100, Level);
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        Draw();
        Kill(Record("Record1"));
        auto& slider = *qobject_cast<QSlider*>(user.FindControl(kDialog, "Slider1"));
        QWindow* const window = slider.window()->windowHandle();
        const QPoint left = slider.mapTo(slider.window(), QPoint(5, slider.height() / 2));
        QTest::mousePress(window, Qt::LeftButton, {}, left);
        for (int x = 50; x < 500; x += 50) QTest::mouseMove(window, left + QPoint(x, 0));
        QTest::mouseRelease(window, Qt::LeftButton, {}, left + QPoint(500, 0));
        DoEvents();
        EXPECT_EQ(user.Messages(), Texts{"The value cannot be read.\n\n" + ErrorText(kFileMissing)});
        EXPECT_FALSE(slider.isSliderDown());
    });
    EXPECT_FALSE(FileExists(Record("Record1")));
}

TEST_F(BadRecords, Drawing_that_fails_half_way_leaves_traces_and_cursor_as_they_were) {
    // An overload right behind a gap has no place on the plot that a line could start from.
    MakeRecord(Record("Record1"), 5, Level);
    MakeRecord(Record("Record2"), 5, [](int row, int) {
        return Texts{"1", "2", " ", "+9.90000000E+37", "3"}[static_cast<std::size_t>(row) - 1];
    });
    Dialog([this] {
        Choose("Record1.mdb");
        ChooseChannel("CH1");
        Draw();
        const Sight before = Standing();
        Type("Combo_record", "Record2.mdb");
        ChooseChannel("CH2");
        Draw();
        ASSERT_EQ(user.Messages().size(), 1U);
        EXPECT_TRUE(user.Messages()[0].starts_with("The record cannot be drawn.\n\n")) << user.Messages()[0];
        EXPECT_EQ(Standing(), before);
        user.Move(kDialog, "Slider1", 3);
        EXPECT_EQ(Text("Text1"), "3");
        EXPECT_EQ(Text("show_value"), "1");
    });
}

}  // namespace
}  // namespace vantrel
