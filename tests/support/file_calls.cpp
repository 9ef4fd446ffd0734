#include "support/file_calls.h"

#include "support/temp_folder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace vantrel {

namespace {

FileCalls* watching = nullptr;

constexpr std::int64_t kSector = 512;

void Apply(const FileCalls::Change& change, std::string* content) {
    const auto at = static_cast<std::size_t>(change.at);
    if (change.kind == FileCalls::Kind::kCut) {
        content->resize(at, '\0');
        return;
    }
    content->resize(std::max(content->size(), at + change.bytes.size()), '\0');
    content->replace(at, change.bytes.size(), change.bytes);
}

void Apply(const FileCalls::Change& change, std::map<std::string, int>* names) {
    if (change.kind == FileCalls::Kind::kRename) names->erase(change.from);
    if (change.kind == FileCalls::Kind::kRemove)
        names->erase(change.name);
    else
        (*names)[change.name] = change.file;
}

bool IsOfContent(FileCalls::Kind kind) { return kind == FileCalls::Kind::kWrite || kind == FileCalls::Kind::kCut; }

/// The sectors of a write, each a write of its own.
std::vector<FileCalls::Change> Sectors(const FileCalls::Change& change) {
    if (change.kind != FileCalls::Kind::kWrite) return {change};
    std::vector<FileCalls::Change> sectors;
    const std::int64_t end = change.at + static_cast<std::int64_t>(change.bytes.size());
    for (std::int64_t at = change.at; at < end;) {
        const std::int64_t next = std::min(end, (at / kSector + 1) * kSector);
        FileCalls::Change sector = change;
        sector.at = at;
        sector.bytes =
            change.bytes.substr(static_cast<std::size_t>(at - change.at), static_cast<std::size_t>(next - at));
        sectors.push_back(sector);
        at = next;
    }
    return sectors;
}

std::string PathOf(int descriptor) {
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

}  // namespace

FileCalls::FileCalls(std::string folder) : folder_(std::filesystem::canonical(folder).string()) {
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
        names_[entry.path().filename().string()] = ++files_;
        first_contents_[files_] = FileBytes(entry.path().string());
    }
    first_names_ = names_;
    watching = this;
}

FileCalls::~FileCalls() { watching = nullptr; }

void FileCalls::FailFrom(int first, int error, bool lasting) {
    fail_from_ = first;
    error_ = error;
    is_lasting_ = lasting;
}

void FileCalls::Mend() { fail_from_ = 0; }

std::vector<std::string> FileCalls::Synced() const {
    std::vector<std::string> names;
    for (const Change& change : changes_)
        if (change.kind == Kind::kSyncFile || change.kind == Kind::kSyncFolder) names.push_back(change.name);
    return names;
}

void FileCalls::PowerCut(int change, std::mt19937& chance, const std::string& image) const {
    Names names = first_names_;
    Contents contents = first_contents_;
    std::vector<Change> loose;        // changes of content that were not synced
    std::vector<Change> loose_names;  // and of names
    for (int i = 0; i < change; ++i) {
        const Change& done = changes_[static_cast<std::size_t>(i)];
        if (IsOfContent(done.kind)) {
            loose.push_back(done);
        } else if (done.kind == Kind::kSyncFile) {
            for (const Change& synced : loose)
                if (synced.file == done.file) Apply(synced, &contents[done.file]);
            std::erase_if(loose, [&](const Change& synced) { return synced.file == done.file; });
        } else if (done.kind == Kind::kSyncFolder) {
            for (const Change& synced : std::exchange(loose_names, {})) Apply(synced, &names);
        } else {
            loose_names.push_back(done);
        }
    }
    // All of the rest, none of it, or any part.
    const auto kept = std::uniform_int_distribution<int>(0, 3)(chance);
    std::bernoulli_distribution coin(kept == 0 ? 0.0 : kept == 1 ? 1.0 : 0.5);
    for (const Change& written : loose)
        for (const Change& sector : Sectors(written))
            if (coin(chance)) Apply(sector, &contents[sector.file]);
    for (const Change& named : loose_names)
        if (coin(chance)) Apply(named, &names);
    for (const auto& [name, file] : names) WriteFileBytes(image + "/" + name, contents[file]);
}

bool FileCalls::IsMine(const std::string& path, std::string* name) const {
    if (path == folder_ || path == folder_ + "/") {
        name->clear();
        return true;
    }
    if (!path.starts_with(folder_ + "/")) return false;
    *name = path.substr(folder_.size() + 1);
    return true;
}

bool FileCalls::IsToFail(const std::string& path) {
    std::string name;
    if (!IsMine(path, &name)) return false;
    ++count_;
    if (count_ == kill_at_) raise(SIGKILL);
    const bool fails = fail_from_ != 0 && (is_lasting_ ? count_ >= fail_from_ : count_ == fail_from_);
    if (fails) errno = error_;
    return fails;
}

void FileCalls::Note(Change change) {
    switch (change.kind) {
        case Kind::kMake:
            change.file = ++files_;
            names_[change.name] = change.file;
            break;
        case Kind::kRename:
            change.file = names_[change.from];
            names_.erase(change.from);
            names_[change.name] = change.file;
            break;
        case Kind::kRemove:
            change.file = names_[change.name];
            names_.erase(change.name);
            break;
        default:
            change.file = names_[change.name];
            break;
    }
    changes_.push_back(std::move(change));
}

namespace {

using Kind = FileCalls::Kind;

bool Fails(const std::string& path) { return watching != nullptr && watching->IsToFail(path); }
bool Fails(int descriptor) { return watching != nullptr && watching->IsToFail(PathOf(descriptor)); }

/// Notes a change of the file or folder at `path`, if it is one of those that are watched.
void Note(Kind kind, const std::string& path, FileCalls::Change change) {
    if (watching == nullptr || !watching->IsMine(path, &change.name)) return;
    const bool is_file = !change.name.empty();
    if (is_file && kind != Kind::kMake && kind != Kind::kRename && !watching->Knows(change.name)) return;
    change.kind = is_file ? kind : Kind::kSyncFolder;
    watching->Note(std::move(change));
}

int Open(const char* path, int flags, mode_t mode) {
    if (Fails(path)) return -1;
    std::string name;
    const bool may_make = (flags & O_CREAT) != 0 && watching != nullptr && watching->IsMine(path, &name);
    const bool is_new = may_make && !watching->Knows(name);
    const int descriptor = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
    if (is_new && descriptor >= 0) Note(Kind::kMake, path, {.kind = Kind::kMake});
    return descriptor;
}

ssize_t WriteAt(int descriptor, const void* bytes, size_t count, off_t at) {
    if (Fails(descriptor)) return -1;
    const ssize_t written = syscall(SYS_pwrite64, descriptor, bytes, count, at);
    if (written > 0)
        Note(Kind::kWrite, PathOf(descriptor),
             {.kind = Kind::kWrite,
              .at = at,
              .bytes = std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(written))});
    return written;
}

int Sync(long call, int descriptor) {
    if (Fails(descriptor)) return -1;
    const int result = static_cast<int>(syscall(call, descriptor));
    if (result == 0) Note(Kind::kSyncFile, PathOf(descriptor), {.kind = Kind::kSyncFile});
    return result;
}

int Cut(int descriptor, off_t size) {
    if (Fails(descriptor)) return -1;
    const int result = static_cast<int>(syscall(SYS_ftruncate, descriptor, size));
    if (result == 0) Note(Kind::kCut, PathOf(descriptor), {.kind = Kind::kCut, .at = size});
    return result;
}

}  // namespace
}  // namespace vantrel

// Stand before the C library's, for the engine too.
extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return vantrel::Open(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return vantrel::Open(path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
    if (vantrel::watching == nullptr) return syscall(SYS_write, descriptor, bytes, count);
    if (vantrel::Fails(descriptor)) return -1;
    const off_t at = static_cast<off_t>(syscall(SYS_lseek, descriptor, 0, SEEK_CUR));
    const ssize_t written = syscall(SYS_write, descriptor, bytes, count);
    if (written > 0)
        vantrel::Note(vantrel::Kind::kWrite, vantrel::PathOf(descriptor),
                      {.kind = vantrel::Kind::kWrite,
                       .at = at,
                       .bytes = std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(written))});
    return written;
}

ssize_t pwrite(int descriptor, const void* bytes, size_t count, off_t at) {
    return vantrel::WriteAt(descriptor, bytes, count, at);
}
ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t at) {
    return vantrel::WriteAt(descriptor, bytes, count, at);
}

ssize_t pread(int descriptor, void* bytes, size_t count, off_t at) {
    return vantrel::Fails(descriptor) ? -1 : syscall(SYS_pread64, descriptor, bytes, count, at);
}
ssize_t pread64(int descriptor, void* bytes, size_t count, off64_t at) {
    return vantrel::Fails(descriptor) ? -1 : syscall(SYS_pread64, descriptor, bytes, count, at);
}

int fsync(int descriptor) { return vantrel::Sync(SYS_fsync, descriptor); }
int fdatasync(int descriptor) { return vantrel::Sync(SYS_fdatasync, descriptor); }

int ftruncate(int descriptor, off_t size) noexcept { return vantrel::Cut(descriptor, size); }
int ftruncate64(int descriptor, off64_t size) noexcept { return vantrel::Cut(descriptor, size); }

int unlink(const char* path) noexcept {
    if (vantrel::Fails(std::string(path))) return -1;
    const int result = static_cast<int>(syscall(SYS_unlink, path));
    if (result == 0) vantrel::Note(vantrel::Kind::kRemove, path, {.kind = vantrel::Kind::kRemove});
    return result;
}

int remove(const char* path) noexcept {
    const int result = unlink(path);
    return result != 0 && errno == EISDIR ? rmdir(path) : result;
}

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) noexcept {
    if (vantrel::Fails(std::string(to))) return -1;
    const int result = static_cast<int>(syscall(SYS_renameat2, from_folder, from, to_folder, to, flags));
    std::string old;
    if (result == 0 && vantrel::watching != nullptr && vantrel::watching->IsMine(from, &old))
        vantrel::Note(vantrel::Kind::kRename, to, {.kind = vantrel::Kind::kRename, .from = old});
    return result;
}

}  // extern "C"
