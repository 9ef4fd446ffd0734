// Environment variables of a test's process.
#pragma once

#include <cstdlib>
#include <string>

namespace vantrel {

inline void SetEnvironment(const std::string& name, const std::string& value) {
#ifdef _WIN32
    _putenv_s(name.c_str(), value.c_str());
#else
    setenv(name.c_str(), value.c_str(), 1);
#endif
}

}  // namespace vantrel
