#include "platform/files.h"

#include "platform/errors.h"
#include "platform/open_file.h"
#include "platform/os/program.h"

#include <algorithm>
#include <filesystem>

namespace vantrel {

namespace {

constexpr std::string_view kRecordExtension = ".mdb";
constexpr std::string_view kLongestCompanion = "-journal";  // what the engine sets behind a file's name
constexpr std::size_t kLongestFileName = 255;

std::string& CurrentAppPath() {
    static std::string path = os::ProgramFolder();
    return path;
}

bool IsNoFileNameCharacter(char c) {
    constexpr std::string_view kForbidden = "/\\:*?\"<>|";
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f' || kForbidden.find(c) != std::string_view::npos;
}

/// Refuses every name with which a path could lead out of its folder.
void CheckEntryName(const std::string& name) {
    constexpr std::string_view kSeparators("/\\\0", 3);
    const bool is_good = !name.empty() && name != "." && name != ".." &&
                         name.size() <= kLongestFileName - kLongestCompanion.size() &&
                         name.find_first_of(kSeparators) == std::string::npos;
    if (!is_good) throw RunTimeError(kNotAValidName);
}

}  // namespace

std::string AppPath() { return CurrentAppPath(); }

void UseAppPath(const std::string& folder) { CurrentAppPath() = folder; }

std::string DbFolder() { return AppPath() + "/db"; }

DbFolderState StateOfDbFolder() {
    std::error_code fault;
    if (!std::filesystem::is_directory(os::PathOf(DbFolder()), fault)) return DbFolderState::kMissing;
    return os::MayMakeFilesIn(DbFolder()) ? DbFolderState::kUsable : DbFolderState::kNotWritable;
}

std::string DbEntryPath(const std::string& entry) {
    CheckEntryName(entry);
    return DbFolder() + "/" + entry;
}

std::string RecordFilePath(const std::string& name) {
    const bool is_good =
        !name.empty() && name != "." && name != ".." && std::ranges::none_of(name, IsNoFileNameCharacter);
    if (!is_good) throw RunTimeError(kNotAValidName);
    return DbEntryPath(name + std::string(kRecordExtension));
}

std::vector<std::string> DbEntries() {
    std::vector<std::string> entries;
    std::error_code fault;
    std::filesystem::directory_iterator entry(os::PathOf(DbFolder()), fault);
    for (; !fault && entry != std::filesystem::directory_iterator(); entry.increment(fault)) {
        const std::string name = os::TextOf(entry->path().filename());
        if (name.ends_with(kRecordExtension)) entries.push_back(name);
    }
    return entries;
}

bool FileExists(const std::string& path) {
    std::error_code fault;
    const std::filesystem::file_status status = std::filesystem::status(os::PathOf(path), fault);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

void Kill(const std::string& path) {
    if (!FileExists(path)) throw RunTimeError(kFileNotFound);
    const SoleUse nobody_elses(path);
    // The database goes before its journal: the other way round a power cut between the two would leave a database
    // that is half written and cannot be repaired.
    std::error_code fault;
    if (!std::filesystem::remove(os::PathOf(path), fault)) throw RunTimeError(kPermissionDenied);
    DeleteLeftovers(path);
}

}  // namespace vantrel
