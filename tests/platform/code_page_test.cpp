// Texts in the system's 8-bit code page.
#include "platform/code_page.h"

#include "support/environment.h"
#include "support/temp_folder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace vantrel {
namespace {

// Windows has one code page for all programs, and nothing to choose another with.
void UseLocale(const std::string& name) { SetEnvironment("LC_ALL", name); }

TEST(CodePage, Leaves_plain_letters_and_line_ends_as_they_are) {
    UseLocale("C");
    std::string plain;
    for (char c = 0; c < 127; ++c) plain += c;
    EXPECT_EQ(ToCodePage(plain), plain);
    EXPECT_EQ(ToCodePage(plain + "\u00E9"), plain + "\xE9");
    EXPECT_EQ(ToCodePage(""), "");
}

TEST(CodePage, Is_Windows_1252_in_the_plain_locale) {
    UseLocale("C");
    EXPECT_EQ(ToCodePage("\u00B0\u00B5\u00E4\u00FF"), "\xB0\xB5\xE4\xFF");
    EXPECT_EQ(ToCodePage("\u20AC\u2026\u0160\u2122"), "\x80\x85\x8A\x99");  // what Latin-1 lacks
}

TEST(CodePage, Is_Windows_1252_in_a_locale_with_several_bytes_to_a_character) {
    UseLocale("C.UTF-8");
    EXPECT_EQ(ToCodePage("\u00E4\u20AC"), "\xE4\x80");
}

TEST(CodePage, Is_Windows_1252_in_a_locale_that_is_not_there) {
    UseLocale("tlh_QO.ISO-8859-15");
    EXPECT_EQ(ToCodePage("\u00E4\u20AC"), "\xE4\x80");
}

TEST(CodePage, Puts_a_question_mark_for_a_character_that_it_lacks) {
    UseLocale("C");
    EXPECT_EQ(ToCodePage("5 k\u2126 \u65E5\u672C \U0001F321."), "5 k? ?? ?.");
    EXPECT_EQ(ToCodePage("\u0081"), "?");  // a hole of the page
}

TEST(CodePage, Puts_a_question_mark_for_a_byte_that_is_no_UTF_8) {
    UseLocale("C");
    EXPECT_EQ(ToCodePage("20\xB0"
                         "C"),
              "20?C");
    EXPECT_EQ(ToCodePage("\xE4\xC3\xA4\xC3"), "?\xE4?");  // behind a lead byte without its rest too
    EXPECT_EQ(ToCodePage("\xC3"
                         "A\xC3\xA4"),
              "?A\xE4");
    EXPECT_EQ(ToCodePage("\xFF\xFE,"), "??,");
    EXPECT_EQ(ToCodePage("\xED\xA0\x80"), "?");  // half of a pair
    EXPECT_EQ(ToCodePage("\xC0\xAF"), "?");      // a slash, overlong
}

#ifndef _WIN32  // the code page is that of Windows, whatever the locale
/// Locales of their own, made with the system's tools.
class CodePageOfALocale : public testing::Test {
protected:
    /// Makes a locale with code page `page` and has the user use it. False where the tools are missing.
    bool Use(const std::string& page) {
        const std::string command = "localedef --no-archive --quiet --force -i POSIX -f " + page + " '" +
                                    (folder / ("own." + page)) + "' >/dev/null 2>&1";
        [[maybe_unused]] const int told = std::system(command.c_str());  // it warns of what the locale lacks
        if (!std::filesystem::exists(folder / ("own." + page + "/LC_CTYPE"))) return false;
        SetEnvironment("LOCPATH", folder.Path());
        UseLocale("own." + page);
        return true;
    }
    TempFolder folder;
};

TEST_F(CodePageOfALocale, Is_used_where_it_has_8_bits) {
    if (!Use("ISO-8859-15")) GTEST_SKIP() << "no tools to make a locale";
    EXPECT_EQ(ToCodePage("\u00E4\u20AC\u0160"), "\xE4\xA4\xA6");
    EXPECT_EQ(ToCodePage("\u00A4\u2026"), "??");  // in Windows-1252, but not here
}

TEST_F(CodePageOfALocale, Is_used_for_other_letters_too) {
    if (!Use("CP1251")) GTEST_SKIP() << "no tools to make a locale";
    EXPECT_EQ(ToCodePage("\u0416 \u00E4"), "\xC6 ?");
}

TEST_F(CodePageOfALocale, Gives_way_to_Windows_1252_where_it_has_several_bytes_to_a_character) {
    if (!Use("GBK")) GTEST_SKIP() << "no tools to make a locale";
    EXPECT_EQ(ToCodePage("\u00E4\u65E5"), "\xE4?");
}
#endif

}  // namespace
}  // namespace vantrel
