#include "platform/os/library.h"

#include "platform/os/environment.h"
#include "platform/os/windows/text.h"

#include <filesystem>
#include <windows.h>

namespace vantrel::os {

std::vector<std::string> VisaLibraryNames() {
    constexpr bool kHas64Bits = sizeof(void*) == 8;
    std::vector<std::string> names;
    // The loader has no list of folders that come before the system's own, where an installed library lies.
    if (const auto named = Environment("VANTREL_VISA")) names.push_back(*named);
    names.emplace_back(kHas64Bits ? "visa64.dll" : "visa32.dll");
    return names;
}

void* OpenLibrary(const std::string& name) {
    // Not from the folder that happens to be the current one, and without a message of the system's if it fails.
    SetDllDirectoryW(L"");
    DWORD mode = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode);
    // One that is named with its whole path finds the libraries that it needs in its own folder.
    const std::filesystem::path file = std::filesystem::path(Wide(name)).make_preferred();
    const DWORD search = file.is_absolute() ? LOAD_WITH_ALTERED_SEARCH_PATH : 0;
    const HMODULE library = LoadLibraryExW(file.c_str(), nullptr, search);
    SetThreadErrorMode(mode, nullptr);
    return library;
}

void* FindRoutine(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace vantrel::os
