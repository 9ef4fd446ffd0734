// Files as the operating system has them. Paths are UTF-8 with "/" between folders.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::os {

/// Why the system did not do what it was asked for.
enum class Fault {
    kNone,
    kMissing,  ///< no such file, or no such folder on the way to it
    kExists,   ///< a file of that name is there
    kBadName,  ///< a name that no file can have, or a longer one than the system allows
    kFull,     ///< full disk, used-up share of it, or a file beyond the user's limit
    kInUse,    ///< somebody uses it in a way that excludes this one
    kDenied,   ///< not permitted, a folder, or a kind of file that is not for this use
    kOther
};

/// What is behind an error number of the system (errno; on Windows what GetLastError returns). 0: kNone.
Fault FaultOf(int system_error);

/// Which file it is, whatever path leads to it.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t file = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

/// Size and time tell most states of a file's content apart, and a file from another that took its place.
struct FileStamp {
    std::int64_t size = 0;     ///< bytes
    std::int64_t changed = 0;  ///< the system's own count of time, of no meaning but to be compared
    bool operator==(const FileStamp&) const = default;
};

/// The identity of the file that `path` leads to; none where it leads to no file.
std::optional<FileIdentity> IdentityOf(const std::string& path);

/// An open file, closed with the object. While one has it open kShared or kAppend nobody gets it kAlone or for kOutput,
/// in this program or any other, and the other way round.
class File {
public:
    enum class Use {
        kShared,  ///< an ordinary file that is there, to read and write beside others that do so
        kAlone,   ///< a file that is there, to read
        kNew,     ///< a file where none was, to write; nobody else gets it meanwhile
        kOutput,  ///< an ordinary file to write, emptied, made if it is not there; or a device, which is never waited
                  ///< for
        kAppend   ///< an ordinary file, made if it is not there, to write behind its end, shared as kShared is
    };

    /// What to do about a program that keeps the file to itself as virus scanners, indexers and backups do, where the
    /// system lets them.
    enum class Patience {
        kMoment,  ///< wait for its end, 0.3 s at most
        kNone     ///< give up at once
    };

    File() = default;
    ~File() { Close(); }
    File(File&& other) noexcept : handle_(other.handle_) { other.handle_ = kNone; }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// Opens the file at `path`; a file that is open already is closed first. A file that another program deletes
    /// meanwhile is kMissing, a new one kInUse.
    [[nodiscard]] Fault Open(const std::string& path, Use use, Patience patience = Patience::kMoment);
    /// Closes it. A fault is one of what was written before.
    Fault Close() noexcept;
    bool IsOpen() const { return handle_ != kNone; }

    FileIdentity Identity() const;
    FileStamp Stamp() const;
    /// Up to `count` bytes from `offset` on; fewer where the file ends or cannot be read.
    std::string Read(std::int64_t offset, std::size_t count) const;
    /// Appends `bytes`. At a fault a part of them may have been written.
    [[nodiscard]] Fault Write(std::string_view bytes);
    /// Returns when all that was written is on the disk.
    [[nodiscard]] Fault Sync();

private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t handle_ = kNone;  // whatever the system knows an open file by
};

/// True if a file can bear `name` here, the last part of a path: not empty, of characters that names are made of, not
/// too long, and not kept by the system for something else.
bool IsFileName(const std::string& name);

/// True for a file of any kind but a folder at `path`: hidden, read-only and system files count.
bool IsFile(const std::string& path);
/// True for a folder at `path`.
bool IsFolder(const std::string& path);

/// The names of what `folder` holds, in the order in which the system lists them. None for a folder that cannot be
/// read.
std::vector<std::string> NamesIn(const std::string& folder);

/// Deletes the file at `path`, which this program may have open kAlone or kNew. As patient as an opening. False if it
/// is not there or may not be deleted.
bool Delete(const std::string& path);

/// `path` from the root on, or from the drive or the server, whether there is such a file or not.
std::string WholePath(const std::string& path);

/// The path of the file itself, from the root on, whatever link leads to it; empty where `path` leads to no file.
std::string TruePath(const std::string& path);

/// The folder that `path` leads through; "." for none.
std::string FolderOf(const std::string& path);

/// True if this user may make files in `folder`.
bool MayMakeFilesIn(const std::string& folder);

/// True if what was made, renamed and deleted in a folder can be brought to the disk by a sync of it. Where it cannot,
/// a deleted file may be back after a power cut.
bool CanSyncFolders();

/// A path for the standard library, which takes a plain text for one in the system's 8-bit code page.
inline std::filesystem::path PathOf(std::string_view path) { return std::u8string(path.begin(), path.end()); }

/// A path of the standard library as this program writes it.
inline std::string TextOf(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

}  // namespace vantrel::os
