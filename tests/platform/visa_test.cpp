#include "platform/visa.h"

#include "platform/visa/loader.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace vantrel;

namespace {

using Word = VisaEntryPoints::Word;

constexpr auto kLibraryNotFound = static_cast<ViStatus>(0xBFFF009E);
constexpr Word kFailed = 0xBFFF0011;  // a status below 0, not extended by its sign

// What a library would find in its arguments, and the status that it gives.
struct Arguments {
    Word a, b, c;
    std::string text;
    std::string bytes;
} seen;
Word status_given = 0;

/// Puts `value` into a result cell as a library with integers of type Integer does.
template <typename Integer>
void Put(Word* cell, std::uint32_t value) {
    const Integer integer = value;
    std::memcpy(cell, &integer, sizeof integer);
}

/// A library whose integers are of type Integer. Every call gives 17, 18, "FIRST" or "bytes".
template <typename Integer>
VisaEntryPoints Library() {
    VisaEntryPoints table;
    table.viOpenDefaultRM = [](Word* session) {
        Put<Integer>(session, 17);
        return status_given;
    };
    table.viFindRsrc = [](Word rm, const char* expression, Word* list, Word* count, char* descriptor) {
        seen = {rm, 0, 0, expression, ""};
        Put<Integer>(list, 17);
        Put<Integer>(count, 18);
        std::strcpy(descriptor, "FIRST");
        return status_given;
    };
    table.viFindNext = [](Word list, char* descriptor) {
        seen = {list, 0, 0, "", ""};
        std::strcpy(descriptor, "FIRST");
        return status_given;
    };
    table.viOpen = [](Word rm, const char* descriptor, Word access, Word timeout, Word* session) {
        seen = {rm, access, timeout, descriptor, ""};
        Put<Integer>(session, 17);
        return status_given;
    };
    table.viSetAttribute = [](Word session, Word attribute, Word value) {
        seen = {session, attribute, value, "", ""};
        return status_given;
    };
    table.viWrite = [](Word session, const unsigned char* bytes, Word count, Word* written) {
        seen = {session, count, 0, "", std::string(bytes, bytes + count)};
        Put<Integer>(written, static_cast<std::uint32_t>(count));
        return status_given;
    };
    table.viRead = [](Word session, unsigned char* bytes, Word count, Word* read) {
        seen = {session, count, 0, "", ""};
        std::memcpy(bytes, "bytes", 5);
        Put<Integer>(read, 5);
        return status_given;
    };
    table.viClose = [](Word object) {
        seen = {object, 0, 0, "", ""};
        return status_given;
    };
    return table;
}

/// Libraries of both widths, giving a status.
template <typename Integer>
class VisaCalls : public testing::Test {
protected:
    void Use(Word status) {
        status_given = status;
        UseVisa(Library<Integer>());
    }
};
using Widths = testing::Types<std::uint32_t, std::uint64_t>;
TYPED_TEST_SUITE(VisaCalls, Widths);

TYPED_TEST(VisaCalls, Resource_manager_comes_back_whole) {
    this->Use(0);
    ViSession session = 0xFFFFFFFF;
    EXPECT_EQ(viOpenDefaultRM(&session), kViSuccess);
    EXPECT_EQ(session, 17U);
}

TYPED_TEST(VisaCalls, Search_hands_everything_over_and_back) {
    this->Use(0);
    ViSession list = 0xFFFFFFFF;
    std::uint32_t count = 0xFFFFFFFF;
    std::string descriptor = "old";
    EXPECT_EQ(viFindRsrc(0xFFFFFFFE, "?*", &list, &count, &descriptor), kViSuccess);
    EXPECT_EQ(seen.a, 0xFFFFFFFEU);
    EXPECT_EQ(seen.text, "?*");
    EXPECT_EQ(list, 17U);
    EXPECT_EQ(count, 18U);
    EXPECT_EQ(descriptor, "FIRST");
}

TYPED_TEST(VisaCalls, Next_resource_is_handed_back) {
    this->Use(0);
    std::string descriptor;
    EXPECT_EQ(viFindNext(9, &descriptor), kViSuccess);
    EXPECT_EQ(seen.a, 9U);
    EXPECT_EQ(descriptor, "FIRST");
}

TYPED_TEST(VisaCalls, Opening_hands_everything_over_and_back) {
    this->Use(0);
    ViSession session = 0xFFFFFFFF;
    EXPECT_EQ(viOpen(3, "GPIB0::2::INSTR", 1, 2, &session), kViSuccess);
    EXPECT_EQ(seen.a, 3U);
    EXPECT_EQ(seen.text, "GPIB0::2::INSTR");
    EXPECT_EQ(seen.b, 1U);
    EXPECT_EQ(seen.c, 2U);
    EXPECT_EQ(session, 17U);
}

TYPED_TEST(VisaCalls, Attribute_is_handed_over) {
    this->Use(0);
    EXPECT_EQ(viSetAttribute(3, kViAttrTmoValue, 5000), kViSuccess);
    EXPECT_EQ(seen.a, 3U);
    EXPECT_EQ(seen.b, 0x3FFF001AU);
    EXPECT_EQ(seen.c, 5000U);
}

TYPED_TEST(VisaCalls, Write_sends_as_many_bytes_as_counted) {
    this->Use(0);
    std::uint32_t written = 0xFFFFFFFF;
    EXPECT_EQ(viWrite(3, "*IDN?\n", 5, &written), kViSuccess);
    EXPECT_EQ(seen.bytes, "*IDN?");
    EXPECT_EQ(written, 5U);
}

TYPED_TEST(VisaCalls, Write_sends_no_byte_beyond_the_text) {
    this->Use(0);
    std::uint32_t written = 0;
    viWrite(3, "abc", 50, &written);
    EXPECT_EQ(seen.bytes, "abc");
    EXPECT_EQ(written, 3U);
}

TYPED_TEST(VisaCalls, Read_gives_what_arrived) {
    this->Use(0);
    std::string bytes = "old";
    std::uint32_t read = 0xFFFFFFFF;
    EXPECT_EQ(viRead(3, &bytes, 1024, &read), kViSuccess);
    EXPECT_EQ(seen.b, 1024U);
    EXPECT_EQ(bytes, "bytes");
    EXPECT_EQ(read, 5U);
}

TYPED_TEST(VisaCalls, Full_buffer_is_a_success_with_its_bytes) {
    this->Use(0x3FFF0006);
    std::string bytes;
    std::uint32_t read = 0;
    EXPECT_EQ(viRead(3, &bytes, 1024, &read), kViSuccessMaxCnt);
    EXPECT_EQ(bytes, "bytes");
}

TYPED_TEST(VisaCalls, What_a_library_leaves_out_is_0) {
    VisaEntryPoints silent;
    silent.viOpenDefaultRM = [](Word*) { return Word{0}; };
    silent.viFindRsrc = [](Word, const char*, Word*, Word*, char*) { return Word{0}; };
    silent.viOpen = [](Word, const char*, Word, Word, Word*) { return Word{0}; };
    silent.viWrite = [](Word, const unsigned char*, Word, Word*) { return Word{0}; };
    silent.viRead = [](Word, unsigned char*, Word, Word*) { return Word{0}; };
    UseVisa(silent);
    constexpr std::uint32_t kOld = 0xFFFFFFFF;
    ViSession session = kOld, list = kOld, instrument = kOld;
    std::uint32_t count = kOld, written = kOld, read = kOld;
    std::string descriptor = "old", bytes = "old";
    EXPECT_EQ(viOpenDefaultRM(&session), kViSuccess);
    EXPECT_EQ(viFindRsrc(1, "?*", &list, &count, &descriptor), kViSuccess);
    EXPECT_EQ(viOpen(1, "FIRST", 0, 0, &instrument), kViSuccess);
    EXPECT_EQ(viWrite(1, "abc", 3, &written), kViSuccess);
    EXPECT_EQ(viRead(1, &bytes, 1024, &read), kViSuccess);
    for (const std::uint32_t result : {session, list, instrument, count, written, read}) EXPECT_EQ(result, 0U);
    EXPECT_EQ(descriptor + bytes, "");
}

TYPED_TEST(VisaCalls, Close_hands_the_object_over) {
    this->Use(0);
    EXPECT_EQ(viClose(0xFFFFFFFF), kViSuccess);
    EXPECT_EQ(seen.a, 0xFFFFFFFFU);
}

TYPED_TEST(VisaCalls, Failed_call_leaves_nothing_in_its_results) {
    this->Use(kFailed);
    ViSession manager = 1;
    ViSession list = 1;
    ViSession session = 1;
    std::uint32_t count = 1;
    std::uint32_t written = 1;
    std::uint32_t read = 1;
    std::string first = "old";
    std::string next = "old";
    std::string bytes = "old";
    EXPECT_LT(viOpenDefaultRM(&manager), 0);
    EXPECT_LT(viFindRsrc(1, "?*", &list, &count, &first), 0);
    EXPECT_LT(viFindNext(1, &next), 0);
    EXPECT_LT(viOpen(1, "A", 0, 0, &session), 0);
    EXPECT_LT(viWrite(1, "A", 1, &written), 0);
    EXPECT_LT(viRead(1, &bytes, 1024, &read), 0);
    EXPECT_EQ(manager + list + session + count + written + read, 0U);
    EXPECT_EQ(first + next + bytes, "");
}

TYPED_TEST(VisaCalls, Status_below_0_stays_below_0_whatever_stands_above_its_32_bits) {
    this->Use(kFailed);
    EXPECT_EQ(viClose(1), static_cast<ViStatus>(0xBFFF0011));
    this->Use(0xFFFFFFFF00000000U | kFailed);
    EXPECT_EQ(viClose(1), static_cast<ViStatus>(0xBFFF0011));
    this->Use(0xDEADBEEF00000000U);
    EXPECT_EQ(viClose(1), kViSuccess);
}

TEST(VisaWithoutALibrary, Every_call_fails_alike) {
    UseVisa({});
    ViSession handle = 1;
    std::uint32_t count = 1;
    std::string text = "old";
    EXPECT_EQ(viOpenDefaultRM(&handle), kLibraryNotFound);
    EXPECT_EQ(viFindRsrc(1, "?*", &handle, &count, &text), kLibraryNotFound);
    EXPECT_EQ(viFindNext(1, &text), kLibraryNotFound);
    EXPECT_EQ(viOpen(1, "A", 0, 0, &handle), kLibraryNotFound);
    EXPECT_EQ(viSetAttribute(1, kViAttrTmoValue, 5000), kLibraryNotFound);
    EXPECT_EQ(viWrite(1, "A", 1, &count), kLibraryNotFound);
    EXPECT_EQ(viRead(1, &text, 1024, &count), kLibraryNotFound);
    EXPECT_EQ(viClose(1), kLibraryNotFound);
    EXPECT_EQ(handle, 0U);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(text, "");
}

TEST(VisaLoader, Library_that_is_nowhere_gives_an_empty_table) {
    EXPECT_EQ(LoadVisa({"libno-such-visa.so.0", "libno-such-visa.so"}).viOpenDefaultRM, nullptr);
}

TEST(VisaLoader, Library_without_the_entry_points_gives_an_empty_table) {
    EXPECT_EQ(LoadVisa({"libm.so.6"}).viClose, nullptr);
}

TEST(VisaLoader, Library_that_lacks_a_single_entry_point_is_not_used_at_all) {
    const VisaEntryPoints table = LoadVisa({VANTREL_INCOMPLETE_VISA});
    EXPECT_EQ(table.viOpenDefaultRM, nullptr);
    EXPECT_EQ(table.viRead, nullptr);
}

TEST(VisaLoader, Next_library_is_taken_where_one_is_incomplete) {
    const VisaEntryPoints table = LoadVisa({VANTREL_INCOMPLETE_VISA, VANTREL_WHOLE_VISA});
    ASSERT_NE(table.viClose, nullptr);
    UseVisa(table);
    ViSession manager = 0;
    EXPECT_EQ(viOpenDefaultRM(&manager), kViSuccess);
    EXPECT_NE(manager, 0U);
    EXPECT_EQ(viClose(manager), kViSuccess);
}

}  // namespace
