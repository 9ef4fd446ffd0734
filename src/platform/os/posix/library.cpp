#include "platform/os/library.h"

#include <dlfcn.h>

namespace vantrel::os {

std::vector<std::string> VisaLibraryNames() {
#ifdef __APPLE__
    return {"/Library/Frameworks/VISA.framework/VISA"};
#else
    return {"libvisa.so.0", "libvisa.so"};
#endif
}

void* OpenLibrary(const std::string& name) { return dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL); }

void* FindRoutine(void* library, const char* name) { return dlsym(library, name); }

}  // namespace vantrel::os
