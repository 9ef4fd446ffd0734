// What is put to any bytes at all. Each file of this folder is a target: it defines Try, which is called with one input
// after the other.
#pragma once

#include <cstdlib>
#include <string_view>

void Try(std::string_view input);

/// Ends the process if it does not hold.
inline void Hold(bool condition) {
    if (!condition) std::abort();
}
