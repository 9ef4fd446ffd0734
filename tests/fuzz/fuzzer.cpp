// Hands what libFuzzer makes up to a target.
#include "fuzz/target.h"
#include "platform/qt/application.h"

#include <cstddef>
#include <cstdint>

/// The font library keeps what it has read for as long as the process lives.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    vantrel::SetUpApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Try({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
