// A file that comes into being whole or not at all.
#pragma once

#include "platform/os/file.h"

namespace vantrel::os {

/// A file that is made aside, in the folder where it is to lie but under another name, and gets its place when it is
/// complete. Until then nobody sees it. Gone with the object if it is not finished; what a program that was cut off
/// leaves aside is removed when the same file is made again.
class NewFile {
public:
    NewFile() = default;
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Begins the file that is to lie at `path`. Something lies there, or another program is just making the same file:
    /// kExists.
    [[nodiscard]] Fault Begin(const std::string& path);
    /// Writes `bytes`, the whole content, and gives the file its place; it and its name are on the disk when this
    /// returns. Replaces nothing: kExists. At a fault there is no file, unless only its name could not be brought to
    /// the disk.
    [[nodiscard]] Fault Finish(std::string_view bytes);

private:
    std::string path_;
    std::string aside_;  // where it lies until it is finished; empty when there is nothing
    File file_;
};

}  // namespace vantrel::os
