// Files whose names are long, or not those of an English system.
#include "platform/dbengine.h"
#include "platform/files.h"
#include "platform/os/file.h"
#include "platform/visa/wire_log.h"
#include "support/errors.h"
#include "support/records.h"
#include "support/temp_folder.h"
#include "support/texts.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

/// A folder of the program that is called `name`.
class AppFolderNamed : public TempFolder {
public:
    explicit AppFolderNamed(const std::string& name) : program_path_(AppPath()) {
        UseAppPath(*this / name);
        std::filesystem::create_directories(Whole(DbFolder()));
    }
    ~AppFolderNamed() { UseAppPath(program_path_); }

private:
    /// In the form in which Windows takes a folder of any length.
    static std::filesystem::path Whole(const std::string& folder) {
        const std::filesystem::path path = os::PathOf(folder);
#ifdef _WIN32
        return LR"(\\?\)" + std::filesystem::absolute(path).make_preferred().native();
#else
        return path;
#endif
    }
    std::string program_path_;
};

std::string BytesOf(const std::string& path) {
    os::File file;
    if (file.Open(path, os::File::Use::kShared) != os::Fault::kNone) return "cannot be opened";
    return file.Read(0, 1000);
}

/// What the program does with a record and a page of it works in the folder of this name with a record of this name.
void ExpectToWork(const std::string& folder, const std::string& record) {
    const AppFolderNamed app(folder);
    ASSERT_EQ(StateOfDbFolder(), DbFolderState::kUsable);
    const std::string path = RecordFilePath(record);
    MakeRecord(path, 2);
    EXPECT_EQ(DbEntries(), Texts{record + ".mdb"});
    EXPECT_TRUE(FileExists(path));

    Database database = TheDBEngine().OpenDatabase(path);
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    rows.Set("NUM", "3");
    rows.Update();
    rows.MoveLast();
    EXPECT_EQ(rows.Text("NUM"), "3");
    EXPECT_EQ(ErrorOf([&] { Kill(path); }), kPermissionDenied);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(path, "", 0); }), kFileExists);
    database.Close();
    EXPECT_EQ(DbEntries(), Texts{record + ".mdb"});

    const std::string page = AppPath() + "/" + record + ".csv";
    OpenForOutput(page, 1);
    Print(1, "one");
    CloseFile(1);
    EXPECT_EQ(BytesOf(page), "one");

    const std::string log = AppPath() + "/" + record + ".log";
    WireLog(log.c_str()).Opened("A", 1, kViSuccess);
    EXPECT_NE(BytesOf(log).find("0 = \"A\"\n"), std::string::npos);

    Kill(path);
    EXPECT_EQ(DbEntries(), Texts{});
}

TEST(Paths, Of_another_script_work) {
    ExpectToWork("\u6D4B\u91CF \u0434\u0430\u043D\u043D\u044B\u0435", "Rekord-\u00C4");
}

TEST(Paths, Of_characters_beyond_the_first_plane_work) { ExpectToWork("\U0001F321", "Record \U00020BB7"); }

TEST(Paths, Of_more_than_260_characters_work) {
    std::string folder = "a";
    for (int i = 0; i < 5; ++i) folder += "/" + std::string(80, 'a');
    ExpectToWork(folder, "Record1");
}

#ifdef _WIN32
TEST(Paths, Of_more_than_1040_bytes_work) {
    std::string part;
    for (int i = 0; i < 74; ++i) part += "\u6D4B";
    std::string folder = part;
    for (int i = 0; i < 4; ++i) folder += "/" + part;
    ExpectToWork(folder, "Record1");
}
#endif

TEST(Paths, Grow_beyond_260_characters_with_the_name_of_the_record) {
    ExpectToWork(std::string(150, 'a'), "Record" + std::string(200, 'b'));
}

}  // namespace
}  // namespace vantrel
