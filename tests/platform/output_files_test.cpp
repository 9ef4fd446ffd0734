// Text files for output, by number.
#include "platform/dbengine.h"
#include "platform/files.h"
#include "support/anybody.h"
#include "support/child_process.h"
#include "support/environment.h"
#include "support/errors.h"
#include "support/records.h"
#include "support/temp_folder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#ifndef _WIN32
#include "support/file_calls.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vantrel {
namespace {

const std::string kMoreThanABuffer(100000, 'x');

int OpenError(const std::string& path, int number = 1) {
    return ErrorOf([&] { OpenForOutput(path, number); });
}
int PrintError(const std::string& text) {
    return ErrorOf([&] { Print(1, text); });
}
int CloseError() {
    return ErrorOf([] { CloseFile(1); });
}

/// What a child process does for its test.
[[maybe_unused]] void Require(bool holds) {
    if (!holds) throw std::runtime_error("does not hold");
}

class OutputFile : public testing::Test {
protected:
    TempFolder folder;
    std::string path = folder / "page.csv";
};

TEST_F(OutputFile, Is_made_where_there_is_none) {
    OpenForOutput(path, 1);
    Print(1, "one");
    CloseFile(1);
    EXPECT_EQ(FileBytes(path), "one");
}

TEST_F(OutputFile, Replaces_a_longer_one) {
    WriteFileBytes(path, "something longer");
    OpenForOutput(path, 1);
    Print(1, "one");
    CloseFile(1);
    EXPECT_EQ(FileBytes(path), "one");
}

TEST_F(OutputFile, Holds_what_is_printed_byte_for_byte_and_nothing_between) {
    OpenForOutput(path, 1);
    for (const char* text : {"a\r\n", "\n", "", "\"", "b\r", "\x1A"}) Print(1, text);
    CloseFile(1);
    EXPECT_EQ(FileBytes(path), "a\r\n\n\"b\r\x1A");
}

TEST_F(OutputFile, Is_in_the_code_page) {
    SetEnvironment("LC_ALL", "C");
    OpenForOutput(path, 1);
    Print(1, "20 \u00B0C \u2192");
    CloseFile(1);
    EXPECT_EQ(FileBytes(path),
              "20 \xB0"
              "C ?");
}

TEST_F(OutputFile, Under_a_number_that_is_taken_is_an_error_and_touches_neither_file) {
    WriteFileBytes(folder / "other", "kept");
    OpenForOutput(path, 1);
    Print(1, "one");
    EXPECT_EQ(OpenError(folder / "other"), kFileAlreadyOpen);
    EXPECT_EQ(FileBytes(folder / "other"), "kept");
    CloseFile(1);
    EXPECT_EQ(FileBytes(path), "one");
}

TEST_F(OutputFile, Gives_its_number_back_when_it_is_closed) {
    OpenForOutput(path, 1);
    CloseFile(1);
    EXPECT_EQ(OpenError(folder / "other"), 0);
}

TEST_F(OutputFile, Has_a_number_of_its_own) {
    OpenForOutput(path, 1);
    OpenForOutput(folder / "other", 2);
    Print(2, "two");
    Print(1, "one");
    CloseFile(1);
    CloseFile(2);
    EXPECT_EQ(FileBytes(path) + FileBytes(folder / "other"), "onetwo");
}

TEST_F(OutputFile, That_is_not_open_cannot_be_written_or_closed) {
    EXPECT_EQ(PrintError("one"), kBadFileNumber);
    EXPECT_EQ(CloseError(), kBadFileNumber);
}

TEST_F(OutputFile, Cannot_be_a_folder) { EXPECT_EQ(OpenError(folder.Path()), kPermissionDenied); }

TEST_F(OutputFile, Cannot_be_one_that_is_write_protected) {
    if (WritesToEveryFile()) GTEST_SKIP() << "the user of this Wine may write to every file";
    using std::filesystem::perms;
    WriteFileBytes(path, "kept");
    std::filesystem::permissions(path, perms::owner_read | perms::group_read | perms::others_read);
    std::filesystem::permissions(folder.Path(), perms::others_exec, std::filesystem::perm_options::add);
    EXPECT_TRUE(
        HoldsForAnybody([&] { return OpenError(path) == kPermissionDenied && CloseError() == kBadFileNumber; }));
    EXPECT_EQ(FileBytes(path), "kept");
    std::filesystem::permissions(path, perms::owner_all);
}

#ifndef _WIN32  // a link takes a right that users lack
TEST_F(OutputFile, Cannot_be_a_database_that_is_open_and_leaves_it_as_it_was) {
    const std::string record = folder / "Record1.mdb";
    Database database = NewDatabase(record);
    const std::string before = FileBytes(record);
    std::filesystem::create_symlink(record, folder / "link.csv");
    for (const std::string& target : {record, folder / "link.csv"}) EXPECT_EQ(OpenError(target), kPermissionDenied);
    EXPECT_EQ(FileBytes(record), before);
    database.Close();
    EXPECT_EQ(OpenError(record), 0);
}
#endif

#ifndef _WIN32  // a process cannot be forked
TEST_F(OutputFile, Cannot_be_a_database_that_another_program_has_open) {
    const std::string record = folder / "Record1.mdb";
    NewDatabase(record);
    const std::string before = FileBytes(record);
    ChildProcess other([&](const ChildProcess::Contact& test) {
        const Database database = TheDBEngine().OpenDatabase(record);
        test.Send();
        test.Await();
    });
    ASSERT_TRUE(other.Talk().Await());
    EXPECT_EQ(OpenError(record), kPermissionDenied);
    EXPECT_EQ(FileBytes(record), before);
}
#endif

TEST_F(OutputFile, Cannot_be_in_a_folder_that_is_not_there) {
    WriteFileBytes(folder / "file", "");
    EXPECT_EQ(OpenError(folder / "none/page.csv"), kPathNotFound);
    EXPECT_EQ(OpenError(folder / "file/page.csv"), kPathNotFound);
    EXPECT_EQ(OpenError(""), kPathNotFound);
    EXPECT_EQ(OpenError(folder / std::string(256, 'x')), kPathNotFound);
}

#ifndef _WIN32  // there are no pipes among the files
TEST_F(OutputFile, Cannot_be_a_pipe_and_does_not_wait_for_its_reader) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(OpenError(path), kPermissionDenied);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(OpenError(path), kPermissionDenied);
    close(reader);
}
#endif

#ifndef _WIN32  // there is no device that does this
TEST_F(OutputFile, Can_be_a_device) {
    OpenForOutput("/dev/null", 1);
    Print(1, kMoreThanABuffer);
    CloseFile(1);
}

TEST_F(OutputFile, That_is_a_device_which_is_not_ready_is_an_error_and_not_waited_for) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        GTEST_SKIP() << "this machine has no pseudo terminals";
    OpenForOutput(ptsname(terminal), 1);
    EXPECT_EQ(PrintError(kMoreThanABuffer), kDeviceIo);  // nobody takes it at the other end
    close(terminal);
}
#endif

TEST_F(OutputFile, That_cannot_be_opened_takes_no_number) {
    OpenError(folder.Path());
    EXPECT_EQ(CloseError(), kBadFileNumber);
    OpenError(folder / "none/page.csv");
    EXPECT_EQ(OpenError(path), 0);
}

#ifndef _WIN32  // there is no device that does this
TEST_F(OutputFile, On_a_full_disk_fails_while_it_is_written) {
    OpenForOutput("/dev/full", 1);
    EXPECT_EQ(PrintError(kMoreThanABuffer), kDiskFull);
}

TEST_F(OutputFile, On_a_full_disk_fails_at_its_close_at_the_latest) {
    OpenForOutput("/dev/full", 1);
    EXPECT_EQ(PrintError("one"), 0);
    EXPECT_EQ(CloseError(), kDiskFull);
}

TEST_F(OutputFile, Keeps_its_number_after_an_error_while_it_is_written) {
    OpenForOutput("/dev/full", 1);
    PrintError(kMoreThanABuffer);
    EXPECT_EQ(OpenError(path), kFileAlreadyOpen);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(OutputFile, Keeps_its_number_after_an_error_at_its_close) {
    OpenForOutput("/dev/full", 1);
    Print(1, "one");
    CloseError();
    EXPECT_EQ(OpenError(path), kFileAlreadyOpen);
}

TEST_F(OutputFile, That_refuses_what_is_written_is_an_error_of_the_device) {
    OpenForOutput("/proc/self/oom_score_adj", 1);  // takes numbers only
    Print(1, "one");
    EXPECT_EQ(CloseError(), kDeviceIo);
    EXPECT_EQ(OpenError(path), kFileAlreadyOpen);
}
#endif

#ifndef _WIN32  // the system's calls cannot be taken over
TEST_F(OutputFile, That_has_no_room_to_be_made_in_is_a_full_disk) {
    FileCalls calls(folder.Path());
    calls.FailFrom(1, ENOSPC, false);
    EXPECT_EQ(OpenError(path), kDiskFull);
}

TEST_F(OutputFile, That_cannot_be_emptied_is_refused_and_stays_as_it_was) {
    WriteFileBytes(path, "kept");
    FileCalls calls(folder.Path());
    calls.FailFrom(2, EIO, false);  // behind the opening
    EXPECT_EQ(OpenError(path), kPermissionDenied);
    EXPECT_EQ(FileBytes(path), "kept");
    EXPECT_EQ(OpenError(path), 0);  // nobody holds it
}
#endif

#ifndef _WIN32  // there is no limit of a file's size
TEST_F(OutputFile, That_grows_past_the_limit_of_the_user_is_a_full_disk_and_keeps_what_was_written) {
    ChildProcess limited([&](const ChildProcess::Contact&) {
        const rlimit limit{10000, 10000};
        Require(setrlimit(RLIMIT_FSIZE, &limit) == 0);
        OpenForOutput(path, 1);
        Require(PrintError(kMoreThanABuffer) == kDiskFull);
        Require(OpenError(folder / "other") == kFileAlreadyOpen);
    });
    EXPECT_EQ(limited.End(), 0);
    EXPECT_EQ(FileBytes(path), kMoreThanABuffer.substr(0, 10000));
}
#endif

}  // namespace
}  // namespace vantrel
