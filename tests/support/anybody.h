// Users for whom the permissions of files hold, which the superuser need not heed.
#pragma once

#include <functional>

#ifdef _WIN32
#include "support/temp_folder.h"
#else
#include "support/child_process.h"
#endif

namespace vantrel {

/// Whether `condition` holds for a user who is not the superuser. What it changes in memory may be lost.
inline bool HoldsForAnybody(const std::function<bool()>& condition) {
#ifdef _WIN32
    return condition();
#else
    constexpr int kNobody = 65534;
    ChildProcess someone([&](const ChildProcess::Contact&) {
        if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) throw std::runtime_error("still root");
        if (!condition()) throw std::runtime_error("does not hold");
    });
    return someone.End() == 0;
#endif
}

/// True where nothing keeps this process from writing to a write-protected file: it is the superuser's, under Wine.
inline bool WritesToEveryFile() {
#ifdef _WIN32
    using std::filesystem::perms;
    const TempFolder folder;
    WriteFileBytes(folder / "file", "");
    std::filesystem::permissions(folder / "file", perms::owner_read);
    const bool writes = std::ofstream(folder / "file").is_open();
    std::filesystem::permissions(folder / "file", perms::owner_all);
    return writes;
#else
    return false;
#endif
}

}  // namespace vantrel
