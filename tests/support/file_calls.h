// The calls with which the program changes files, as a test sees, spoils and cuts them off.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace vantrel {

/// Sees every call of this process that opens, reads, writes, syncs, cuts, renames or removes a file in `folder`, the
/// database engine's calls among them, for as long as the object lives. One at a time.
class FileCalls {
public:
    explicit FileCalls(std::string folder);
    ~FileCalls();
    FileCalls(const FileCalls&) = delete;
    FileCalls& operator=(const FileCalls&) = delete;

    /// Calls so far.
    int Count() const { return count_; }
    /// Call number `first`, from 1, fails with `error` (errno), and with `lasting` all calls after it.
    void FailFrom(int first, int error, bool lasting);
    /// The process is killed in place of call number `call`.
    void KillAt(int call) { kill_at_ = call; }
    /// Nothing fails any more.
    void Mend();

    // ---- What is on the disk

    /// Names of the files that were synced, in their order; a folder's is empty.
    std::vector<std::string> Synced() const;
    /// Changes of files and names so far: each is a moment at which the power may fail.
    int Changes() const { return static_cast<int>(changes_.size()); }
    /// Writes into the empty folder `image` what the disk may hold if the power fails before change `change`: all that
    /// was synced, and of the rest whatever `chance` takes, in sectors of 512 bytes.
    void PowerCut(int change, std::mt19937& chance, const std::string& image) const;

    // ---- For the calls themselves

    enum class Kind { kWrite, kCut, kSyncFile, kMake, kRename, kRemove, kSyncFolder };
    struct Change {
        Kind kind;
        int file = 0;
        std::int64_t at = 0;     ///< offset of a write, size of a cut
        std::string bytes = {};  ///< of a write
        std::string name = {};   ///< new or removed
        std::string from = {};   ///< a renamed file's old one
    };
    /// True if the call, of a file at `path`, is to fail, with errno set.
    bool IsToFail(const std::string& path);
    /// The name of a file in the folder; empty for the folder itself. False for any other.
    bool IsMine(const std::string& path, std::string* name) const;
    bool Knows(const std::string& name) const { return names_.contains(name); }
    void Note(Change change);
    void NoteOf(const std::string& name, Change change);

private:
    using Names = std::map<std::string, int>;  // to a file's number
    using Contents = std::map<int, std::string>;

    std::string folder_;
    int count_ = 0;
    int fail_from_ = 0;
    int error_ = 0;
    bool is_lasting_ = false;
    int kill_at_ = 0;
    Names first_names_;
    Contents first_contents_;
    Names names_;  // as they stand now
    int files_ = 0;
    std::vector<Change> changes_;
};

}  // namespace vantrel
