// Text files for output, by number.

#include "platform/code_page.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/open_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>

namespace vantrel {

namespace {

std::map<int, std::FILE*>& OpenFiles() {
    static auto* files = new std::map<int, std::FILE*>;
    return *files;
}

std::FILE* FileOf(int number) {
    const auto found = OpenFiles().find(number);
    if (found == OpenFiles().end()) throw RunTimeError(kBadFileNumber);
    return found->second;
}

int OpenFault(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG:
            return kPathNotFound;
        case ENOSPC:
        case EDQUOT:
            return kDiskFull;
        default:
            return kPermissionDenied;
    }
}

void RequireWritten(bool written) {
    if (!written) throw RunTimeError(errno == ENOSPC || errno == EDQUOT || errno == EFBIG ? kDiskFull : kDeviceIo);
}

}  // namespace

void OpenForOutput(const std::string& path, int number) {
    if (OpenFiles().contains(number)) throw RunTimeError(kFileAlreadyOpen);
    // Somebody may agree to replace a record, but not one that is being written to.
    std::optional<SoleUse> nobody_elses;
    std::error_code fault;
    if (std::filesystem::is_regular_file(path, fault)) nobody_elses.emplace(path);
    std::FILE* file = std::fopen(path.c_str(), "wbe");
    if (file == nullptr) throw RunTimeError(OpenFault(errno));
    OpenFiles().emplace(number, file);
}

void Print(int number, const std::string& text) {
    const std::string bytes = ToCodePage(text);
    RequireWritten(std::fwrite(bytes.data(), 1, bytes.size(), FileOf(number)) == bytes.size());
}

void CloseFile(int number) {
    std::FILE* file = FileOf(number);
    RequireWritten(std::fflush(file) == 0);
    OpenFiles().erase(number);
    RequireWritten(std::fclose(file) == 0);
}

}  // namespace vantrel
