// Paths as Windows takes them.
#pragma once

#include <string>
#include <string_view>

namespace vantrel::os {

/// What the system's calls take for `path`, UTF-8. One that is longer than they take as it stands: the whole path in
/// the form that has no limit.
std::wstring SystemPath(std::string_view path);

/// The whole path of `path`, from the drive or the server on.
std::wstring WholePath(const std::wstring& path);

/// The last part of `path`.
std::string FileNameOf(const std::string& path);

}  // namespace vantrel::os
