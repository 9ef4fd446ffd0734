// A folder of a test's own.
#pragma once

#include "platform/files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace vantrel {

/// An empty folder with a name that no other test has; gone with the object.
class TempFolder {
public:
    TempFolder() {
        const std::string form = std::filesystem::temp_directory_path().generic_string();
        const std::string stem = form + (form.ends_with('/') ? "" : "/") + "vantrel-";
        std::random_device chance;
        do path_ = stem + std::to_string(chance());
        while (!std::filesystem::create_directory(path_));
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

/// A temporary folder that counts as the program's, with its empty folder `db`.
class TempAppFolder : public TempFolder {
public:
    TempAppFolder() : program_path_(AppPath()) {
        std::filesystem::create_directory(*this / "db");
        UseAppPath(Path());
    }
    ~TempAppFolder() { UseAppPath(program_path_); }

private:
    std::string program_path_;
};

inline std::string FileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteFileBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace vantrel
