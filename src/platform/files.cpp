#include "platform/files.h"

#include "platform/errors.h"
#include "platform/open_file.h"
#include "platform/os/file.h"
#include "platform/os/program.h"

#include <algorithm>

namespace vantrel {

namespace {

constexpr std::string_view kRecordExtension = ".mdb";
constexpr std::string_view kLongestCompanion = "-journal";  // what the engine sets behind a file's name

std::string& CurrentAppPath() {
    static std::string path = os::ProgramFolder();
    return path;
}

bool IsNoFileNameCharacter(char c) {
    constexpr std::string_view kForbidden = "/\\:*?\"<>|";
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f' || kForbidden.find(c) != std::string_view::npos;
}

/// Refuses every name that no entry can bear, or with which a path could lead out of its folder.
void CheckEntryName(const std::string& name) {
    const bool is_good = os::IsFileName(name) && os::IsFileName(name + std::string(kLongestCompanion)) &&
                         name.find('\\') == std::string::npos;
    if (!is_good) throw RunTimeError(kNotAValidName);
}

}  // namespace

std::string AppPath() { return CurrentAppPath(); }

void UseAppPath(const std::string& folder) { CurrentAppPath() = folder; }

std::string DbFolder() { return AppPath() + "/db"; }

DbFolderState StateOfDbFolder() {
    if (!os::IsFolder(DbFolder())) return DbFolderState::kMissing;
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
    std::vector<std::string> entries = os::NamesIn(DbFolder());
    std::erase_if(entries, [](const std::string& name) { return !name.ends_with(kRecordExtension); });
    return entries;
}

bool FileExists(const std::string& path) { return os::IsFile(path); }

void Kill(const std::string& path) {
    if (!FileExists(path)) throw RunTimeError(kFileNotFound);
    const SoleUse nobody_elses(path);
    // The database goes before its journal: the other way round a power cut between the two would leave a database
    // that is half written and cannot be repaired.
    if (!os::Delete(path)) throw RunTimeError(kPermissionDenied);
    DeleteLeftovers(path);
}

}  // namespace vantrel
