// Files in use as databases: known as such to this program and, through a lock, to every other.
#pragma once

#include <memory>
#include <string>
#include <sys/types.h>
#include <utility>

namespace vantrel {

/// Which file it is, whatever path leads to it.
using FileIdentity = std::pair<dev_t, ino_t>;

/// A file that is in use as a database for as long as the object lives. The connections of one file share one object:
/// closing any descriptor of a file drops this process's record locks on it, so the descriptor stays until the last
/// connection is closed.
class OpenFile {
public:
    /// Marks the file at `path` as in use. Missing: error 3024. A folder, no ordinary file or not permitted for
    /// writing: 3051. Just being deleted by another program: 3045.
    static std::shared_ptr<OpenFile> Hold(const std::string& path);
    /// True if this process holds the file at `path`.
    static bool IsHeld(const std::string& path);

    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    FileIdentity Identity() const { return identity_; }
    int Descriptor() const { return descriptor_; }
    std::size_t Size() const;  ///< bytes
    /// Up to `count` bytes from `offset` on; fewer where the file ends.
    std::string Read(std::size_t offset, std::size_t count) const;

private:
    OpenFile(int descriptor, FileIdentity identity) : descriptor_(descriptor), identity_(identity) {}

    int descriptor_;
    FileIdentity identity_;
};

/// Keeps every other program from opening the file at `path` as a database for as long as the object lives. Any program
/// has it open, this one included, or it may not be read: error 70.
class SoleUse {
public:
    explicit SoleUse(const std::string& path);
    ~SoleUse();
    SoleUse(const SoleUse&) = delete;
    SoleUse& operator=(const SoleUse&) = delete;

private:
    int descriptor_;
};

/// Deletes what an engine may have left beside the database at `path`: without its database it is worse than useless,
/// as it would be played back into the next one of that name.
void DeleteLeftovers(const std::string& path);

}  // namespace vantrel
