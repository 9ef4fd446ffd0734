// What is said at the start of a folder that can take no records.
#include "records/record_folder.h"

#include "platform/dbengine.h"
#include "support/desk.h"
#include "support/errors.h"
#include "support/records.h"
#include "support/texts.h"

#include <filesystem>

#ifndef _WIN32
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::string protected_folder;

}  // namespace

/// Stands before the system's, which lets the superuser write anywhere.
extern "C" int access(const char* path, int mode) noexcept {
    if (protected_folder != path) return faccessat(AT_FDCWD, path, mode, 0);
    errno = EACCES;
    return -1;
}
#endif

namespace vantrel {
namespace {

class RecordFolder : public Desk {
protected:
    /// The message about the folder.
    std::string Told(const std::string& fault, const std::string& remedy) const {
        return fault + "\n" + (folder / "db") + "\n\n" + remedy +
               ", or keep records elsewhere: vantrel --folder DIR uses DIR/db.\n\n"
               "You can go on, but only without records: a run that is to store ends the program at Start.";
    }
};

TEST_F(RecordFolder, That_takes_records_is_not_spoken_of) {
    TellUnusableRecordFolder();
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(RecordFolder, That_is_missing_is_told) {
    std::filesystem::remove(folder / "db");
    TellUnusableRecordFolder();
    EXPECT_EQ(user.Messages(), Texts{Told("There is no folder for records:", "Make this folder")});
}

#ifndef _WIN32  // the system's calls cannot be taken over
TEST_F(RecordFolder, That_may_not_be_written_is_told_and_its_records_cannot_be_opened) {
    MakeRecord(Record("Record1"), 1);
    protected_folder = folder / "db";
    TellUnusableRecordFolder();
    const int error = ErrorOf([&] { TheDBEngine().OpenDatabase(Record("Record1")); });
    protected_folder.clear();
    EXPECT_EQ(user.Messages(),
              Texts{Told("The folder for records cannot be written to:", "Get the permission to write there")});
    EXPECT_EQ(error, kNoPermission);
}
#endif

}  // namespace
}  // namespace vantrel
