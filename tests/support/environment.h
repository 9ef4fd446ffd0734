// Environment variables of a test's process.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vantrel {

inline void SetEnvironment(const std::string& name, const std::filesystem::path& value) {
#ifdef _WIN32
    _wputenv_s(std::filesystem::path(name).c_str(), value.c_str());
#else
    setenv(name.c_str(), value.c_str(), 1);
#endif
}

}  // namespace vantrel
