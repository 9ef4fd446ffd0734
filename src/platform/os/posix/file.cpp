#include "platform/os/file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vantrel::os {

namespace {

constexpr mode_t kForAll = 0666;  // less what the user's mask takes away

int Descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

FileIdentity Identity(const struct stat& status) { return {.volume = status.st_dev, .file = status.st_ino}; }

/// Nothing that is opened here may hold the program up, as a pipe without a reader would: it is opened without waiting,
/// and then looked at.
int Flags(File::Use use) {
    constexpr int kAlways = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    switch (use) {
        case File::Use::kShared:
            return kAlways | O_RDWR;
        case File::Use::kAlone:
            return kAlways | O_RDONLY;
        case File::Use::kNew:
            return kAlways | O_RDWR | O_CREAT | O_EXCL;
        case File::Use::kAppend:
            return kAlways | O_WRONLY | O_CREAT | O_APPEND;
        case File::Use::kOutput:
            break;
    }
    return kAlways | O_WRONLY | O_CREAT;
}

bool IsFitFor(File::Use use, const struct stat& status) {
    switch (use) {
        case File::Use::kShared:
        case File::Use::kAppend:
            return S_ISREG(status.st_mode);
        case File::Use::kAlone:
        case File::Use::kNew:
            return true;
        case File::Use::kOutput:
            break;
    }
    return S_ISREG(status.st_mode) || S_ISCHR(status.st_mode);
}

/// A file system that knows no locks refuses no use.
bool IsLockedByOther(int descriptor, File::Use use) {
    const bool is_shared = use == File::Use::kShared || use == File::Use::kAppend;
    const int lock = is_shared ? LOCK_SH : LOCK_EX;
    return flock(descriptor, lock | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

/// What stands against the use of the file behind `descriptor`.
Fault TakeInto(int descriptor, File::Use use) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !IsFitFor(use, status)) return Fault::kDenied;
    if (!S_ISREG(status.st_mode)) return Fault::kNone;
    if (IsLockedByOther(descriptor, use)) return Fault::kInUse;
    // Between opening and locking another program may have deleted it.
    if (fstat(descriptor, &status) != 0 || status.st_nlink == 0)
        return use == File::Use::kNew ? Fault::kInUse : Fault::kMissing;
    if (use == File::Use::kOutput && ftruncate(descriptor, 0) != 0) return FaultOf(errno);
    return Fault::kNone;
}

}  // namespace

Fault FaultOf(int system_error) {
    switch (system_error) {
        case 0:
            return Fault::kNone;
        case ENOENT:
        case ENOTDIR:
            return Fault::kMissing;
        case EEXIST:
            return Fault::kExists;
        case ENAMETOOLONG:
        case EINVAL:
            return Fault::kBadName;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return Fault::kFull;
        case EWOULDBLOCK:
            return Fault::kInUse;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ENXIO:
            return Fault::kDenied;
        default:
            return Fault::kOther;
    }
}

std::optional<FileIdentity> IdentityOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return Identity(status);
}

/// Nobody is kept from a file here who does not ask for its lock.
Fault File::Open(const std::string& path, Use use, Patience) {
    Close();
    const int descriptor = open(path.c_str(), Flags(use), kForAll);
    if (descriptor < 0) return FaultOf(errno);
    const Fault fault = TakeInto(descriptor, use);
    if (fault == Fault::kNone)
        handle_ = descriptor;
    else
        close(descriptor);
    return fault;
}

Fault File::Close() noexcept {
    if (!IsOpen()) return Fault::kNone;
    return close(Descriptor(std::exchange(handle_, kNone))) == 0 ? Fault::kNone : FaultOf(errno);
}

FileIdentity File::Identity() const {
    struct stat status {};
    fstat(Descriptor(handle_), &status);
    return os::Identity(status);
}

FileStamp File::Stamp() const {
    constexpr std::int64_t kNanoseconds = 1'000'000'000;
    struct stat status {};
    fstat(Descriptor(handle_), &status);
    return {.size = status.st_size, .changed = status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

std::string File::Read(std::int64_t offset, std::size_t count) const {
    std::string bytes(count, '\0');
    const ssize_t got = pread(Descriptor(handle_), bytes.data(), count, offset);
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

Fault File::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(Descriptor(handle_), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) return FaultOf(errno);
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return Fault::kNone;
}

Fault File::Sync() { return fsync(Descriptor(handle_)) == 0 ? Fault::kNone : FaultOf(errno); }

bool IsFileName(const std::string& name) {
    constexpr std::size_t kLongest = 255;
    constexpr std::string_view kForbidden("/\0", 2);
    return !name.empty() && name != "." && name != ".." && name.size() <= kLongest &&
           name.find_first_of(kForbidden) == std::string::npos;
}

bool IsFile(const std::string& path) {
    std::error_code fault;
    const std::filesystem::file_status status = std::filesystem::status(path, fault);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool IsFolder(const std::string& path) {
    std::error_code fault;
    return std::filesystem::is_directory(path, fault);
}

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code fault;
    std::filesystem::directory_iterator entry(folder, fault);
    for (; !fault && entry != std::filesystem::directory_iterator(); entry.increment(fault))
        names.push_back(entry->path().filename().string());
    return names;
}

bool Delete(const std::string& path) {
    std::error_code fault;
    return std::filesystem::remove(path, fault);
}

std::string WholePath(const std::string& path) {
    return TextOf(std::filesystem::absolute(PathOf(path)).lexically_normal());
}

std::string TruePath(const std::string& path) {
    std::error_code fault;
    return std::filesystem::canonical(path, fault).string();
}

std::string FolderOf(const std::string& path) {
    const std::filesystem::path folder = PathOf(path).parent_path();
    return folder.empty() ? "." : TextOf(folder);
}

bool CanSyncFolders() { return true; }

bool MayMakeFilesIn(const std::string& folder) { return access(folder.c_str(), W_OK | X_OK) == 0; }

}  // namespace vantrel::os
