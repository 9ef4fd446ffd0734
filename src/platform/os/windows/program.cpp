#include "platform/os/program.h"

#include "platform/os/environment.h"
#include "platform/os/file.h"
#include "platform/os/windows/text.h"

#include <shellapi.h>
#include <windows.h>

namespace vantrel::os {

namespace {

/// The system's command interpreter.
std::wstring Interpreter() {
    if (const auto named = Environment("ComSpec")) return Wide(*named);
    return Given([](wchar_t* text, DWORD room) { return GetSystemDirectoryW(text, room); }) + L"\\cmd.exe";
}

}  // namespace

std::vector<std::string> Arguments(int, char**) {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(Narrow(words[i]));
    LocalFree(words);
    return arguments;
}

std::string ProgramFolder() {
    const std::wstring file = Given([](wchar_t* text, DWORD room) { return GetModuleFileNameW(nullptr, text, room); });
    return WholePath(FolderOf(Narrow(file)));
}

void FailOversizeWrites() {}  // as they do

int WatchEndRequests() { return -1; }

void TakeEndRequests() {}

bool OpenByInterpreter(const std::string& address) {
    std::wstring command = L"cmd.exe /c start " + Wide(address);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWMINIMIZED;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(Interpreter().c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                       &process) == 0)
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

}  // namespace vantrel::os
