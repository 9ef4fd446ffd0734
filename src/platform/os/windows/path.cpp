#include "platform/os/windows/path.h"

#include "platform/os/file.h"
#include "platform/os/windows/text.h"

#include <algorithm>
#include <array>
#include <windows.h>

namespace vantrel::os {

namespace {

constexpr std::wstring_view kLongForm = LR"(\\?\)";
constexpr std::wstring_view kLongNetworkForm = LR"(\\?\UNC\)";
constexpr std::wstring_view kNetworkForm = LR"(\\)";

/// Without the long form a path may have MAX_PATH characters, that of a folder as many less as a short file name needs.
constexpr std::size_t kLongestShort = MAX_PATH - 13;

bool IsForbidden(wchar_t c) {
    constexpr std::wstring_view kForbidden = LR"(<>:"/\|?*)";
    return c < L' ' || kForbidden.find(c) != std::wstring_view::npos;
}

wchar_t Upper(wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c; }

/// True for what names a device in every folder, whatever stands behind a point.
bool IsDevice(std::wstring_view name) {
    constexpr std::array<std::wstring_view, 6> kDevices{L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$"};
    constexpr std::wstring_view kNumbers = L"123456789\u00B9\u00B2\u00B3";
    std::wstring stem(name.substr(0, name.find(L'.')));
    stem.resize(stem.find_last_not_of(L' ') + 1);
    std::ranges::transform(stem, stem.begin(), Upper);
    if (std::ranges::find(kDevices, stem) != kDevices.end()) return true;
    const bool is_port = stem.starts_with(L"COM") || stem.starts_with(L"LPT");
    return is_port && stem.size() == 4 && kNumbers.find(stem[3]) != std::wstring_view::npos;
}

}  // namespace

std::wstring SystemPath(std::string_view path) {
    std::wstring plain = Wide(path);
    std::ranges::replace(plain, L'/', L'\\');
    if (plain.empty() || plain.starts_with(kLongForm)) return plain;
    const std::wstring whole = WholePath(plain);
    if (whole.size() <= kLongestShort) return plain;
    if (!whole.starts_with(kNetworkForm)) return std::wstring(kLongForm) + whole;
    return std::wstring(kLongNetworkForm) + whole.substr(kNetworkForm.size());
}

std::wstring WholePath(const std::wstring& path) {
    return Given([&](wchar_t* text, DWORD room) { return GetFullPathNameW(path.c_str(), room, text, nullptr); });
}

std::string WholePath(const std::string& path) {
    std::string whole = Narrow(WholePath(Wide(path)));
    std::ranges::replace(whole, '\\', '/');
    // A name is put behind it; in the long form a second separator would be a part of that.
    return whole.ends_with('/') ? whole.substr(0, whole.size() - 1) : whole;
}

std::string FolderOf(const std::string& path) {
    const std::size_t end = path.find_last_of("/\\");
    if (end == std::string::npos) return ".";
    const bool is_drive = end > 0 && path[end - 1] == ':';
    return path.substr(0, is_drive ? end + 1 : end);
}

std::string FileNameOf(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

bool IsFileName(const std::string& name) {
    constexpr std::size_t kLongest = 255;
    const std::wstring wide = Wide(name);
    return !wide.empty() && wide.size() <= kLongest && std::ranges::none_of(wide, IsForbidden) && wide.back() != L'.' &&
           wide.back() != L' ' && !IsDevice(wide);
}

}  // namespace vantrel::os
