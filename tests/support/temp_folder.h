// A folder of a test's own.
#pragma once

#include "platform/files.h"
#include "support/environment.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace vantrel {

/// An empty folder with a name that no other test has; gone with the object.
class TempFolder {
public:
    TempFolder() : TempFolder("") {}
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

protected:
    /// The one at `path`, or with a name of its own.
    explicit TempFolder(const std::string& path) : path_(path) {
        const std::string form = std::filesystem::temp_directory_path().generic_string();
        const std::string stem = form + (form.ends_with('/') ? "" : "/") + "vantrel-";
        std::random_device chance;
        do
            if (path.empty()) path_ = stem + std::to_string(chance());
        while (!std::filesystem::create_directory(path_) && path.empty());
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    }

private:
    std::string path_;
};

/// A temporary folder that counts as the program's, with its empty folder `db`.
class TempAppFolder : public TempFolder {
public:
    TempAppFolder() : TempFolder(FromParent()), is_of_child_(!FromParent().empty()), program_path_(AppPath()) {
        std::filesystem::create_directory(*this / "db");
        UseAppPath(Path());
        if (is_of_child_ || named_) return;
        named_ = this;
        SetEnvironment(kChildFolder, *this / kChild);
    }
    ~TempAppFolder() {
        UseAppPath(program_path_);
        if (named_ != this) return;
        named_ = nullptr;
        SetEnvironment(kChildFolder, "");
    }

    /// Where no process can be forked, the child of an EXPECT_EXIT goes through its test from the beginning, in a
    /// folder of its own. Puts what is in that folder in the place of what is here. Does nothing in the child itself.
    void TakeFilesOfChild() const {
        if (is_of_child_ || !std::filesystem::exists(*this / kChild)) return;
        for (const auto& entry : std::filesystem::directory_iterator(Path()))
            if (entry.path().filename() != kChild) std::filesystem::remove_all(entry.path());
        for (const auto& entry : std::filesystem::directory_iterator(*this / kChild))
            std::filesystem::rename(entry.path(), Path() / entry.path().filename());
        std::filesystem::remove(*this / kChild);
    }

private:
    static constexpr const char* kChildFolder = "VANTREL_TEST_CHILD_FOLDER";
    static constexpr const char* kChild = "child";

    /// The folder that the process that this is a child of has named; empty if there is none.
    static std::string FromParent() {
        const char* path = named_ ? nullptr : std::getenv(kChildFolder);
        return path ? path : "";
    }

    static inline const TempAppFolder* named_ = nullptr;  ///< of this process, with one for a child in it
    bool is_of_child_;
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
