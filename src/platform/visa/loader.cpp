#include "platform/visa/loader.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace vantrel {
namespace {

#ifdef _WIN32
void* OpenLibrary(const char* name) { return reinterpret_cast<void*>(LoadLibraryA(name)); }
void* Symbol(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}
#else
void* OpenLibrary(const char* name) { return dlopen(name, RTLD_NOW | RTLD_LOCAL); }
void* Symbol(void* library, const char* name) { return dlsym(library, name); }
#endif

/// Sets `entry_point` to the library's routine `name`; false if the library has none.
template <typename Routine>
bool Bind(void* library, const char* name, Routine*& entry_point) {
    entry_point = reinterpret_cast<Routine*>(Symbol(library, name));
    return entry_point != nullptr;
}

bool BindAll(void* library, VisaEntryPoints& table) {
    return Bind(library, "viOpenDefaultRM", table.viOpenDefaultRM) && Bind(library, "viFindRsrc", table.viFindRsrc) &&
           Bind(library, "viFindNext", table.viFindNext) && Bind(library, "viOpen", table.viOpen) &&
           Bind(library, "viSetAttribute", table.viSetAttribute) && Bind(library, "viWrite", table.viWrite) &&
           Bind(library, "viRead", table.viRead) && Bind(library, "viClose", table.viClose);
}

}  // namespace

VisaEntryPoints LoadVisa(std::initializer_list<const char*> names) {
    for (const char* name : names) {
        void* library = OpenLibrary(name);
        VisaEntryPoints table;
        if (library != nullptr && BindAll(library, table)) return table;
    }
    return {};
}

}  // namespace vantrel
