// The person at the screen notices what a person would notice.
#include "support/user.h"

#include "platform/toolkit/dialogs.h"
#include "platform/trial_window.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace vantrel {

TEST(TestUser, Fails_and_closes_a_modal_window_that_nobody_expected) {
    EXPECT_NONFATAL_FAILURE(
        {
            User user;
            The<Trial>().ShowModal();
        },
        "came up unexpectedly");
    EXPECT_FALSE(IsLoaded<Trial>());
}

TEST(TestUser, Cannot_click_what_is_disabled) {
    User user;
    The<Trial>().Command1.SetEnabled(false);
    The<Trial>().Command1.OnClick = [] { happened.push_back("clicked"); };
    The<Trial>().Show();
    EXPECT_NONFATAL_FAILURE(user.Click("Trial", "Command1"), "disabled");
    EXPECT_NE(happened.back(), "clicked");
}

TEST(TestUser, Answers_the_colour_dialog) {
    User user;
    user.AnswerColor(RGB(1, 2, 3));
    user.AnswerColor({});
    EXPECT_EQ(ShowColor(255), RGB(1, 2, 3));
    EXPECT_EQ(ShowColor(255), 255);
    EXPECT_EQ(user.OfferedColor(), 255);
}

}  // namespace vantrel
