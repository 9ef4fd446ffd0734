// The program's folder and the few file operations that the program makes.
#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// The folder of the program file, without a separator at its end.
std::string App_Path();

/// Lets another folder count as the program's. For tests.
void UseAppPath(const std::string& folder);

/// The path of record `name` (without extension): the program's folder, "db", name and ".mdb". A name that is empty,
/// "." or "..", too long, or holds a path separator or another character that no file name can hold: error 3055.
std::string RecordFilePath(const std::string& name);

/// The path of an entry of the folder "db", extension included. Refuses the names that RecordFilePath refuses.
std::string DbEntryPath(const std::string& entry);

/// True if a file of any kind but a folder stands at `path`: hidden, read-only and system files count.
bool FileExists(const std::string& path);

/// Deletes a file, and beside a database what its engine left there (a journal). A missing file or a folder raises
/// error 53; a file that this program or another has open as a database, or that may not be deleted, raises error 70
/// and stays.
void Kill(const std::string& path);

}  // namespace vantrel
