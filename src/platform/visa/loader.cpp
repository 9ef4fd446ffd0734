#include "platform/visa/loader.h"

#include "platform/os/library.h"

#include <algorithm>
#include <array>
#include <functional>

namespace vantrel {
namespace {

/// Sets `entry_point` to the library's routine `name`; false if the library has none.
template <typename Routine>
bool Bind(void* library, const char* name, Routine*& entry_point) {
    entry_point = reinterpret_cast<Routine*>(os::FindRoutine(library, name));
    return entry_point != nullptr;
}

bool BindAll(void* library, VisaEntryPoints& table) {
    const std::array is_bound = {
        Bind(library, "viOpenDefaultRM", table.viOpenDefaultRM),
        Bind(library, "viFindRsrc", table.viFindRsrc),
        Bind(library, "viFindNext", table.viFindNext),
        Bind(library, "viOpen", table.viOpen),
        Bind(library, "viSetAttribute", table.viSetAttribute),
        Bind(library, "viWrite", table.viWrite),
        Bind(library, "viRead", table.viRead),
        Bind(library, "viClose", table.viClose),
    };
    return std::ranges::all_of(is_bound, std::identity());
}

}  // namespace

VisaEntryPoints LoadVisa(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        void* library = os::OpenLibrary(name);
        VisaEntryPoints table;
        if (library != nullptr && BindAll(library, table)) return table;
    }
    return {};
}

}  // namespace vantrel
