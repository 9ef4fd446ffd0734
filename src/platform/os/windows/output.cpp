#include "platform/os/output.h"

#include "platform/os/windows/text.h"

#include <array>
#include <cstdio>
#include <utility>

namespace vantrel::os {

namespace {

/// True if a program with windows was given this output, as one that is redirected.
bool IsGiven(DWORD output) {
    const HANDLE handle = GetStdHandle(output);
    return handle != nullptr && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

/// The console of the program that started this one, if it has one. Left again with the object: whoever stays in it is
/// ended by its Ctrl+C and by its close box.
class StartersConsole {
public:
    StartersConsole() : is_there_(AttachConsole(ATTACH_PARENT_PROCESS) != 0) {}
    ~StartersConsole() {
        if (is_there_) FreeConsole();
        for (const auto& [output, handle] : before_) SetStdHandle(output, handle);
    }
    StartersConsole(const StartersConsole&) = delete;
    StartersConsole& operator=(const StartersConsole&) = delete;

    void Write(const std::string& text) const {
        const HANDLE console = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                           nullptr, OPEN_EXISTING, 0, nullptr);
        if (console == INVALID_HANDLE_VALUE) return;
        const std::wstring wide = Wide(text);
        WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), nullptr, nullptr);
        CloseHandle(console);
    }

private:
    using Standard = std::pair<DWORD, HANDLE>;
    static Standard Now(DWORD which) { return {which, GetStdHandle(which)}; }
    // The console takes the places of the standard handles.
    std::array<Standard, 3> before_{Now(STD_INPUT_HANDLE), Now(STD_OUTPUT_HANDLE), Now(STD_ERROR_HANDLE)};
    bool is_there_;
};

void Write(const std::string& text, DWORD output, std::FILE* stream) {
    if (!IsGiven(output)) return StartersConsole().Write(text);
    std::fputs(text.c_str(), stream);
    std::fflush(stream);
}

}  // namespace

void WriteOutput(const std::string& text) { Write(text, STD_OUTPUT_HANDLE, stdout); }

void WriteError(const std::string& text) { Write(text, STD_ERROR_HANDLE, stderr); }

}  // namespace vantrel::os
