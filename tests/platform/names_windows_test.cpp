// Names that no file can have on Windows, files that are in use there, and what its errors mean.
#include "platform/dbengine_record.h"
#include "platform/files.h"
#include "platform/os/file.h"
#include "platform/visa/wire_log.h"
#include "support/errors.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <windows.h>

namespace vantrel {
namespace {

const Texts kNamesOfDevices{"CON", "con", "PRN", "AUX", "NUL", "COM1", "com9", "LPT1", "LPT9", "COM\u00B9", "CONOUT$"};

TEST(NamesOnWindows, Of_devices_are_no_names_of_records_whatever_stands_behind_them) {
    for (const std::string& device : kNamesOfDevices)
        for (const char* ending : {"", ".x", " ", " .Record1"})
            EXPECT_EQ(ErrorOf([&] { RecordFilePath(device + ending); }), kNotAValidName) << device << ending;
}

TEST(NamesOnWindows, That_only_begin_like_those_of_devices_are_names) {
    for (const char* name : {"CONSOLE", "COM", "COM0", "COM10", "LPTx", "Record CON", "xNUL.CON"})
        EXPECT_EQ(ErrorOf([&] { RecordFilePath(name); }), 0) << name;
}

TEST(NamesOnWindows, Of_entries_hold_no_forbidden_character_and_end_in_no_point_or_blank) {
    for (const char* name : {"Rec:x.mdb", "Record1.mdb:x", "Record1.mdb.", "Record1.mdb ", "Rec?.mdb", "Rec*.mdb",
                             "<.mdb", ">.mdb", "|.mdb", "\".mdb", "Rec\t.mdb", "NUL", "aux.mdb"})
        EXPECT_EQ(ErrorOf([&] { DbEntryPath(name); }), kNotAValidName) << name;
    for (const char* name : {" Record1.mdb", "Record1..mdb", "..Rec", "Record 1 .mdb"})
        EXPECT_EQ(ErrorOf([&] { DbEntryPath(name); }), 0) << name;
}

TEST(NamesOnWindows, Count_their_length_in_units_of_16_bits) {
    std::string longest;
    for (int i = 0; i < 243; ++i) longest += "\u00C4";
    EXPECT_EQ(ErrorOf([&] { RecordFilePath(longest); }), 0);
    EXPECT_EQ(ErrorOf([&] { RecordFilePath(longest + "x"); }), kNotAValidName);
}

TEST(NamesOnWindows, That_are_none_make_and_open_no_database) {
    const TempFolder folder;
    for (const char* name : {"CON.mdb", "a.mdb.", "a.mdb ", "a.mdb:b", "a?.mdb"}) {
        EXPECT_EQ(ErrorOf([&] { TheDBEngine().CreateDatabase(folder / name, "", 0); }), kNotAValidName) << name;
        EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(folder / name); }), kFileMissing) << name;
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(NamesOnWindows, That_are_none_or_of_devices_take_no_output) {
    const TempFolder folder;
    for (const char* name : {"NUL", "nul.csv", "a.csv.", "a:b.csv"})
        EXPECT_EQ(ErrorOf([&] { OpenForOutput(folder / name, 1); }), kPathNotFound) << name;
    EXPECT_EQ(ErrorOf([&] { OpenForOutput(R"(\\.\pipe\vantrel)", 1); }), kPathNotFound);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(NamesOnWindows, That_are_none_or_of_devices_take_no_wire_log) {
    const TempFolder folder;
    for (const std::string name : {"NUL", "con.txt", "COM1", "wire.log:x", "wire."}) {
        testing::internal::CaptureStderr();
        WireLog log((folder / name).c_str());
        log.Opened("A", 1, kViSuccess);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "VANTREL_WIRE_LOG: " + folder / name + " cannot be written, nothing more is logged\n");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

/// A program that has a file for itself, as one that looks for viruses, while it lives.
class Scanner {
public:
    explicit Scanner(const std::string& path)
        : file_(CreateFileW(std::filesystem::path(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(file_, INVALID_HANDLE_VALUE);
    }
    ~Scanner() { CloseHandle(file_); }
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;

private:
    HANDLE file_;
};

/// Whether `works` is true although a scanner has the file at `path` as it begins, and lets it go a moment later. Where
/// the machine is so busy that the moment gets too long, it is tried again.
template <typename Works>
bool WorksBesideScanner(const std::string& path, const Works& works) {
    constexpr std::chrono::milliseconds kMoment(50);
    constexpr int kAttempts = 20;
    for (int attempts = 0; attempts < kAttempts; ++attempts) {
        std::optional<Scanner> scanner(std::in_place, path);
        std::thread end([&] {
            std::this_thread::sleep_for(kMoment);
            scanner.reset();
        });
        const bool has_worked = works();
        end.join();
        if (has_worked) return true;
    }
    return false;
}

TEST_F(Record, That_another_program_keeps_to_itself_for_a_moment_is_waited_for) {
    database.Close();
    EXPECT_TRUE(WorksBesideScanner(path, [&] { return ErrorOf([&] { TheDBEngine().OpenDatabase(path); }) == 0; }));
    EXPECT_TRUE(WorksBesideScanner(path, [&] { return ErrorOf([&] { Kill(path); }) == 0; }));
    EXPECT_FALSE(FileExists(path));
}

TEST_F(Record, That_another_program_keeps_to_itself_for_longer_is_in_use) {
    database.Close();
    const Scanner scanner(path);
    EXPECT_EQ(ErrorOf([&] { TheDBEngine().OpenDatabase(path); }), kFileInUse);
    EXPECT_EQ(ErrorOf([&] { Kill(path); }), kPermissionDenied);
    EXPECT_TRUE(FileExists(path));
}

TEST_F(Record, Whose_leftover_journal_another_program_keeps_to_itself_for_a_moment_is_deleted_with_it) {
    database.Close();
    WriteFileBytes(path + "-wal", "x");
    EXPECT_TRUE(WorksBesideScanner(path + "-wal", [&] {
        WriteFileBytes(path, "x");
        return ErrorOf([&] { Kill(path); }) == 0 && std::filesystem::is_empty(folder.Path());
    }));
}

TEST(OutputFileOnWindows, That_another_program_keeps_to_itself_for_a_moment_is_waited_for) {
    const TempFolder folder;
    WriteFileBytes(folder / "page.csv", "old");
    EXPECT_TRUE(WorksBesideScanner(folder / "page.csv",
                                   [&] { return ErrorOf([&] { OpenForOutput(folder / "page.csv", 1); }) == 0; }));
    CloseFile(1);
    EXPECT_EQ(FileBytes(folder / "page.csv"), "");
}

TEST_F(Record, That_is_open_can_be_moved_or_deleted_by_nobody) {
    std::error_code moved;
    std::filesystem::rename(path, folder / "elsewhere.mdb", moved);
    EXPECT_TRUE(moved);
    std::error_code deleted;
    std::filesystem::remove(path, deleted);
    EXPECT_TRUE(deleted);
    AddRows(database, {"1"});
    EXPECT_EQ(Stored(), Texts{"1"});
}

TEST_F(Record, That_is_read_only_is_not_deleted) {
    database.Close();
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    EXPECT_EQ(ErrorOf([&] { Kill(path); }), kPermissionDenied);
    EXPECT_TRUE(FileExists(path));
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

TEST_F(Record, Whose_journal_another_user_has_open_is_closed_without_a_wait) {
    AddRows(database, {"1"});
    // A wait would take 300 ms each time; a busy machine makes some of the times long.
    constexpr std::chrono::milliseconds kNoWait(250);
    constexpr int kAttempts = 20;
    std::chrono::steady_clock::duration shortest = std::chrono::hours(1);
    for (int attempts = 0; attempts < kAttempts && shortest >= kNoWait; ++attempts) {
        Database reader = TheDBEngine().OpenDatabase(path);
        EXPECT_EQ(Walk(reader.OpenRecordset("select * from data")), Texts{"1"});
        const auto before = std::chrono::steady_clock::now();
        reader.Close();
        shortest = std::min(shortest, std::chrono::steady_clock::now() - before);
    }
    EXPECT_LT(shortest, kNoWait);
    AddRows(database, {"2"});
    EXPECT_EQ(Stored(), Counting(2));
    database.Close();
    EXPECT_FALSE(FileExists(path + "-journal"));
}

TEST(OutputFileOnWindows, Can_be_read_by_others_while_it_is_written_and_nothing_else) {
    const TempFolder folder;
    OpenForOutput(folder / "page.csv", 1);
    os::File other;
    EXPECT_EQ(other.Open(folder / "page.csv", os::File::Use::kShared), os::Fault::kInUse);
    EXPECT_EQ(other.Open(folder / "page.csv", os::File::Use::kAlone), os::Fault::kInUse);
    EXPECT_EQ(FileBytes(folder / "page.csv"), "");
    CloseFile(1);
}

TEST(ErrorsOnWindows, Tell_of_no_room_on_the_disk_in_the_share_of_the_user_and_in_the_file) {
    constexpr int kDiskQuotaExceeded = 1295;  // which not every header has
    for (const int error :
         std::initializer_list<int>{ERROR_DISK_FULL, ERROR_HANDLE_DISK_FULL, ERROR_FILE_TOO_LARGE, kDiskQuotaExceeded})
        EXPECT_EQ(os::FaultOf(error), os::Fault::kFull) << error;
}

}  // namespace
}  // namespace vantrel
