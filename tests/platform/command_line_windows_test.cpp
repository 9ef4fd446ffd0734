// Folders as Windows writes them.
#include "platform/command_line.h"
#include "platform/files.h"
#include "support/records.h"
#include "support/temp_folder.h"
#include "support/texts.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

std::string FolderFor(const std::string& word) { return ReadCommandLine({"--folder", word}).folder; }

TEST(FolderOnWindows, Keeps_its_server) {
    EXPECT_EQ(FolderFor(R"(\\server\share\VAN)"), "//server/share/VAN");
    EXPECT_EQ(FolderFor("//server/share/VAN"), "//server/share/VAN");
    EXPECT_EQ(FolderFor(R"(\\server\share\a\..\VAN\)"), "//server/share/VAN");
}

TEST(FolderOnWindows, Keeps_its_drive) {
    EXPECT_EQ(FolderFor(R"(C:\VAN)"), "C:/VAN");
    EXPECT_EQ(FolderFor("c:/VAN/./bench/"), "c:/VAN/bench");
}

TEST(FolderOnWindows, Keeps_the_form_without_a_limit) {
    EXPECT_EQ(FolderFor(R"(\\?\C:\VAN)"), "//?/C:/VAN");
    EXPECT_EQ(FolderFor(R"(\\?\UNC\server\share\VAN)"), "//?/UNC/server/share/VAN");
}

TEST(FolderOnWindows, Without_a_root_is_one_of_the_current_folder) {
    EXPECT_EQ(FolderFor("VAN"), std::filesystem::current_path().generic_string() + "/VAN");
    EXPECT_EQ(FolderFor("\u6D4B\u91CF"), std::filesystem::current_path().generic_string() + "/\u6D4B\u91CF");
}

TEST(FolderOnWindows, In_the_form_without_a_limit_takes_records) {
    const TempAppFolder folder;
    const std::filesystem::path whole = std::filesystem::absolute(folder.Path()).make_preferred();
    UseAppPath(FolderFor(R"(\\?\)" + whole.string() + R"(\)"));
    ASSERT_EQ(StateOfDbFolder(), DbFolderState::kUsable);
    MakeRecord(RecordFilePath("Record1"), 1);
    EXPECT_EQ(DbEntries(), Texts{"Record1.mdb"});
    EXPECT_TRUE(std::filesystem::exists(folder / "db/Record1.mdb"));
}

}  // namespace
}  // namespace vantrel
