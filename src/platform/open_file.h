// Files in use as databases: known as such to this program and, through a lock, to every other.
#pragma once

#include "platform/os/file.h"

#include <memory>
#include <string>
#include <utility>

namespace vantrel {

/// A file that is in use as a database for as long as the object lives. The connections of one file share one object:
/// on some systems closing an open file drops this process's locks of it, so it stays open until the last connection
/// is closed.
class OpenFile {
public:
    /// Marks the file at `path` as in use. Missing: error 3024. A folder, no ordinary file or not permitted for
    /// writing: 3051. Kept from all others by another program, as one that deletes it: 3045.
    static std::shared_ptr<OpenFile> Hold(const std::string& path);
    /// True if this process holds the file at `path`.
    static bool IsHeld(const std::string& path);

    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    os::FileIdentity Identity() const { return identity_; }
    os::FileStamp Stamp() const { return file_.Stamp(); }
    /// Up to `count` bytes from `offset` on; fewer where the file ends.
    std::string Read(std::int64_t offset, std::size_t count) const { return file_.Read(offset, count); }

private:
    explicit OpenFile(os::File file) : file_(std::move(file)), identity_(file_.Identity()) {}

    os::File file_;
    os::FileIdentity identity_;
};

/// Keeps every other program from opening the file at `path` as a database for as long as the object lives. Any program
/// has it open, this one included, or it may not be read: error 70.
class SoleUse {
public:
    explicit SoleUse(const std::string& path);

private:
    os::File file_;
};

/// Deletes what an engine may have left beside the database at `path`: without its database it is worse than useless,
/// as it would be played back into the next one of that name.
void DeleteLeftovers(const std::string& path);

/// Deletes the journal of the database at `path` if it is empty and nobody has it open.
void DeleteEmptyJournal(const std::string& path);

}  // namespace vantrel
