// Libraries that need others.
#include "platform/os/library.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(LibraryOnWindows, Named_with_its_whole_path_finds_the_one_beside_it_that_it_needs) {
    void* const library = os::OpenLibrary(std::filesystem::absolute(VANTREL_NEEDING_LIBRARY).string());
    ASSERT_NE(library, nullptr);
    const auto needing = reinterpret_cast<int (*)()>(os::FindRoutine(library, "Needing"));
    ASSERT_NE(needing, nullptr);
    EXPECT_EQ(needing(), 7);
}

}  // namespace
}  // namespace vantrel
