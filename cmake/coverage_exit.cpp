// A process that ends at once, as the program and the children of tests do, writes its coverage figures first. For builds
// with VANTREL_COVERAGE, whose linker sends these two calls here. A shared library, as the bench is, keeps figures of its
// own and has its own routine to write them.

#include <dlfcn.h>
#include <link.h>
#include <string>
#include <vector>

extern "C" {
void __gcov_dump();
[[noreturn]] void __real__Exit(int status);
[[noreturn]] void __real__exit(int status);
}

namespace {

std::vector<std::string> LoadedLibraries() {
    std::vector<std::string> names;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* data) {
            if (*info->dlpi_name != '\0') static_cast<std::vector<std::string>*>(data)->push_back(info->dlpi_name);
            return 0;
        },
        &names);
    return names;
}

void WriteFigures() {
    __gcov_dump();
    for (const std::string& name : LoadedLibraries()) {
        void* const library = dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD);
        void* const dump = library != nullptr ? dlsym(library, "__gcov_dump") : nullptr;
        if (dump != nullptr) reinterpret_cast<void (*)()>(dump)();
    }
}

}  // namespace

extern "C" {

[[noreturn]] void __wrap__Exit(int status) {
    WriteFigures();
    __real__Exit(status);
}

[[noreturn]] void __wrap__exit(int status) {
    WriteFigures();
    __real__exit(status);
}
}
