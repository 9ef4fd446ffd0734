#include "platform/visa/wire_log.h"

#include "platform/files.h"
#include "support/environment.h"
#include "support/errors.h"
#include "support/temp_folder.h"
#include "support/virtual_clock.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#endif

namespace vantrel {
namespace {

constexpr auto kTimeOut = static_cast<ViStatus>(0xBFFF0015);

class WireLogFile : public testing::Test {
protected:
    std::string Contents() const {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    VirtualClock clock;
    TempFolder folder;
    std::string path = folder / "wire.log";
};

TEST_F(WireLogFile, Has_a_line_with_the_time_for_each_opening_and_exchange) {
    WireLog log(path.c_str());
    log.Opened("USB0::1::2::3::INSTR", 17, kViSuccess);
    log.Opened("GPIB0::9::INSTR", 18, kViSuccess);
    clock.Sleep(1250);
    log.Sent(18, "fetch?\n", kViSuccess);
    log.Received(18, "+1,+2\n", kViSuccess);
    clock.Sleep(5000);
    log.Received(17, "", kTimeOut);
    EXPECT_EQ(Contents(),
              "2026-03-04 10:00:00.000 begins\n"
              "2026-03-04 10:00:00.000 0 = \"USB0::1::2::3::INSTR\"\n"
              "2026-03-04 10:00:00.000 1 = \"GPIB0::9::INSTR\"\n"
              "2026-03-04 10:00:01.250 1 > \"fetch?\\n\"\n"
              "2026-03-04 10:00:01.250 1 < \"+1,+2\\n\"\n"
              "2026-03-04 10:00:06.250 0 < \"\" ! BFFF0015\n");
}

TEST_F(WireLogFile, Resource_that_is_opened_again_keeps_its_place) {
    WireLog log(path.c_str());
    log.Opened("A", 1, kViSuccess);
    log.Opened("B", 2, kViSuccess);
    log.Opened("A", 3, kViSuccess);
    log.Sent(3, "x", kViSuccess);
    EXPECT_NE(Contents().find(" 0 > \"x\"\n"), std::string::npos);
}

TEST_F(WireLogFile, Session_that_was_never_opened_has_no_place) {
    WireLog log(path.c_str());
    log.Opened("A", 0, kTimeOut);
    log.Sent(0, "x", kTimeOut);
    EXPECT_NE(Contents().find("? > \"x\" ! BFFF0015\n"), std::string::npos);
}

TEST_F(WireLogFile, Bytes_of_any_value_are_readable) {
    WireLog log(path.c_str());
    log.Opened("A", 1, kViSuccess);
    log.Received(1, std::string("\0\x7F\xFF\"\\\r~ ", 8), kViSuccess);
    EXPECT_NE(Contents().find(R"(0 < "\x00\x7F\xFF\"\\\x0D~ ")"), std::string::npos);
}

TEST_F(WireLogFile, Is_added_to) {
    std::ofstream(path, std::ios::binary) << "what was there\n";
    WireLog log(path.c_str());
    EXPECT_EQ(Contents(), "what was there\n2026-03-04 10:00:00.000 begins\n");
}

TEST_F(WireLogFile, Is_added_to_by_two_programs_in_turn) {
    WireLog log(path.c_str());
    WireLog other(path.c_str());
    log.Opened("A", 1, kViSuccess);
    other.Opened("B", 1, kViSuccess);
    log.Sent(1, "x", kViSuccess);
    EXPECT_EQ(Contents(),
              "2026-03-04 10:00:00.000 begins\n"
              "2026-03-04 10:00:00.000 begins\n"
              "2026-03-04 10:00:00.000 0 = \"A\"\n"
              "2026-03-04 10:00:00.000 0 = \"B\"\n"
              "2026-03-04 10:00:00.000 0 > \"x\"\n");
}

TEST_F(WireLogFile, Is_replaced_by_no_output_file) {
    const WireLog log(path.c_str());
    EXPECT_EQ(ErrorOf([&] { OpenForOutput(path, 1); }), kPermissionDenied);
    EXPECT_EQ(Contents(), "2026-03-04 10:00:00.000 begins\n");
}

TEST_F(WireLogFile, Calls_are_logged_where_the_environment_names_a_file) {
    SetEnvironment("VANTREL_WIRE_LOG", path);
    VisaEntryPoints table;
    table.viOpen = [](auto, auto, auto, auto, VisaEntryPoints::Word* session) {
        *session = 5;
        return VisaEntryPoints::Word{0};
    };
    table.viWrite = [](auto, auto, auto, auto) { return VisaEntryPoints::Word{0}; };
    table.viRead = [](auto, unsigned char* bytes, auto, VisaEntryPoints::Word* read) {
        bytes[0] = '2';
        *read = 1;
        return VisaEntryPoints::Word{0x3FFF0006};
    };
    UseVisa(table);
    ViSession session = 0;
    std::uint32_t count = 0;
    std::string reply;
    viOpen(1, "GPIB0::2::INSTR", 0, 0, &session);
    viWrite(session, "*IDN?\n", 5, &count);  // one byte less than the text has
    viRead(session, &reply, 1024, &count);
    EXPECT_EQ(Contents(),
              "2026-03-04 10:00:00.000 begins\n"
              "2026-03-04 10:00:00.000 0 = \"GPIB0::2::INSTR\"\n"
              "2026-03-04 10:00:00.000 0 > \"*IDN?\"\n"
              "2026-03-04 10:00:00.000 0 < \"2\" ! 3FFF0006\n");
}

TEST_F(WireLogFile, That_cannot_be_written_is_told_once_and_never_again) {
    testing::internal::CaptureStderr();
    WireLog log("/no/such/folder/wire.log");
    log.Opened("A", 1, kViSuccess);
    log.Sent(1, "x", kViSuccess);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "VANTREL_WIRE_LOG: /no/such/folder/wire.log cannot be written, nothing more is logged\n");
}

#ifndef _WIN32  // there is no limit of a file's size
TEST_F(WireLogFile, That_becomes_full_is_told_once_and_never_again) {
    const rlimit few_lines = {.rlim_cur = 300, .rlim_max = 300};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &few_lines), 0);
    ASSERT_NE(signal(SIGXFSZ, SIG_IGN), SIG_ERR);
    testing::internal::CaptureStderr();
    WireLog log(path.c_str());
    log.Opened("A", 1, kViSuccess);
    for (int i = 0; i < 20; ++i) log.Sent(1, "fetch?\n", kViSuccess);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "VANTREL_WIRE_LOG: " + path + " cannot be written, nothing more is logged\n");
}
#endif

#ifndef _WIN32  // there are no pipes among the files
TEST_F(WireLogFile, That_is_a_pipe_without_a_reader_holds_nothing_up) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    testing::internal::CaptureStderr();
    WireLog log(path.c_str());
    log.Opened("A", 1, kViSuccess);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}
#endif

TEST_F(WireLogFile, Is_not_made_without_a_name) {
    testing::internal::CaptureStderr();
    WireLog nothing(nullptr);
    WireLog empty("");
    nothing.Opened("A", 1, kViSuccess);
    empty.Sent(1, "x", kViSuccess);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace vantrel
