// The dialog that says into which record each device stores its scans.
#include "records/record_desk.h"
#include "support/geometry.h"
#include "windows/DB_SET.h"

#include <QComboBox>
#include <QLineEdit>

namespace vantrel {
namespace {

constexpr const char* kPrompt = "Please choice a datebase";
constexpr const char* kRefusal = "Please select other Record.";

class Assignment : public RecordDesk {
protected:
    void OpenDialog() { user.Click("Form1", "Command10"); }
    void Pick(int dev, const std::string& entry) { user.Pick("DB_SET", Combo(dev), entry); }
    std::string Shown(int dev) const { return user.Text("DB_SET", Combo(dev)); }
    static std::string Combo(int dev) { return "Combo1(" + std::to_string(dev) + ")"; }
    QLineEdit* Field(int dev) const {
        return qobject_cast<QComboBox*>(user.FindControl("DB_SET", Combo(dev)))->lineEdit();
    }
};

// ---- As designed

TEST_F(Assignment, Has_no_caption_and_is_no_modal_dialog) {
    OpenConnected(2);
    OpenDialog();
    EXPECT_EQ(user.Caption("DB_SET"), "");
    EXPECT_FALSE(user.FindWindow("DB_SET")->isModal());
    EXPECT_EQ(user.Text("DB_SET", "OK"), "OK");
}

TEST_F(Assignment, Has_each_combo_over_the_cell_of_its_device) {
    OpenConnected(4);
    OpenDialog();
    const float row_0 = The<DB_SET>().MSFlexGrid1.RowHeight(0);
    std::vector<Designed> design = {{"MSFlexGrid1", 0, 120, 5175, 1815}, {"OK", 0, 2160, 5175, 495}};
    for (int i = 0; i < 4; ++i) design.push_back({Combo(i), 2587.5, 120 + row_0 + i * 315.0, 2587.5, 315});
    ExpectDesign(The<DB_SET>(), design);
    EXPECT_EQ(The<DB_SET>().MSFlexGrid1.ColWidth(0), 2587.5F);
    EXPECT_EQ(The<DB_SET>().MSFlexGrid1.ColWidth(1), 2587.5F);
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(The<DB_SET>().MSFlexGrid1.RowHeight(i), 315);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(The<DB_SET>().Combo1(i).Width(), 2587.5F);
}

TEST_F(Assignment, Has_its_combos_in_front_of_the_grid) {
    OpenConnected(4);
    OpenDialog();
    for (int i = 0; i < 4; ++i) {
        const QRect place = OnScreen(The<DB_SET>(), Combo(i));
        const QWidget* seen = The<DB_SET>().ClientArea()->childAt(place.center());
        EXPECT_TRUE(seen == Field(i) || seen == Field(i)->parentWidget()) << i;
    }
}

TEST_F(Assignment, Has_one_line_for_each_device) {
    OpenConnected(2);
    OpenDialog();
    EXPECT_EQ(user.RowCount("DB_SET", "MSFlexGrid1"), 3);
    EXPECT_EQ(user.ColCount("DB_SET", "MSFlexGrid1"), 2);
    EXPECT_EQ(user.CellText("DB_SET", "MSFlexGrid1", 0, 0), "Device");
    EXPECT_EQ(user.CellText("DB_SET", "MSFlexGrid1", 0, 1), "DataBase");
    EXPECT_EQ(user.CellText("DB_SET", "MSFlexGrid1", 1, 0), "A");
    EXPECT_EQ(user.CellText("DB_SET", "MSFlexGrid1", 2, 0), "B");
    for (int i = 0; i < 4; ++i) EXPECT_EQ(user.Sees("DB_SET", Combo(i)), i < 2) << i;
}

TEST_F(Assignment, Has_one_row_and_no_combo_without_a_device) {
    Open();
    The<Form1>().Command10_Click();
    EXPECT_EQ(user.RowCount("DB_SET", "MSFlexGrid1"), 1);
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(user.Sees("DB_SET", Combo(i))) << i;
}

TEST_F(Assignment, Offers_ten_records_and_NONE) {
    OpenConnected(2);
    OpenDialog();
    Texts entries;
    for (int i = 1; i <= 10; ++i) entries.push_back("Record" + std::to_string(i));
    entries.emplace_back("NONE");
    for (int dev = 0; dev < 2; ++dev) EXPECT_EQ(user.Entries("DB_SET", Combo(dev)), entries);
}

TEST_F(Assignment, Prompts_for_a_record_where_a_device_has_none) {
    OpenConnected(2);
    OpenDialog();
    EXPECT_EQ(Shown(0), kPrompt);
    EXPECT_EQ(Shown(1), kPrompt);
    EXPECT_EQ(RecordName(0), "0");
}

// ---- The rule

TEST_F(Assignment, Takes_a_picked_record_at_once) {
    OpenConnected(2);
    OpenDialog();
    Pick(1, "Record10");
    EXPECT_EQ(RecordName(0), "0");
    EXPECT_EQ(RecordName(1), "Record10");
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(Assignment, Takes_none_for_NONE) {
    OpenConnected(1);
    OpenDialog();
    Pick(0, "Record1");
    Pick(0, "NONE");
    EXPECT_EQ(RecordName(0), "0");
}

TEST_F(Assignment, Takes_any_text_that_holds_Record) {
    OpenConnected(1);
    OpenDialog();
    for (const char* name : {"My Record of Monday", "Records", "xRecord", " Record", "a/Record", "Record?"}) {
        user.Paste("DB_SET", "Combo1(0)", name);
        EXPECT_EQ(RecordName(0), name);
        EXPECT_EQ(Shown(0), name);
    }
}

TEST_F(Assignment, Takes_none_for_a_text_without_Record) {
    OpenConnected(1);
    OpenDialog();
    for (const char* name : {"record1", "RECORD1", "Recor", "Re cord", "0", kPrompt}) {
        RecordName(0) = "Record1";
        user.Paste("DB_SET", "Combo1(0)", name);
        EXPECT_EQ(RecordName(0), "0") << name;
    }
}

TEST_F(Assignment, Applies_the_rule_at_every_keystroke) {
    OpenConnected(1);
    OpenDialog();
    Field(0)->selectAll();
    Texts names;
    for (const char key : std::string("Record12")) {
        user.TypeOn("DB_SET", "Combo1(0)", std::string(1, key));
        names.push_back(RecordName(0));
    }
    EXPECT_EQ(names, (Texts{"0", "0", "0", "0", "0", "Record", "Record1", "Record12"}));
}

TEST_F(Assignment, Leaves_a_typed_name_as_it_was_typed) {
    OpenConnected(1);
    OpenDialog();
    user.Type("DB_SET", "Combo1(0)", "Record1x");
    user.Press("DB_SET", "Combo1(0)", Qt::Key_Backspace);
    user.Press("DB_SET", "Combo1(0)", Qt::Key_Return);
    user.Press("DB_SET", "Combo1(0)", Qt::Key_Tab);
    EXPECT_EQ(Shown(0), "Record1");
    user.Type("DB_SET", "Combo1(0)", "myRecord");
    user.Press("DB_SET", "Combo1(0)", Qt::Key_Tab);
    EXPECT_EQ(Shown(0), "myRecord");
    EXPECT_EQ(RecordName(0), "myRecord");
}

TEST_F(Assignment, Refuses_the_record_of_another_device) {
    OpenConnected(3);
    OpenDialog();
    Pick(0, "Record1");
    for (int dev = 1; dev < 3; ++dev) Pick(dev, "Record1");
    EXPECT_EQ(user.Messages(), Texts(2, kRefusal));
    EXPECT_EQ(RecordName(0), "Record1");
    EXPECT_EQ(RecordName(1), "0");
    EXPECT_EQ(RecordName(2), "0");
}

TEST_F(Assignment, Refuses_the_record_of_a_later_device_once) {
    OpenConnected(3);
    OpenDialog();
    Pick(2, "Record4");
    Pick(0, "Record4");
    EXPECT_EQ(user.Messages(), Texts{kRefusal});
    EXPECT_EQ(RecordName(0), "0");
    EXPECT_EQ(RecordName(2), "Record4");
}

TEST_F(Assignment, Takes_the_record_away_from_a_device_that_is_refused_another) {
    OpenConnected(2);
    OpenDialog();
    Pick(0, "Record1");
    Pick(1, "Record2");
    Pick(1, "Record1");
    EXPECT_EQ(RecordName(1), "0");
}

TEST_F(Assignment, Holds_the_refused_name_while_the_message_is_up) {
    OpenConnected(2);
    OpenDialog();
    Pick(0, "Record1");
    std::string meanwhile;
    user.WhenMessage(kRefusal, [&] { meanwhile = RecordName(1); });
    Pick(1, "Record1");
    EXPECT_EQ(meanwhile, "Record1");
}

TEST_F(Assignment, Refuses_a_record_on_the_way_to_a_longer_name) {
    OpenConnected(2);
    OpenDialog();
    Pick(0, "Record1");
    user.Type("DB_SET", "Combo1(1)", "Record10");
    EXPECT_EQ(user.Messages(), Texts{kRefusal});
    EXPECT_EQ(RecordName(1), "Record10");
}

TEST_F(Assignment, Takes_the_record_that_the_device_has_already) {
    OpenConnected(2);
    OpenDialog();
    Pick(0, "Record1");
    Pick(0, "Record1");
    EXPECT_EQ(RecordName(0), "Record1");
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(Assignment, Lets_two_devices_have_none) {
    OpenConnected(2);
    OpenDialog();
    Pick(0, "NONE");
    Pick(1, "NONE");
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(Assignment, Asks_only_the_devices_that_are_connected) {
    OpenConnected(2);
    RecordName(2) = "Record1";
    OpenDialog();
    Pick(0, "Record1");
    EXPECT_EQ(RecordName(0), "Record1");
}

TEST_F(Assignment, Goes_on_showing_a_refused_choice_until_it_is_opened_anew) {
    OpenConnected(2);
    OpenDialog();
    Pick(0, "Record1");
    Pick(1, "Record1");
    EXPECT_EQ(Shown(1), "Record1");
    user.Click("DB_SET", "OK");
    OpenDialog();
    EXPECT_EQ(Shown(0), "Record1");
    EXPECT_EQ(Shown(1), kPrompt);
}

// ---- Its life

TEST_F(Assignment, Is_unloaded_by_OK_and_the_names_stand) {
    OpenConnected(1);
    OpenDialog();
    Pick(0, "Record3");
    user.Click("DB_SET", "OK");
    EXPECT_FALSE(IsLoaded<DB_SET>());
    EXPECT_EQ(RecordName(0), "Record3");
}

TEST_F(Assignment, Is_unloaded_by_its_close_box_and_the_names_stand) {
    OpenConnected(1);
    OpenDialog();
    Pick(0, "Record3");
    user.Close("DB_SET");
    EXPECT_FALSE(IsLoaded<DB_SET>());
    EXPECT_EQ(RecordName(0), "Record3");
}

TEST_F(Assignment, Shows_what_is_assigned_and_changes_nothing_by_opening) {
    OpenConnected(4);
    RecordName(0) = "Record7";
    RecordName(1) = "a Record of my own";
    RecordName(2) = "Record7";
    OpenDialog();
    EXPECT_EQ(Shown(0), "Record7");
    EXPECT_EQ(Shown(1), "a Record of my own");
    EXPECT_EQ(Shown(2), "Record7");
    EXPECT_EQ(Shown(3), kPrompt);
    EXPECT_EQ(RecordName(0), "Record7");
    EXPECT_EQ(RecordName(1), "a Record of my own");
    EXPECT_EQ(RecordName(2), "Record7");
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(Assignment, Marks_no_text_when_it_becomes_active) {
    OpenConnected(2);
    OpenDialog();
    for (int dev = 0; dev < 2; ++dev) EXPECT_FALSE(Field(dev)->hasSelectedText()) << dev;
    for (int dev = 0; dev < 2; ++dev) Field(dev)->selectAll();
    The<DB_SET>().Form_Activate();
    for (int dev = 0; dev < 2; ++dev) {
        EXPECT_FALSE(Field(dev)->hasSelectedText()) << dev;
        EXPECT_EQ(Field(dev)->cursorPosition(), 0) << dev;
    }
}

TEST_F(Assignment, Marks_no_text_when_it_becomes_active_again) {
    OpenConnected(4);
    OpenDialog();
    for (int dev = 0; dev < 4; ++dev) {
        // Only the field with the focus keeps its mark in Qt's own hands.
        Field(dev)->setFocus();
        Field(dev)->selectAll();
        user.Menu("About");
        EXPECT_TRUE(Field(dev)->hasSelectedText()) << dev;
        user.Click("about_form", "Command1");
        EXPECT_FALSE(Field(dev)->hasSelectedText()) << dev;
        EXPECT_EQ(Field(dev)->cursorPosition(), 0) << dev;
    }
}

TEST_F(Assignment, Is_off_in_a_run_as_far_as_its_button_goes) {
    OpenConnected(1);
    bool in_run = true;
    AfterScans(1, [&] { in_run = user.Enabled("Form1", "Command10"); });
    RunScans(2);
    EXPECT_FALSE(in_run);
    EXPECT_TRUE(user.Enabled("Form1", "Command10"));
}

TEST_F(Assignment, In_a_run_that_began_without_a_record_waits_for_the_next_start) {
    OpenConnected(1);
    OpenDialog();
    AfterScans(2, [&] { Pick(0, "Record1"); });
    RunScans(5);
    EXPECT_EQ(ScanCount(0), 5);
    EXPECT_EQ(RecordFiles(), Texts{});
    RunScans(2);
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 2U);
}

TEST_F(Assignment, In_a_run_that_began_without_a_record_leaves_the_rows_of_an_earlier_run_alone) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(2);
    OpenDialog();
    Pick(0, "NONE");
    AfterScans(2, [&] { Pick(0, "Record1"); });
    RunScans(4);
    EXPECT_EQ(ScanCount(0), 4);
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 2U);
}

TEST_F(Assignment, Outlives_a_run) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(1);
    EXPECT_EQ(RecordName(0), "Record1");
}

}  // namespace
}  // namespace vantrel
