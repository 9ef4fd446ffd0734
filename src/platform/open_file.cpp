#include "platform/open_file.h"

#include "platform/errors.h"

#include <cerrno>
#include <fcntl.h>
#include <map>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantrel {

namespace {

using HeldFiles = std::map<FileIdentity, std::weak_ptr<OpenFile>>;

/// Never destroyed: databases in global tables are closed after everything that was made later than they.
HeldFiles& Held() {
    static auto* const held = new HeldFiles;
    return *held;
}

std::shared_ptr<OpenFile> FindHeld(FileIdentity identity) {
    const auto found = Held().find(identity);
    return found == Held().end() ? nullptr : found->second.lock();
}

FileIdentity IdentityOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }

int OpeningFault(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG:
            return kFileMissing;
        default:
            return kNoPermission;
    }
}

/// What stands against the use of the file behind `descriptor`; 0 for nothing.
int UseFault(int descriptor, struct stat* status) {
    if (fstat(descriptor, status) != 0 || !S_ISREG(status->st_mode)) return kNoPermission;
    if (flock(descriptor, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK) return kFileInUse;
    // Between opening and locking another program may have deleted it.
    if (fstat(descriptor, status) != 0 || status->st_nlink == 0) return kFileMissing;
    return 0;
}

}  // namespace

std::shared_ptr<OpenFile> OpenFile::Hold(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0)
        if (auto held = FindHeld(IdentityOf(status))) return held;

    const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) throw RunTimeError(OpeningFault(errno));
    if (const int fault = UseFault(descriptor, &status)) {
        close(descriptor);
        throw RunTimeError(fault);
    }
    std::shared_ptr<OpenFile> held(new OpenFile(descriptor, IdentityOf(status)));
    Held()[held->identity_] = held;
    return held;
}

bool OpenFile::IsHeld(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && FindHeld(IdentityOf(status)) != nullptr;
}

OpenFile::~OpenFile() {
    Held().erase(identity_);
    close(descriptor_);
}

std::size_t OpenFile::Size() const {
    struct stat status {};
    fstat(descriptor_, &status);
    return static_cast<std::size_t>(status.st_size);
}

std::string OpenFile::Read(std::size_t offset, std::size_t count) const {
    std::string bytes(count, '\0');
    const ssize_t got = pread(descriptor_, bytes.data(), count, static_cast<off_t>(offset));
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

SoleUse::SoleUse(const std::string& path) {
    // Asked first, as opening and closing the file would drop the locks of this program's own use.
    if (OpenFile::IsHeld(path)) throw RunTimeError(kPermissionDenied);
    descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor_ < 0) throw RunTimeError(kPermissionDenied);
    if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        close(descriptor_);
        throw RunTimeError(kPermissionDenied);
    }
}

SoleUse::~SoleUse() { close(descriptor_); }

void DeleteLeftovers(const std::string& path) {
    for (const char* ending : {"-journal", "-wal", "-shm"}) unlink((path + ending).c_str());
}

}  // namespace vantrel
