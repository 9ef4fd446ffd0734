// Libraries that are loaded at run time.
#pragma once

#include <string>
#include <vector>

/// How the routines of the system's libraries are called; stands before a routine's name. Of the machines with 64 bits
/// each knows one way only.
#ifdef _WIN32
#define VANTREL_LIBRARY_CALL __stdcall
#else
#define VANTREL_LIBRARY_CALL
#endif

namespace vantrel::os {

/// The names under which this system's loader may find a VISA library, the best first.
std::vector<std::string> VisaLibraryNames();

/// Loads the library that the machine's loader finds as `name`, for the rest of the program's life; nullptr for none.
void* OpenLibrary(const std::string& name);

/// The address of the library's routine `name`; nullptr for none.
void* FindRoutine(void* library, const char* name);

}  // namespace vantrel::os
