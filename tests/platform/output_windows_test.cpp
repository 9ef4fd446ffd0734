// What a program says that was started without a console of its own, as one with windows is.
#include "platform/os/program.h"
#include "support/temp_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

namespace vantrel {
namespace {

/// A process of tests/other_program.
class Process {
public:
    Process(const std::wstring& task, DWORD flags, HANDLE output = nullptr) {
        const std::wstring program = std::filesystem::path(os::ProgramFolder() + "/other_program.exe").native();
        std::wstring words = L'"' + program + L"\" " + task + L" none none";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.hStdOutput = output;
        if (output != nullptr) start.dwFlags = STARTF_USESTDHANDLES;
        EXPECT_NE(CreateProcessW(program.c_str(), words.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr, &start,
                                 &process_),
                  0);
    }
    ~Process() {
        TerminateProcess(process_.hProcess, 0);
        CloseHandle(process_.hProcess);
        CloseHandle(process_.hThread);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD Id() const { return process_.dwProcessId; }
    /// Waits for its end. True if all went well in it.
    bool End() const {
        DWORD status = 1;
        WaitForSingleObject(process_.hProcess, INFINITE);
        return GetExitCodeProcess(process_.hProcess, &status) != 0 && status == 0;
    }

private:
    PROCESS_INFORMATION process_{};
};

/// A console that is on no screen. The test is in it.
class Console {
public:
    Console() : owner_(L"wait", CREATE_NO_WINDOW) {
        FreeConsole();
        for (int tries = 0; AttachConsole(owner_.Id()) == 0 && tries < 1000; ++tries) Sleep(10);
        screen_ = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_EXISTING, 0, nullptr);
        EXPECT_NE(screen_, INVALID_HANDLE_VALUE);
    }
    ~Console() {
        CloseHandle(screen_);
        FreeConsole();
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// The lines that are written in it.
    std::vector<std::wstring> Lines() const {
        CONSOLE_SCREEN_BUFFER_INFO information{};
        GetConsoleScreenBufferInfo(screen_, &information);
        std::vector<std::wstring> lines;
        for (SHORT row = 0; row < information.dwCursorPosition.Y; ++row) {
            std::wstring line(static_cast<std::size_t>(information.dwSize.X), L' ');
            DWORD length = 0;
            ReadConsoleOutputCharacterW(screen_, line.data(), static_cast<DWORD>(line.size()), {0, row}, &length);
            lines.push_back(line.substr(0, line.find_last_not_of(L' ') + 1));
        }
        return lines;
    }

private:
    Process owner_;
    HANDLE screen_ = INVALID_HANDLE_VALUE;
};

TEST(OutputOnWindows, Of_a_program_without_a_console_goes_to_the_one_that_it_was_started_from) {
    const Console console;
    EXPECT_TRUE(Process(L"tell", DETACHED_PROCESS).End());
    EXPECT_EQ(console.Lines(), (std::vector<std::wstring>{L"an answer", L"one fault", L"another fault in \u00B5V"}));
}

TEST(OutputOnWindows, That_is_redirected_stays_so_and_leaves_the_errors_to_the_console) {
    const TempFolder folder;
    const Console console;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE file = CreateFileW(std::filesystem::path(folder / "output").c_str(), GENERIC_WRITE, 0, &inherited,
                                    CREATE_ALWAYS, 0, nullptr);
    EXPECT_TRUE(Process(L"tell", DETACHED_PROCESS, file).End());
    CloseHandle(file);
    EXPECT_EQ(FileBytes(folder / "output"), "an answer\r\n");
    EXPECT_EQ(console.Lines(), (std::vector<std::wstring>{L"one fault", L"another fault in \u00B5V"}));
}

TEST(OutputOnWindows, Is_lost_where_there_is_no_console) {
    FreeConsole();
    EXPECT_TRUE(Process(L"tell", DETACHED_PROCESS).End());
}

}  // namespace
}  // namespace vantrel
