#include "platform/os/code_page.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <string>

namespace vantrel::os {

namespace {

/// Name of the code page of the user's locale; Windows-1252 where that locale has a page of 7 bits, as the plain one,
/// or of several bytes a character, or is not there. The process itself runs in a locale of UTF-8: the toolkit sees to
/// it.
std::string CodePageName() {
    constexpr const char* kWindows = "CP1252";
    constexpr std::string_view kSevenBits = "ANSI_X3.4-1968";
    const locale_t users = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (users == nullptr) return kWindows;
    const locale_t own = uselocale(users);
    const std::string name = MB_CUR_MAX == 1 ? nl_langinfo(CODESET) : kWindows;
    uselocale(own);
    freelocale(users);
    return name == kSevenBits ? kWindows : name;
}

constexpr std::intptr_t kNone = -1;

iconv_t Converter(std::intptr_t page) {
    return reinterpret_cast<iconv_t>(page);  // NOLINT(performance-no-int-to-ptr): a handle that was kept as a number
}

}  // namespace

CodePage::CodePage() : page_(reinterpret_cast<std::intptr_t>(iconv_open(CodePageName().c_str(), "UTF-8"))) {}

CodePage::~CodePage() {
    if (page_ != kNone) iconv_close(Converter(page_));
}

char CodePage::Byte(std::string_view character) const {
    std::array<char, 8> from{};
    const std::size_t length = std::min(character.size(), from.size());
    std::copy_n(character.begin(), length, from.begin());
    char* in = from.data();
    std::size_t in_left = length;
    char byte = '?';
    char* out = &byte;
    std::size_t out_left = 1;
    const bool converted =
        page_ != kNone && iconv(Converter(page_), &in, &in_left, &out, &out_left) == 0 && in_left == 0;
    return converted && out_left == 0 ? byte : '?';
}

}  // namespace vantrel::os
