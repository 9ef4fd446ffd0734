#include "platform/os/new_file.h"

#include "platform/os/windows/moment.h"
#include "platform/os/windows/path.h"

#include <cstdio>
#include <functional>
#include <windows.h>

namespace vantrel::os {

namespace {

/// A name for the file while it is made: always the same, of a fixed length, so that the file's own may be as long as
/// the system allows.
std::string PathAside(const std::string& path) {
    char name[32];
    std::snprintf(name, sizeof name, ".making-%016zx", std::hash<std::string>{}(FileNameOf(path)));
    return FolderOf(path) + "/" + name;
}

/// `fault` is what stands against a file of that name.
bool IsTaken(const std::string& path, Fault* fault) {
    const bool is_there = IsFile(path) || IsFolder(path);
    *fault = !IsFileName(FileNameOf(path)) ? Fault::kBadName : is_there ? Fault::kExists : Fault::kNone;
    return *fault != Fault::kNone;
}

/// Removes a file that was left at `aside`. Somebody is still making it: kExists.
Fault ClearLeftover(const std::string& aside) {
    File leftover;
    const Fault fault = leftover.Open(aside, File::Use::kAlone);
    if (fault == Fault::kMissing) return Fault::kNone;
    if (fault == Fault::kInUse) return Fault::kExists;
    if (fault != Fault::kNone) return fault;
    // Before it was opened and after, its maker may have given it its place.
    if (IdentityOf(aside) == leftover.Identity() && !Delete(aside)) return FaultOf(static_cast<int>(GetLastError()));
    return Fault::kNone;
}

Fault MoveWithoutReplacing(const std::string& from, const std::string& to) {
    const auto move = [old_name = SystemPath(from), new_name = SystemPath(to)] {
        return MoveFileExW(old_name.c_str(), new_name.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
    };
    return WorksInAMoment(move) ? Fault::kNone : FaultOf(static_cast<int>(GetLastError()));
}

}  // namespace

NewFile::~NewFile() {
    if (!aside_.empty()) Delete(aside_);
}

Fault NewFile::Begin(const std::string& path) {
    const std::string aside = PathAside(path);
    constexpr int kTries = 10;  // others may take the file for a leftover before it is opened
    Fault fault = Fault::kExists;
    for (int tries = 0; !file_.IsOpen(); ++tries) {
        if (tries == kTries || IsTaken(path, &fault)) return fault;
        fault = file_.Open(aside, File::Use::kNew);
        if (fault == Fault::kExists) fault = ClearLeftover(aside);
        if (fault != Fault::kNone && fault != Fault::kInUse) return fault;
    }
    path_ = path;
    aside_ = aside;
    // Another program may have finished the file since it was looked for.
    return IsTaken(path, &fault) ? fault : Fault::kNone;
}

Fault NewFile::Finish(std::string_view bytes) {
    Fault fault = file_.Write(bytes);
    if (fault == Fault::kNone) fault = file_.Sync();
    if (fault == Fault::kNone) fault = MoveWithoutReplacing(aside_, path_);
    if (fault != Fault::kNone) return fault;
    aside_.clear();
    // The file system's log of what it did to names goes to the disk with the file that bears the last one.
    fault = file_.Sync();
    file_.Close();
    return fault;
}

}  // namespace vantrel::os
