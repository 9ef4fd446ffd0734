// What tests, screen readers and scripts rely on: every control under its name, and of the kind that they expect.
#include "support/desk.h"
#include "windows/Connect.h"
#include "windows/DATA_Table.h"
#include "windows/DB_SET.h"
#include "windows/DCI_ACI_SET.h"
#include "windows/Form1.h"
#include "windows/Form2.h"
#include "windows/Form3.h"
#include "windows/Form4.h"
#include "windows/Record_View_Draw.h"
#include "windows/Record_View_Form.h"
#include "windows/Set_Dev.h"
#include "windows/about_form.h"

#include <QAccessible>
#include <QComboBox>
#include <QWidget>

namespace vantrel {
namespace {

struct Controls {
    const char* kind;
    std::vector<std::string> names;
};

struct NamedWindow {
    std::string name;
    std::function<Window&()> touch;
    std::vector<Controls> controls;
};

void PrintTo(const NamedWindow& window, std::ostream* out) { *out << window.name; }

template <class W>
NamedWindow Named(const std::string& name, std::vector<Controls> controls) {
    return {name, []() -> Window& { return The<W>(); }, std::move(controls)};
}

/// name(0) to name(count-1).
std::vector<std::string> Array(const std::string& name, int count) {
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) names.push_back(name + "(" + std::to_string(i) + ")");
    return names;
}

class Names : public Desk, public testing::WithParamInterface<NamedWindow> {
protected:
    Names() { Open(""); }
};

TEST_P(Names, Every_control_is_found_by_its_name_and_is_of_its_kind) {
    QWidget* const frame = GetParam().touch().ClientArea()->window();
    EXPECT_EQ(frame->objectName().toStdString(), GetParam().name);
    for (const auto& [kind, names] : GetParam().controls) {
        for (const std::string& name : names) {
            const auto found = frame->findChildren<QWidget*>(QString::fromStdString(name));
            ASSERT_EQ(found.size(), 1) << name;
            EXPECT_TRUE(found.front()->inherits(kind)) << name << " is no " << kind;
            if (const auto* combo = qobject_cast<QComboBox*>(found.front())) {
                EXPECT_TRUE(combo->isEditable()) << name;
            }
        }
    }
}

TEST_P(Names, Every_control_is_called_something_by_a_screen_reader) {
    const QWidget* const frame = GetParam().touch().ClientArea()->window();
    for (const auto& [kind, names] : GetParam().controls) {
        for (const std::string& name : names) {
            auto* const control = frame->findChild<QWidget*>(QString::fromStdString(name));
            ASSERT_NE(control, nullptr) << name;
            EXPECT_NE(QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name), "") << name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    , Names,
    testing::Values(
        Named<Form1>("Form1", {{"QAbstractButton",
                                {"Command1", "Command2", "Command3", "Command4", "Command5", "Command6", "Command7",
                                 "Command8", "Command9", "Command10"}},
                               {"QLabel", {"pic_start", "pic_end", "row_stat"}},
                               {"QWidget", {"draw_pic"}},
                               {"QComboBox", {"Combo1"}},
                               {"QTabWidget", {"SSTab1"}},
                               {"QAbstractItemView", Array("MSFlexGrid1", 4)},
                               {"QAbstractItemView", Array("MSFlexGrid2", 4)}}),
        Named<Connect>("Connect", {{"QLabel", {"Label1", "Label2"}},
                                   {"QAbstractButton", {"Command1", "Command2"}},
                                   {"QAbstractItemView", {"MSFlexGrid1"}},
                                   {"QCheckBox", Array("Check1", 6)}}),
        Named<Set_Dev>("Set_Dev", {{"QLabel", {"Label1", "Label2", "Label3", "Label4"}},
                                   {"QComboBox", {"Combo1_dev", "Combo_Scan_model"}},
                                   {"QComboBox", Array("ch", 20)},
                                   {"QComboBox", Array("temp", 20)},
                                   {"QAbstractItemView", {"Grid_Fun"}},
                                   {"QLineEdit", {"Timer_Set"}},
                                   {"QAbstractButton", {"Command1", "Command2"}}}),
        Named<DCI_ACI_SET>("DCI_ACI_SET", {{"QLabel", {"Label1", "Label2", "Label3", "Label4", "Label5"}},
                                           {"QLineEdit", {"ohm_set", "curr_set"}},
                                           {"QAbstractButton", {"Command1"}}}),
        Named<Form4>("Form4", {{"QCheckBox", {"at_time", "stop_time", "per_scan_interval", "stop_after_n_scan"}},
                               {"QDateTimeEdit", {"StartTime", "StopTime", "PerSan"}},
                               {"QLineEdit", {"N_SCAN"}},
                               {"QWidget", {"UpDown1"}},
                               {"QAbstractButton", {"Command1"}}}),
        Named<Form3>("Form3", {{"QLabel", {"Label1", "Label2", "Label3", "Label4", "Label5"}},
                               {"QComboBox", {"Combo_dev", "Combo_chan", "Combo_db"}},
                               {"QLineEdit", {"color_text", "division_text", "offset_text"}},
                               {"QAbstractButton", {"Command1", "Command3"}}}),
        Named<Form2>("Form2", {{"QTabWidget", {"SSTab1"}},
                               {"QAbstractItemView", Array("MSFlexGrid1", 4)},
                               {"QLineEdit", Array("Text1", 4)},
                               {"QAbstractButton", {"Command1"}}}),
        Named<DATA_Table>("DATA_Table", {{"QTabWidget", {"SSTab1"}}, {"QAbstractItemView", Array("MSFlexGrid1", 4)}}),
        Named<DB_SET>("DB_SET", {{"QAbstractItemView", {"MSFlexGrid1"}},
                                 {"QComboBox", Array("Combo1", 4)},
                                 {"QAbstractButton", {"OK"}}}),
        Named<Record_View_Draw>("Record_View_Draw",
                                {{"QGroupBox", {"Frame1"}},
                                 {"QComboBox", {"Combo_record", "Combo_chan"}},
                                 {"QLabel", {"Label1", "Label2", "Label3", "Label4", "Data_RecordCount", "color_box"}},
                                 {"QRadioButton", {"draw_all", "draw_limit"}},
                                 {"QLineEdit",
                                  {"draw_start", "draw_stop", "offset_box", "division_box", "Text1", "show_value"}},
                                 {"QAbstractButton", {"Command1", "Command2", "Command3"}},
                                 {"QWidget", {"draw_pic"}},
                                 {"QSlider", {"Slider1"}}}),
        Named<Record_View_Form>("Record_View_Form",
                                {{"QListWidget", {"List1"}},
                                 {"QAbstractButton",
                                  {"Command1", "Command2", "Command3", "Command4", "Command5", "prev_DB", "next_DB"}},
                                 {"QAbstractItemView", {"MSFlexGrid1"}}}),
        Named<about_form>("about_form", {{"QLabel", {"Picture1", "Label1", "Label2", "Label3", "Label4"}},
                                         {"QAbstractButton", {"Command1"}}})),
    [](const auto& window) { return window.param.name; });

}  // namespace
}  // namespace vantrel
