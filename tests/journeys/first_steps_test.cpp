// What a person meets who does not know the program yet.
#include "support/desk.h"
#include "windows/Form1.h"

#include <QWidget>

namespace vantrel {
namespace {

class FirstSteps : public Desk {
protected:
    std::string Focus(const std::string& window) const {
        const QWidget* focused = user.FindWindow(window)->focusWidget();
        return focused != nullptr ? focused->objectName().toStdString() : "none";
    }
    void InConnect(const User::Action& steps) {
        user.WhenShown("Connect", [this, steps] {
            steps();
            user.Click("Connect", "Command2");
        });
        user.Menu("Connected_to_Instrument");
    }
    /// Modal windows are looked at and left by their close box.
    void ExpectFocusWhenShown(const std::string& window, const std::string& control) {
        user.WhenShown(window, [this, window, control] {
            EXPECT_EQ(Focus(window), control) << window;
            user.Close(window);
        });
    }
};

TEST_F(FirstSteps, Tool_tips_say_why_there_is_nothing_yet_and_what_to_do) {
    Open("instrument A\ncard 0\n");
    const std::string why_no_start =
        "No instrument is connected, so Start is off.\nChoose Configuration, Connect to Instrument.";
    EXPECT_EQ(user.ToolTip("Form1", "Combo1"), why_no_start);
    InConnect([this] {
        EXPECT_EQ(user.ToolTip("Connect", "MSFlexGrid1"),
                  "No instrument with a scanner card was found.\nCheck power and cable, then press Find.");
    });
    EXPECT_EQ(user.ToolTip("Form1", "Combo1"), why_no_start);
    user.Click("Form1", "Command7");
    EXPECT_EQ(user.ToolTip("Record_View_Form", "List1"),
              "There is no record yet: the first Start with a record from Set Record makes one.");
    EXPECT_EQ(user.ToolTip("Record_View_Form", "MSFlexGrid1"), "Select a record above and press Open.");
}

TEST_F(FirstSteps, These_tool_tips_go_as_soon_as_there_is_something) {
    Open();
    InConnect([this] {
        EXPECT_EQ(user.ToolTip("Connect", "MSFlexGrid1"), "");
        user.Click("Connect", "Check1(0)");
    });
    EXPECT_EQ(user.ToolTip("Form1", "Combo1"), "");
    Assign({"Record1"});
    RunAndStopAfter(3000);
    user.Click("Form1", "Command7");
    EXPECT_EQ(user.ToolTip("Record_View_Form", "List1"), "");
    user.Choose("Record_View_Form", "List1", "Record1.mdb");
    user.Click("Record_View_Form", "Command2");
    EXPECT_EQ(user.ToolTip("Record_View_Form", "MSFlexGrid1"), "");
    InConnect([this] { user.Click("Connect", "Check1(0)"); });  // which takes the tick away
    EXPECT_NE(user.ToolTip("Form1", "Combo1"), "");
}

TEST_F(FirstSteps, Each_window_opens_with_the_focus_where_a_person_begins) {
    Open();
    EXPECT_EQ(Focus("Form1"), "Form1");
    InConnect([this] {
        EXPECT_EQ(Focus("Connect"), "Check1(0)");
        user.Click("Connect", "Check1(0)");
    });
    user.Click("Form1", "Command10");
    EXPECT_EQ(Focus("DB_SET"), "Combo1(0)");
    user.Click("DB_SET", "OK");
    ExpectFocusWhenShown("Set_Dev", "Combo1_dev");
    user.Menu("set_sc");
    ExpectFocusWhenShown("Form4", "at_time");
    user.Menu("set_read");
    ExpectFocusWhenShown("Form3", "Combo_dev");
    user.Menu("set_draw");
    ExpectFocusWhenShown("Form2", "MSFlexGrid1(0)");
    user.Click("Form1", "Command8");
    ExpectFocusWhenShown("Record_View_Draw", "Combo_record");
    user.Click("Form1", "Command9");
    user.Click("Form1", "Command6");
    EXPECT_EQ(Focus("DATA_Table"), "MSFlexGrid1(0)");
    user.Click("Form1", "Command7");
    EXPECT_EQ(Focus("Record_View_Form"), "List1");
    user.Menu("About");
    EXPECT_EQ(Focus("about_form"), "Command1");
}

TEST_F(FirstSteps, An_empty_list_of_instruments_leaves_the_focus_on_Find) {
    Open("instrument A\ncard 0\n");
    InConnect([this] { EXPECT_EQ(Focus("Connect"), "Command1"); });
}

}  // namespace
}  // namespace vantrel
