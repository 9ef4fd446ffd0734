// The program's folder and the few file operations that the program makes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// The folder of the program file, without a separator at its end.
std::string AppPath();

/// Lets another folder, an absolute path, count as the program's.
void UseAppPath(const std::string& folder);

/// The folder "db" of the program's folder, where records are.
std::string DbFolder();

enum class DbFolderState { kUsable, kMissing, kNotWritable };
/// Whether records can be made in DbFolder().
DbFolderState StateOfDbFolder();

/// The path of record `name` (without extension): the program's folder, "db", name and ".mdb". A name that is empty,
/// "." or "..", too long, or holds a path separator or another character that no file name can hold: error 3055.
std::string RecordFilePath(const std::string& name);

/// The path of an entry of the folder "db", extension included. A name that could lead out of it, or that is empty or
/// too long: error 3055.
std::string DbEntryPath(const std::string& entry);

/// The entries of the folder "db" whose names end in exactly ".mdb", folders among them, with their extension, in the
/// order in which the system lists them. A point at the beginning hides no name: a record may bear it. A folder that
/// cannot be read has none.
std::vector<std::string> DbEntries();

/// True if a file of any kind but a folder stands at `path`: hidden, read-only and system files count.
bool FileExists(const std::string& path);

/// Deletes a file, and beside a database what its engine left there (a journal). A missing file or a folder raises
/// error 53; a file that this program or another has open as a database, or that may not be deleted, raises error 70
/// and stays.
void Kill(const std::string& path);

// ---- Text files for output, each known by a number for as long as it is open

/// Opens `path` as file `number`, replacing what is there. The number is taken: error 55. A folder, not permitted, or a
/// database that any program has open: 70. No such folder: 76. A full disk: 61.
void OpenForOutput(const std::string& path, int number);
/// Writes `text`, whole characters in UTF-8, in the system's 8-bit code page. A full disk, or a file beyond the user's
/// limit, raises error 61, any other failure 57, here or at a later write or at the close; the file stays open.
void Print(int number, const std::string& text);
/// Writes what is still to be written and frees the number.
void CloseFile(int number);

}  // namespace vantrel
