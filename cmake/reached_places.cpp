// For objects compiled with -fsanitize-coverage=trace-pc, as scripts/mutate does to learn which test comes by which line:
// the process adds the addresses that it came by to the file that VANTREL_REACHED names, from the program's start on and
// in hexadecimal. Linked with --wrap=_Exit,--wrap=_exit.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" {
extern const char __executable_start;
[[noreturn]] void __real__Exit(int status);
[[noreturn]] void __real__exit(int status);
}

namespace {

constexpr std::size_t kSlots = 1 << 18;
std::uintptr_t reached[kSlots];  // by a hash of the address; 0 is a free slot

void WriteReached() {
    const char* const name = std::getenv("VANTREL_REACHED");
    std::FILE* const file = name != nullptr ? std::fopen(name, "a") : nullptr;
    if (file == nullptr) return;
    for (const std::uintptr_t place : reached)
        if (place != 0) std::fprintf(file, "%zx\n", place - reinterpret_cast<std::uintptr_t>(&__executable_start));
    std::fclose(file);
}

const struct AtExit {
    ~AtExit() { WriteReached(); }
} at_exit;

}  // namespace

extern "C" {

void __sanitizer_cov_trace_pc() {
    const auto place = reinterpret_cast<std::uintptr_t>(__builtin_return_address(0)) - 1;
    std::size_t slot = place * 0x9E3779B97F4A7C15u >> 46;
    while (reached[slot] != 0 && reached[slot] != place) slot = (slot + 1) % kSlots;
    reached[slot] = place;
}

[[noreturn]] void __wrap__Exit(int status) {
    WriteReached();
    __real__Exit(status);
}

[[noreturn]] void __wrap__exit(int status) {
    WriteReached();
    __real__exit(status);
}
}
