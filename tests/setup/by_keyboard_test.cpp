// The set-up dialogs for a person who uses the keyboard alone, and whether their texts can be read.
#include "platform/toolkit/events.h"
#include "setup/plan.h"
#include "windows/DCI_ACI_SET.h"
#include "windows/Form4.h"
#include "windows/Set_Dev.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace vantrel {
namespace {

/// All kinds of functions. Four wires on a slave's place are a two-wire matter for the instrument.
const std::string kAllKinds = R"(
instrument USB0::4::INSTR
  serial Kinds
  card 2
  no-line-feed
  channel 1 TEMP PT3916 FRTD
  channel 2 TCO N
  channel 3 FRES
  channel 4 TEMP PT385 RTD
  channel 5 PER
  channel 6 VOLT:AC
  channel 7 FREQ
  channel 8 TEMP SPRTD RTD
  channel 9 RES
  channel 12 TCO K
  channel 15 TEMP PT3916 FRTD
instrument USB0::5::INSTR
  serial "Few kinds"
  card 1
  no-line-feed
  channel 1 TEMP PT3916 FRTD
  channel 2 TCO N
  channel 3 PER
  channel 8 TEMP SPRTD RTD
)";

class ByKeyboard : public PlanDesk {
protected:
    /// The controls on which Tab stops, from the focused one round to it again. A date's fields are stops of one
    /// control.
    Texts TabStops(const std::string& window) const {
        QWidget* frame = user.FindWindow(window);
        Texts stops;
        for (int i = 0; i < 100; ++i) {
            const std::string name = frame->focusWidget()->objectName().toStdString();
            if (stops.size() > 1 && name == stops.front()) break;
            if (stops.empty() || name != stops.back()) stops.push_back(name);
            QTest::keyClick(frame->focusWidget(), Qt::Key_Tab);
        }
        return stops;
    }
    /// Presses keys wherever the focus of the window is.
    void Keys(const std::string& window, const std::string& text) {
        for (const char key : text) QTest::keyClick(user.FindWindow(window)->focusWidget(), key);
        DoEvents();
    }
};

TEST_F(ByKeyboard, Tab_goes_from_a_function_to_its_sensor_and_on_to_the_next_channel) {
    Open(kAllKinds);
    Connect({0});
    SetDev([&] {
        Texts expected = {"Combo1_dev"};
        const std::vector<int> with_sensor = {0, 1, 3, 7, 11, 14};
        for (int i = 0; i < 20; ++i) {
            if (i == 10 || i == 12) continue;  // the slaves of channels 1 and 3
            expected.push_back(Ch(i));
            if (std::find(with_sensor.begin(), with_sensor.end(), i) != with_sensor.end()) expected.push_back(Temp(i));
        }
        for (const char* name : {"Combo_Scan_model", "Timer_Set", "Command1", "Command2"}) expected.emplace_back(name);
        EXPECT_EQ(TabStops("Set_Dev"), expected);
    });
}

TEST_F(ByKeyboard, Tab_passes_the_hidden_channels_of_a_10_channel_card) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        Texts expected = {"Combo1_dev"};
        for (int i = 0; i < 10; ++i) expected.push_back(Ch(i));
        for (const char* name : {"Combo_Scan_model", "Timer_Set", "Command1", "Command2"}) expected.emplace_back(name);
        EXPECT_EQ(TabStops("Set_Dev"), expected);
    });
}

TEST_F(ByKeyboard, Tab_goes_down_the_shunt_dialog_and_the_schedule_as_the_eye_reads) {
    Open(kTenVolts);
    Connect({0});
    The<DCI_ACI_SET>().Show();
    EXPECT_EQ(TabStops("DCI_ACI_SET"), (Texts{"ohm_set", "curr_set", "Command1"}));
    Unload<DCI_ACI_SET>();
    Schedule([&] {
        EXPECT_EQ(TabStops("Form4"), (Texts{"at_time", "StartTime", "per_scan_interval", "PerSan", "stop_after_n_scan",
                                            "N_SCAN", "UpDown1", "Command1"}));
        user.Click("Form4", "per_scan_interval");
        The<Form4>().at_time.SetFocus();
        EXPECT_EQ(TabStops("Form4"), (Texts{"at_time", "StartTime", "stop_time", "StopTime", "per_scan_interval",
                                            "PerSan", "stop_after_n_scan", "N_SCAN", "UpDown1", "Command1"}));
    });
}

TEST_F(ByKeyboard, A_channel_is_set_up_and_sent_without_the_mouse) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        The<Set_Dev>().ch(2).SetFocus();
        QWidget* frame = user.FindWindow("Set_Dev");
        auto* function = static_cast<QComboBox*>(frame->focusWidget());
        QTest::keyClick(function, Qt::Key_Down, Qt::AltModifier);
        for (int i = 0; i < 9; ++i) QTest::keyClick(function->view(), Qt::Key_Down);
        QTest::keyClick(function->view(), Qt::Key_Return);
        EXPECT_EQ(Shown("ch(2)"), "TEMP");
        frame->activateWindow();  // the offscreen screen leaves none active when a list closes
        DoEvents();
        user.Press("Set_Dev", Qt::Key_Tab);
        Keys("Set_Dev", "PT385");
        The<Set_Dev>().Timer_Set.SetFocus();
        user.Press("Set_Dev", Qt::Key_Tab);
        wire->ClearTranscript();
        user.Press("Set_Dev", Qt::Key_Return);
        EXPECT_EQ(user.Messages(), Texts{"Setting complete!"});
        EXPECT_EQ(wire->Sent(0).at(4), "SENSe:TEMP:RTD:TYPE PT385 ,@3\n");
        user.Press("Set_Dev", Qt::Key_Tab);
        user.Press("Set_Dev", Qt::Key_Space);
        EXPECT_FALSE(user.Sees("Set_Dev"));
    });
}

TEST_F(ByKeyboard, The_focus_comes_back_to_the_channel_after_the_shunt_dialog) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.WhenShown("DCI_ACI_SET", [&] {
            Keys("DCI_ACI_SET", "25");
            user.Press("DCI_ACI_SET", "Command1", Qt::Key_Return);
        });
        user.Type("Set_Dev", "ch(2)", "DCI");
        EXPECT_EQ(user.FindWindow("Set_Dev")->focusWidget()->objectName(), "ch(2)");
    });
}

TEST_F(ByKeyboard, Enter_in_a_field_of_the_scanner_card_dialog_presses_no_button) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        for (const char* control : {"Combo1_dev", "ch(1)", "Combo_Scan_model", "Timer_Set"})
            user.Press("Set_Dev", control, Qt::Key_Return);
        EXPECT_TRUE(user.Sees("Set_Dev"));
        EXPECT_EQ(wire->Sent(0), Texts{});
    });
}

TEST_F(ByKeyboard, A_click_on_the_channel_labels_scrolls_nothing) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.ClickCell("Set_Dev", "Grid_Fun", 9, 3);
        auto* grid = static_cast<QAbstractItemView*>(user.FindControl("Set_Dev", "Grid_Fun"));
        EXPECT_EQ(grid->visualRect(grid->model()->index(0, 0)).topLeft(), QPoint(0, 0));
        EXPECT_EQ(grid->viewport()->size(), grid->size());
        EXPECT_TRUE(grid->viewport()->rect().contains(grid->visualRect(grid->model()->index(9, 0))));
    });
}

// ------------------------------------------------------------------------------------------------------------- reading

class ToBeRead : public ByKeyboard {
protected:
    /// Each text in the window lies whole within its control, and no caption holds a mark for a shortcut.
    void ExpectReadable(const std::string& window) {
        for (QWidget* widget : user.FindWindow(window)->findChildren<QWidget*>()) {
            if (!widget->isVisible()) continue;
            SCOPED_TRACE(window + " " + widget->objectName().toStdString());
            const auto width_of = [](const QWidget* w, const QString& text) {
                return QFontMetrics(w->font()).horizontalAdvance(text);
            };
            if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
                const QMargins margins = edit->textMargins() + 2;  // Qt adds 2 pixels to those that are set
                const int room = edit->width() - margins.left() - margins.right();
                EXPECT_LE(width_of(edit, edit->text()), room) << edit->text().toStdString();
            } else if (auto* label = qobject_cast<QLabel*>(widget)) {
                const QRect room = label->rect();
                const QRect text = QFontMetrics(label->font()).boundingRect(room, Qt::TextWordWrap, label->text());
                EXPECT_TRUE(text.height() <= room.height() && text.width() <= room.width());
            } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
                EXPECT_LE(width_of(button, button->text()), button->width() - 6);
                EXPECT_TRUE(button->shortcut().isEmpty());
            }
        }
    }
};

TEST_F(ToBeRead, All_kinds_of_functions_and_types_on_both_kinds_of_card) {
    Open(kAllKinds);
    Connect({0, 1});
    SetDev([&] {
        for (const char* device : {"Kinds", "Few kinds"}) {
            user.Pick("Set_Dev", "Combo1_dev", device);
            for (const std::string& function : user.Entries("Set_Dev", "ch(4)")) {
                if (function == "DCI" || function == "ACI")
                    PickCurrent(4, function);
                else
                    user.Pick("Set_Dev", "ch(4)", function);
                ExpectReadable("Set_Dev");
            }
            for (const std::string& type : user.Entries("Set_Dev", "temp(0)")) {
                user.Pick("Set_Dev", "temp(0)", type);
                ExpectReadable("Set_Dev");
            }
            for (const std::string& type : user.Entries("Set_Dev", "temp(1)")) {
                user.Pick("Set_Dev", "temp(1)", type);
                ExpectReadable("Set_Dev");
            }
        }
    });
}

TEST_F(ToBeRead, The_shunt_dialog) {
    Open(kTenVolts);
    The<DCI_ACI_SET>().Show();
    ExpectReadable("DCI_ACI_SET");
}

TEST_F(ToBeRead, The_schedule_in_each_of_its_states) {
    Open(kTenVolts);
    Connect({0});
    Schedule([&] {
        ExpectReadable("Form4");
        user.Click("Form4", "per_scan_interval");
        ExpectReadable("Form4");
    });
}

}  // namespace
}  // namespace vantrel
