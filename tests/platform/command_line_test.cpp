#include "platform/command_line.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(CommandLine, Without_words_the_program_starts_on_its_own_folder) {
    const CommandLine line = ReadCommandLine({});
    EXPECT_EQ(line.folder, "");
    EXPECT_FALSE(line.exit_status);
}

TEST(CommandLine, Folder_is_made_a_whole_path) {
    // On Windows a whole path starts with a drive.
    const std::string whole = std::filesystem::absolute("/bench/data").generic_string();
    EXPECT_EQ(ReadCommandLine({"--folder", "/bench/data"}).folder, whole);
    EXPECT_EQ(ReadCommandLine({"--folder", "data"}).folder, std::filesystem::current_path().generic_string() + "/data");
    EXPECT_FALSE(ReadCommandLine({"--folder", "/bench/data"}).exit_status);
}

TEST(CommandLine, Last_folder_counts) {
    EXPECT_EQ(ReadCommandLine({"--folder", "/first", "--folder", "/second"}).folder,
              std::filesystem::absolute("/second").generic_string());
}

TEST(CommandLine, Help_and_version_answer_with_status_0) {
    const CommandLine help = ReadCommandLine({"--help"});
    EXPECT_EQ(help.exit_status, 0);
    EXPECT_EQ(help.answer.find("Usage: vantrel"), 0u);
    const CommandLine version = ReadCommandLine({"--version"});
    EXPECT_EQ(version.exit_status, 0);
    EXPECT_EQ(version.answer.find("vantrel "), 0u);
}

TEST(CommandLine, Anything_else_is_one_line_and_status_2) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"record.mdb"}, {"-h"}, {""}, {"--folder"}, {"--folder", ""}, {"--folder=/x"}}) {
        const CommandLine line = ReadCommandLine(words);
        EXPECT_EQ(line.exit_status, 2);
        EXPECT_EQ(line.answer.find("vantrel: "), 0u) << line.answer;
        EXPECT_EQ(line.answer.find('\n'), line.answer.size() - 1) << line.answer;
    }
}

}  // namespace
}  // namespace vantrel
