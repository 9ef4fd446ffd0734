#include "platform/os/new_file.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace vantrel::os {

namespace {

/// A name for the file while it is made: always the same, of a fixed length, so that the file's own may be as long as
/// the system allows.
std::string PathAside(const std::string& path) {
    char name[32];
    std::snprintf(name, sizeof name, ".making-%016zx", std::hash<std::string>{}(TextOf(PathOf(path).filename())));
    return FolderOf(path) + "/" + name;
}

/// True for a link that leads nowhere too. `fault` is what stands against a file of that name.
bool IsTaken(const std::string& path, Fault* fault) {
    struct stat status {};
    const bool is_there = lstat(path.c_str(), &status) == 0;
    *fault = is_there ? Fault::kExists : errno == ENAMETOOLONG ? Fault::kBadName : Fault::kNone;
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
    if (IdentityOf(aside) == leftover.Identity() && unlink(aside.c_str()) != 0) return FaultOf(errno);
    return Fault::kNone;
}

Fault MoveWithoutReplacing(const std::string& from, const std::string& to) {
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return Fault::kNone;
    if (errno != EINVAL && errno != ENOSYS) return FaultOf(errno);
#endif
    // Not every file system can refuse to replace. No other copy of this program makes the same file meanwhile.
    Fault fault = Fault::kNone;
    if (IsTaken(to, &fault)) return fault;
    return std::rename(from.c_str(), to.c_str()) == 0 ? Fault::kNone : FaultOf(errno);
}

/// Brings what was made, renamed and removed in `folder` to the disk. Not every folder can be opened, and not every
/// file system needs it.
Fault SyncFolder(const std::string& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return Fault::kNone;
    const int error = fsync(descriptor) == 0 || errno == EINVAL ? 0 : errno;
    close(descriptor);
    return FaultOf(error);
}

}  // namespace

NewFile::~NewFile() {
    if (!aside_.empty()) unlink(aside_.c_str());
}

Fault NewFile::Begin(const std::string& path) {
    const std::string aside = PathAside(path);
    constexpr int kTries = 10;  // others may take the file for a leftover before it is locked
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
    // What was removed here, as the journal of an earlier file of this name, must not come back beside the new one.
    if (fault == Fault::kNone) fault = SyncFolder(FolderOf(path_));
    if (fault == Fault::kNone) fault = MoveWithoutReplacing(aside_, path_);
    if (fault != Fault::kNone) return fault;
    aside_.clear();
    file_.Close();
    return SyncFolder(FolderOf(path_));
}

}  // namespace vantrel::os
