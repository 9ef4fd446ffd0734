// Hands what libFuzzer makes up to a target.
#include "fuzz/target.h"
#include "platform/qt/application.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    vantrel::SetUpApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Try({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
