#include "platform/os/file.h"

#include "platform/os/windows/moment.h"
#include "platform/os/windows/path.h"
#include "platform/os/windows/text.h"

#include <algorithm>
#include <utility>
#include <windows.h>

namespace vantrel::os {

namespace {

constexpr int kShareUsedUp = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which not every header has
constexpr DWORD kWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE HandleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

/// How a file is opened: what this program does with it, what others may do meanwhile, and whether it is there.
struct Way {
    DWORD access, sharing, disposition;
};

/// A file that nobody else gets is shared for deletion all the same: that is how this program deletes or renames it
/// while it holds it. Whoever looks at an output as it grows may do so.
Way WayOf(File::Use use) {
    switch (use) {
        case File::Use::kShared:
            return {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING};
        case File::Use::kAlone:
            return {GENERIC_READ, FILE_SHARE_DELETE, OPEN_EXISTING};
        case File::Use::kNew:
            return {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_DELETE, CREATE_NEW};
        case File::Use::kAppend:
            return {FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS};
        case File::Use::kOutput:
            break;
    }
    return {GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS};
}

Fault LastFault() { return FaultOf(static_cast<int>(GetLastError())); }

/// A file or folder to be looked at only, whoever uses it; INVALID_HANDLE_VALUE for none.
HANDLE OpenToLookAt(const std::string& path, DWORD access = 0) {
    return CreateFileW(SystemPath(path).c_str(), access, kWithAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                       nullptr);
}

BY_HANDLE_FILE_INFORMATION InformationOf(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION information{};
    GetFileInformationByHandle(file, &information);
    return information;
}

std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

FileIdentity Identity(const BY_HANDLE_FILE_INFORMATION& information) {
    return {.volume = information.dwVolumeSerialNumber,
            .file = Joined(information.nFileIndexHigh, information.nFileIndexLow)};
}

}  // namespace

Fault FaultOf(int system_error) {
    switch (system_error) {
        case ERROR_SUCCESS:
            return Fault::kNone;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_DIRECTORY:
            return Fault::kMissing;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return Fault::kExists;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
            return Fault::kBadName;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case kShareUsedUp:
        case ERROR_FILE_TOO_LARGE:
            return Fault::kFull;
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
            return Fault::kInUse;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_NETWORK_ACCESS_DENIED:
        case ERROR_PRIVILEGE_NOT_HELD:
            return Fault::kDenied;
        default:
            return Fault::kOther;
    }
}

std::optional<FileIdentity> IdentityOf(const std::string& path) {
    const HANDLE file = OpenToLookAt(path);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    const FileIdentity identity = Identity(InformationOf(file));
    CloseHandle(file);
    return identity;
}

Fault File::Open(const std::string& path, Use use, Patience patience) {
    Close();
    if (!IsFileName(FileNameOf(path))) return Fault::kBadName;
    const auto [access, sharing, disposition] = WayOf(use);
    const std::wstring name = SystemPath(path);
    HANDLE file = INVALID_HANDLE_VALUE;
    const auto open = [&] {
        file = CreateFileW(name.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
        return file != INVALID_HANDLE_VALUE;
    };
    if (patience == Patience::kNone ? !open() : !WorksInAMoment(open)) return LastFault();
    Fault fault = GetFileType(file) == FILE_TYPE_DISK ? Fault::kNone : Fault::kDenied;
    if (fault == Fault::kNone && use == Use::kOutput && SetEndOfFile(file) == 0) fault = LastFault();
    if (fault == Fault::kNone)
        handle_ = reinterpret_cast<std::intptr_t>(file);
    else
        CloseHandle(file);
    return fault;
}

Fault File::Close() noexcept {
    if (!IsOpen()) return Fault::kNone;
    return CloseHandle(HandleOf(std::exchange(handle_, kNone))) != 0 ? Fault::kNone : LastFault();
}

FileIdentity File::Identity() const { return os::Identity(InformationOf(HandleOf(handle_))); }

FileStamp File::Stamp() const {
    const BY_HANDLE_FILE_INFORMATION information = InformationOf(HandleOf(handle_));
    const FILETIME& changed = information.ftLastWriteTime;
    return {.size = static_cast<std::int64_t>(Joined(information.nFileSizeHigh, information.nFileSizeLow)),
            .changed = static_cast<std::int64_t>(Joined(changed.dwHighDateTime, changed.dwLowDateTime))};
}

std::string File::Read(std::int64_t offset, std::size_t count) const {
    std::string bytes(count, '\0');
    OVERLAPPED from{};
    from.Offset = static_cast<DWORD>(offset);
    from.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD got = 0;
    if (ReadFile(HandleOf(handle_), bytes.data(), static_cast<DWORD>(count), &got, &from) == 0) got = 0;
    bytes.resize(got);
    return bytes;
}

Fault File::Write(std::string_view bytes) {
    constexpr std::size_t kAtOnce = 1 << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min(bytes.size(), kAtOnce));
        if (WriteFile(HandleOf(handle_), bytes.data(), count, &written, nullptr) == 0) return LastFault();
        bytes.remove_prefix(written);
    }
    return Fault::kNone;
}

Fault File::Sync() { return FlushFileBuffers(HandleOf(handle_)) != 0 ? Fault::kNone : LastFault(); }

bool IsFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool IsFolder(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry{};
    const std::wstring all = SystemPath(folder) + L"\\*";
    const HANDLE search = FindFirstFileExW(all.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        const std::wstring_view name = entry.cFileName;
        if (name != L"." && name != L"..") names.push_back(Narrow(name));
    } while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
    return names;
}

bool Delete(const std::string& path) {
    const std::wstring name = SystemPath(path);
    return WorksInAMoment([&] { return DeleteFileW(name.c_str()) != 0; });
}

bool CanSyncFolders() { return false; }

std::string TruePath(const std::string& path) {
    const HANDLE file = OpenToLookAt(path);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::wstring whole = Given(
        [&](wchar_t* text, DWORD room) { return GetFinalPathNameByHandleW(file, text, room, FILE_NAME_NORMALIZED); });
    CloseHandle(file);
    if (whole.empty()) whole = WholePath(SystemPath(path));  // on a drive that the system cannot tell from its files
    return Narrow(whole);
}

bool MayMakeFilesIn(const std::string& folder) {
    const HANDLE opened = OpenToLookAt(folder, FILE_ADD_FILE);
    if (opened == INVALID_HANDLE_VALUE) return false;
    CloseHandle(opened);
    return true;
}

}  // namespace vantrel::os
