// What the process has taken from its heap.
#pragma once

#include <cstddef>
#include <cstdint>
#include <malloc.h>

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace vantrel {

/// Bytes that are allocated now.
inline std::int64_t AllocatedBytes() {
#ifdef __SANITIZE_ADDRESS__
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
#else
    const auto heap = mallinfo2();
    return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
#endif
}

}  // namespace vantrel
