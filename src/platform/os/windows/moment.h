// Files that another program keeps to itself for a moment.
#pragma once

#include <windows.h>

namespace vantrel::os {

/// Whether `does` works. Programs that look at each file that changes, such as virus scanners, indexers and backups,
/// may keep all others from it meanwhile. As long as that is what `does` fails of, it is tried again, for 0.3 s in all.
template <typename Does>
bool WorksInAMoment(const Does& does) {
    constexpr ULONGLONG kMomentMs = 300;
    constexpr DWORD kStepMs = 10;
    const ULONGLONG end = ::GetTickCount64() + kMomentMs;
    while (!does()) {
        if (::GetLastError() != ERROR_SHARING_VIOLATION || ::GetTickCount64() >= end) return false;
        ::Sleep(kStepMs);
    }
    return true;
}

}  // namespace vantrel::os
