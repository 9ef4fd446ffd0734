// What is to be done at a moment of the virtual clock.
#include "support/virtual_clock.h"

#include <QCoreApplication>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace vantrel {
namespace {

class ClockActions : public testing::Test {
protected:
    void Yield() { QCoreApplication::processEvents(); }
    std::function<void()> Note(const std::string& text) {
        return [this, text] { done += text; };
    }

    VirtualClock clock;
    std::string done;
};

TEST_F(ClockActions, Run_in_the_yield_after_their_moment_and_not_in_the_sleep) {
    clock.At(1000, Note("a"));
    Sleep(1000);
    EXPECT_EQ(done, "");
    Yield();
    EXPECT_EQ(done, "a");
}

TEST_F(ClockActions, Do_not_run_before_their_moment) {
    clock.At(1000, Note("a"));
    Sleep(999);
    Yield();
    EXPECT_EQ(done, "");
}

TEST_F(ClockActions, Run_once) {
    clock.At(10, Note("a"));
    Sleep(10);
    Yield();
    Sleep(10);
    Yield();
    EXPECT_EQ(done, "a");
}

TEST_F(ClockActions, That_fall_due_in_one_sleep_run_in_the_order_of_their_moments) {
    clock.At(300, Note("c"));
    clock.At(100, Note("a"));
    clock.At(200, Note("b"));
    clock.At(300, Note("d"));
    Sleep(1000);
    Yield();
    EXPECT_EQ(done, "abcd");
}

TEST_F(ClockActions, Fall_due_when_the_clock_is_advanced_too) {
    clock.At(1000, Note("a"));
    clock.Advance(1000);
    Yield();
    EXPECT_EQ(done, "a");
}

TEST_F(ClockActions, For_a_moment_gone_by_run_in_the_next_yield) {
    Sleep(500);
    clock.At(100, Note("a"));
    Yield();
    EXPECT_EQ(done, "a");
}

}  // namespace
}  // namespace vantrel
