// The draw settings for a person who uses the keyboard alone.
#include "support/desk.h"

#include <QTest>

namespace vantrel {
namespace {

using DrawSettings = Desk;

TEST_F(DrawSettings, Tab_never_goes_to_the_record_list_below_the_window) {
    Open();
    Connect({0});
    user.WhenShown("Form3", [&] {
        QWidget* frame = user.FindWindow("Form3");
        std::vector<std::string> stops;
        for (int i = 0; i < 7; ++i) {
            stops.push_back(frame->focusWidget()->objectName().toStdString());
            QTest::keyClick(frame->focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(stops, (std::vector<std::string>{"Combo_dev", "Combo_chan", "color_text", "Command3", "division_text",
                                                   "offset_text", "Command1"}));
        EXPECT_EQ(frame->focusWidget()->objectName(), "Combo_dev");
        user.Click("Form3", "Command1");
    });
    user.Menu("set_draw");
}

}  // namespace
}  // namespace vantrel
