// The bench as a shared library, found and called by the program's own VISA calls.
#include "platform/visa.h"
#include "support/environment.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

using namespace vantrel;

namespace {

/// A session with the resource that a search finds first.
ViSession OpenFirst() {
    ViSession manager = 0;
    ViSession list = 0;
    ViSession session = 0;
    std::uint32_t count = 0;
    std::string descriptor;
    viOpenDefaultRM(&manager);
    viFindRsrc(manager, "(USB|GPIB)?*INSTR", &list, &count, &descriptor);
    viOpen(manager, descriptor, 0, 0, &session);
    return session;
}

/// What the instrument says of its scanner card.
std::string CardOf(ViSession session) {
    std::uint32_t bytes = 0;
    std::string reply;
    viWrite(session, "rout:state?\n", 12, &bytes);
    viRead(session, &reply, 1024, &bytes);
    return reply;
}

std::filesystem::path FileHolding(const std::string& name, const std::string& text) {
    const auto path = std::filesystem::path(testing::TempDir()) / name;
    std::ofstream(path) << text;
    return path;
}

TEST(BenchLibrary, Is_found_by_the_loader_and_holds_the_default_bench) {
    ViSession manager = 0;
    ViSession list = 0;
    std::uint32_t count = 0;
    std::string descriptor;
    EXPECT_EQ(viOpenDefaultRM(&manager), kViSuccess);
    EXPECT_EQ(viFindRsrc(manager, "(USB|GPIB)?*INSTR", &list, &count, &descriptor), kViSuccess);
    EXPECT_EQ(count, 6U);
    EXPECT_EQ(descriptor, "USB0::0xFFFF::0x0020::SB20-0417::INSTR");
    EXPECT_EQ(viFindNext(list, &descriptor), kViSuccess);
    EXPECT_EQ(descriptor, "GPIB0::22::INSTR");
}

TEST(BenchLibrary, Answers_a_query) {
    const ViSession session = OpenFirst();
    std::uint32_t bytes = 0;
    std::string reply;
    EXPECT_EQ(viSetAttribute(session, kViAttrTmoValue, 5000), kViSuccess);
    EXPECT_EQ(viWrite(session, "rout:state?\n", 12, &bytes), kViSuccess);
    EXPECT_EQ(bytes, 12U);
    EXPECT_EQ(viRead(session, &reply, 1024, &bytes), kViSuccess);
    EXPECT_EQ(reply, "2\n");
    EXPECT_EQ(bytes, 2U);
    EXPECT_EQ(viClose(session), kViSuccess);
}

TEST(BenchLibrary, Gives_a_long_reply_in_pieces_of_what_is_asked_for) {
    const ViSession session = OpenFirst();
    std::uint32_t bytes = 0;
    std::string reply;
    viWrite(session, "*IDN?\n", 6, &bytes);
    EXPECT_EQ(viRead(session, &reply, 10, &bytes), kViSuccessMaxCnt);
    EXPECT_EQ(reply, "Orlane,SB-");
    EXPECT_EQ(viRead(session, &reply, 1024, &bytes), kViSuccess);
    EXPECT_EQ(reply, "20,SB20-0417,1.04\n");
}

TEST(BenchLibrary, Failed_statuses_keep_their_sign) {
    EXPECT_EQ(viClose(0), static_cast<ViStatus>(0xBFFF000E));
    EXPECT_LT(viClose(0), 0);
}

TEST(BenchLibrary, Takes_the_bench_file_that_the_environment_names) {
    const auto file = FileHolding("named.bench", "instrument GPIB0::3::INSTR\ncard 1\n");
    SetEnvironment("VANTREL_BENCH", file);
    EXPECT_EQ(CardOf(OpenFirst()), "1\n");
}

TEST(BenchLibrary, Takes_and_writes_files_of_any_name) {
    const auto folder = std::filesystem::path(testing::TempDir()) / u8"\u6E2C\u5B9A-\u00C4";
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "named.bench") << "instrument GPIB0::3::INSTR\ncard 1\n";
    SetEnvironment("VANTREL_BENCH", folder / "named.bench");
    SetEnvironment("VANTREL_BENCH_LOG", folder / "bench.log");
    EXPECT_EQ(CardOf(OpenFirst()), "1\n");
    EXPECT_GT(std::filesystem::file_size(folder / "bench.log"), 0U);
    std::error_code held;  // the log is still open
    std::filesystem::remove_all(folder, held);
}

TEST(BenchLibrary, Fails_at_opening_when_the_bench_file_is_none) {
    const auto file = FileHolding("wrong.bench", "instrument\n");
    SetEnvironment("VANTREL_BENCH", file);
    ViSession manager = 99;
    testing::internal::CaptureStderr();
    EXPECT_LT(viOpenDefaultRM(&manager), 0);
    EXPECT_EQ(manager, 0U);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("line 1"), std::string::npos);
}

TEST(BenchLibrary, Fails_at_opening_when_the_bench_file_is_missing) {
    SetEnvironment("VANTREL_BENCH", "no/such/file.bench");
    ViSession manager = 99;
    testing::internal::CaptureStderr();
    EXPECT_LT(viOpenDefaultRM(&manager), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST(BenchLibrary, Writes_each_exchange_to_the_log_that_the_environment_names) {
    const auto log = FileHolding("bench.log", "");
    SetEnvironment("VANTREL_BENCH_LOG", log);
    CardOf(OpenFirst());
    std::ostringstream text;
    text << std::ifstream(log).rdbuf();
    EXPECT_EQ(text.str(), "0 > \"rout:state?\\n\"\n0 < \"2\\n\"\n");
}

TEST(BenchLibrary, Tells_of_a_log_that_cannot_be_written_and_works_without_it) {
    SetEnvironment("VANTREL_BENCH_LOG", "no/such/folder/bench.log");
    testing::internal::CaptureStderr();
    EXPECT_EQ(CardOf(OpenFirst()), "2\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "VANTREL_BENCH_LOG: no/such/folder/bench.log cannot be written\n");
}

TEST(BenchLibrary, Writes_each_call_and_its_status_to_the_file_that_the_environment_names) {
    const auto calls = FileHolding("calls.log", "");
    SetEnvironment("VANTREL_BENCH_CALLS", calls);
    ViSession manager = 0;
    viOpenDefaultRM(&manager);
    viClose(manager);
    viClose(manager);
    std::ostringstream text;
    text << std::ifstream(calls).rdbuf();
    EXPECT_EQ(text.str(), "viOpenDefaultRM() 0\nviClose(1) 0\nviClose(1) BFFF000E\n");
}

}  // namespace
