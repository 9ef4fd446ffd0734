#include "platform/open_file.h"

#include "platform/errors.h"

#include <map>

namespace vantrel {

namespace {

using HeldFiles = std::map<os::FileIdentity, std::weak_ptr<OpenFile>>;

/// Never destroyed: databases in global tables are closed after everything that was made later than they.
HeldFiles& Held() {
    static auto* const held = new HeldFiles;
    return *held;
}

std::shared_ptr<OpenFile> FindHeld(const std::string& path) {
    const auto identity = os::IdentityOf(path);
    if (!identity) return nullptr;
    const auto found = Held().find(*identity);
    return found == Held().end() ? nullptr : found->second.lock();
}

int OpeningFault(os::Fault fault) {
    switch (fault) {
        case os::Fault::kMissing:
        case os::Fault::kBadName:
            return kFileMissing;
        case os::Fault::kInUse:
            return kFileInUse;
        default:
            return kNoPermission;
    }
}

}  // namespace

std::shared_ptr<OpenFile> OpenFile::Hold(const std::string& path) {
    if (auto held = FindHeld(path)) return held;
    os::File file;
    const os::Fault fault = file.Open(path, os::File::Use::kShared);
    if (fault != os::Fault::kNone) throw RunTimeError(OpeningFault(fault));
    std::shared_ptr<OpenFile> held(new OpenFile(std::move(file)));
    Held()[held->identity_] = held;
    return held;
}

bool OpenFile::IsHeld(const std::string& path) { return FindHeld(path) != nullptr; }

OpenFile::~OpenFile() { Held().erase(identity_); }

SoleUse::SoleUse(const std::string& path) {
    // Asked first, as opening and closing the file would drop the locks of this program's own use.
    const bool is_granted = !OpenFile::IsHeld(path) && file_.Open(path, os::File::Use::kAlone) == os::Fault::kNone;
    if (!is_granted) throw RunTimeError(kPermissionDenied);
}

void DeleteLeftovers(const std::string& path) {
    for (const char* ending : {"-journal", "-wal", "-shm"}) os::Delete(path + ending);
}

void DeleteEmptyJournal(const std::string& path) {
    const std::string journal = path + "-journal";
    os::File file;
    // Whoever has it open is at work with the database, and will delete it: that is not waited for.
    const os::Fault fault = file.Open(journal, os::File::Use::kAlone, os::File::Patience::kNone);
    if (fault == os::Fault::kNone && file.Stamp().size == 0) os::Delete(journal);
}

}  // namespace vantrel
