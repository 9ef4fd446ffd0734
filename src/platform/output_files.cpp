// Text files for output, by number.

#include "platform/code_page.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/open_file.h"

#include <map>
#include <utility>

namespace vantrel {

namespace {

constexpr std::size_t kBufferBytes = 65536;

struct Output {
    os::File file;
    std::string buffer;  // what is still to be written, not yet in the code page
};

std::map<int, Output>& OpenFiles() {
    static auto* files = new std::map<int, Output>;
    return *files;
}

Output& OutputOf(int number) {
    const auto found = OpenFiles().find(number);
    if (found == OpenFiles().end()) throw RunTimeError(kBadFileNumber);
    return found->second;
}

int OpenFault(os::Fault fault) {
    switch (fault) {
        case os::Fault::kMissing:
        case os::Fault::kBadName:
            return kPathNotFound;
        case os::Fault::kFull:
            return kDiskFull;
        default:
            return kPermissionDenied;
    }
}

void RequireWritten(os::Fault fault) {
    if (fault != os::Fault::kNone) throw RunTimeError(fault == os::Fault::kFull ? kDiskFull : kDeviceIo);
}

void WriteBuffer(Output& output) {
    const os::Fault fault = output.file.Write(ToCodePage(output.buffer));
    output.buffer.clear();
    RequireWritten(fault);
}

}  // namespace

void OpenForOutput(const std::string& path, int number) {
    if (OpenFiles().contains(number)) throw RunTimeError(kFileAlreadyOpen);
    // Somebody may agree to replace a record, but not one that is being written to. Asked first, as opening and closing
    // the file would drop the locks of this program's own use.
    if (OpenFile::IsHeld(path)) throw RunTimeError(kPermissionDenied);
    os::File file;
    const os::Fault fault = file.Open(path, os::File::Use::kOutput);
    if (fault != os::Fault::kNone) throw RunTimeError(OpenFault(fault));
    OpenFiles().emplace(number, Output{std::move(file), ""});
}

void Print(int number, const std::string& text) {
    Output& output = OutputOf(number);
    output.buffer += text;
    if (output.buffer.size() >= kBufferBytes) WriteBuffer(output);
}

void CloseFile(int number) {
    Output& output = OutputOf(number);
    WriteBuffer(output);
    const os::Fault fault = output.file.Close();
    OpenFiles().erase(number);
    RequireWritten(fault);
}

}  // namespace vantrel
