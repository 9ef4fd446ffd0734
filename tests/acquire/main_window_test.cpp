// The main window: how it starts, what it opens, how the program ends.
#include "platform/os/program.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"
#include "platform/toolkit/system_menu.h"
#include "platform/visa.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "support/desk.h"
#include "support/environment.h"
#include "support/errors.h"
#include "support/geometry.h"
#include "support/texts.h"
#include "windows/DATA_Table.h"
#include "windows/Form1.h"
#include "windows/Form3.h"
#include "windows/Set_Dev.h"
#include "windows/about_form.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTextBrowser>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <thread>
#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace vantrel {
namespace {

/// The names and captions of menu entries, in order.
Texts EntriesOf(const QWidget* menu) {
    Texts entries;
    for (const QAction* entry : menu->actions())
        entries.push_back(FromQt(entry->objectName()) +
                          (entry->isSeparator() ? "" : ": " + FromCaption(entry->text())));
    return entries;
}

/// A main window at which two instruments can be connected.
class MainWindow : public Desk {
protected:
    MainWindow() { Open(); }

    QMenuBar* MenuBar() const { return user.FindWindow("Form1")->findChild<QMenuBar*>(); }
    /// Leaves a text in the reading cells that only a rebuild takes away.
    static void MarkLiveTables() {
        for (int dev = 0; dev < 4; ++dev) The<Form1>().MSFlexGrid1(dev).SetTextMatrix(1, 0, "a reading");
    }
    std::string Reading(int dev) const {
        return user.CellText("Form1", "MSFlexGrid1(" + std::to_string(dev) + ")", 1, 0);
    }
    /// Which controls and menu entries of the main window are on, by their names.
    std::map<QString, bool> OnAndOff() const {
        std::map<QString, bool> on;
        for (const QWidget* control : user.FindWindow("Form1")->findChildren<QWidget*>())
            if (!control->objectName().isEmpty()) on[control->objectName()] = control->isEnabled();
        for (const QAction* entry : user.FindWindow("Form1")->findChildren<QAction*>())
            if (!entry->objectName().isEmpty()) on[entry->objectName()] = entry->isEnabled();
        EXPECT_TRUE(on.contains("Command3") && on.contains("set_sc"));
        return on;
    }
    /// Opens `window` by `open` and tells whether it came up modally.
    bool ComesUpModally(const std::string& window, const User::Action& open) {
        bool modal = false;
        user.WhenShown(window, [&] {
            modal = user.FindWindow(window)->isModal();
            user.Close(window);
        });
        open();
        return modal;
    }
};

// ---- The window as designed

TEST_F(MainWindow, Bears_its_caption) { EXPECT_EQ(user.Caption("Form1"), "VANTREL MAIN"); }

TEST_F(MainWindow, Has_its_controls_at_their_places) {
    ExpectDesign(The<Form1>(), {
                                   {"Command3", 480, 0, 1180, 420},
                                   {"Command4", 1680, 0, 400, 420},
                                   {"Command6", 2400, 0, 400, 420},
                                   {"Command8", 2880, 0, 400, 420},
                                   {"Command10", 3600, 0, 400, 420},
                                   {"Command7", 4080, 0, 400, 420},
                                   {"Command9", 4560, 0, 400, 420},
                                   {"Command5", 5280, 0, 400, 420},
                                   {"draw_pic", 480, 480, 13950, 7565},
                                   {"pic_start", 480, 8160, 255, 255},
                                   {"pic_end", 14040, 8160, 855, 375},
                                   {"Command1", 14520, 3960, 375, 550},
                                   {"Command2", 14520, 4680, 375, 550},
                                   {"Combo1", 3480, 8160, 5655, 315},
                               });
}

TEST_F(MainWindow, Has_its_menus_under_their_names) {
    const QMenuBar* bar = MenuBar();
    EXPECT_EQ(EntriesOf(bar), (Texts{"configuration: Configuration", "view: View", "help: Help", "exit_item: Exit"}));
    EXPECT_EQ(bar->actions().back()->menu(), nullptr);
    EXPECT_EQ(EntriesOf(bar->findChild<QMenu*>("configuration")),
              (Texts{"set_sc: Set Scanner Card ", "set_read: Set read", "set_draw: Set draw", "n1",
                     "Connected_to_Instrument: Connect to Instrument"}));
    EXPECT_EQ(EntriesOf(bar->findChild<QMenu*>("view")),
              (Texts{"Record_View: Record View", "Record_Draw: Record Draw"}));
    EXPECT_EQ(EntriesOf(bar->findChild<QMenu*>("help")), Texts{"About: About"});
}

TEST_F(MainWindow, Has_pictures_on_its_tool_bar_and_the_given_tool_tips) {
    const std::vector<std::pair<std::string, std::string>> tips = {
        {"Command3", "Start"}, {"Command4", "Stop"},    {"Command6", "See Value ."},
        {"Command8", ""},      {"Command10", ""},       {"Command7", "Open Record"},
        {"Command9", ""},      {"Command5", "Printer"},
    };
    for (const auto& [button, tip] : tips) {
        EXPECT_EQ(user.ToolTip("Form1", button), tip) << button;
        EXPECT_EQ(user.Text("Form1", button), "") << button;
        EXPECT_FALSE(qobject_cast<QPushButton*>(user.FindControl("Form1", button))->icon().isNull()) << button;
    }
}

TEST_F(MainWindow, Tells_a_screen_reader_what_every_button_is_for) {
    for (const auto& [button, name] :
         std::vector<std::pair<std::string, std::string>>{{"Command3", "Start"},
                                                          {"Command4", "Stop"},
                                                          {"Command6", "See Value ."},
                                                          {"Command8", "Set Draw"},
                                                          {"Command10", "Set Record"},
                                                          {"Command7", "Open Record"},
                                                          {"Command9", "Record Draw"},
                                                          {"Command5", "Printer"},
                                                          {"Command1", "Move the zero line up"},
                                                          {"Command2", "Move the zero line down"}})
        EXPECT_EQ(FromQt(user.FindControl("Form1", button)->accessibleName()), name);
}

TEST_F(MainWindow, Never_shows_the_backing_copies) {
    Connect({0});
    for (int dev = 0; dev < 4; ++dev) EXPECT_FALSE(user.Sees("Form1", "MSFlexGrid2(" + std::to_string(dev) + ")"));
}

// ---- The start

TEST_F(MainWindow, Starts_with_the_run_controls_off_and_all_others_on) {
    for (const char* off : {"Command3", "Command4", "Command6", "Command8", "Command10"})
        EXPECT_FALSE(user.Enabled("Form1", off)) << off;
    for (const char* on : {"Command5", "Command7", "Command9", "Command1", "Command2", "Combo1"})
        EXPECT_TRUE(user.Enabled("Form1", on)) << on;
    for (const char* off : {"set_sc", "set_read", "set_draw"}) EXPECT_FALSE(user.MenuEnabled(off)) << off;
    for (const char* on : {"Connected_to_Instrument", "Record_View", "Record_Draw", "About", "exit_item"})
        EXPECT_TRUE(user.MenuEnabled(on)) << on;
}

TEST_F(MainWindow, Starts_without_a_word_to_any_instrument_and_without_a_file) {
    EXPECT_EQ(wire->Calls(), Texts{});
    EXPECT_TRUE(std::filesystem::is_empty(folder / "db"));
    EXPECT_EQ(DeviceCount, 0);
}

using MainWindowLoad = Desk;

TEST_F(MainWindowLoad, Sets_the_defaults_of_four_devices_and_leaves_the_fifth) {
    for (const Integer dev : Each(5)) {
        ScanCount(dev) = 5;
        RecordName(dev) = "RecordX";
    }
    StopRequested = -1;
    BaseRow = 2;
    XZoom = YZoom = 3;
    Open();
    for (const Integer dev : Each(4)) {
        EXPECT_EQ(ScanCount(dev), 0);
        EXPECT_EQ(RecordName(dev), "0");
        EXPECT_EQ(ScanModeWord(dev), "SCAN");
        for (const Integer ch : Each(20)) {
            EXPECT_EQ(ChannelColor(dev, ch), ColorTable(ch));
            EXPECT_EQ(ScanRow(dev, ch), " ");
        }
    }
    EXPECT_EQ(ScanCount(4), 5);
    EXPECT_EQ(RecordName(4), "RecordX");
    EXPECT_EQ(StopRequested, 0);
    EXPECT_EQ(BaseRow, 8);
    EXPECT_EQ(XZoom, 1);
    EXPECT_EQ(YZoom, 1);
    EXPECT_EQ(FunctionNames(0), "DCV");
    EXPECT_EQ(TcoupleTypeNames(6), "T");
}

TEST_F(MainWindowLoad, Places_the_marker_in_the_middle_of_the_plot) {
    Open();
    EXPECT_EQ(The<Form1>().row_stat.Top(), 7565 / 2.0 + 480 + 285 / 2.0);
}

// ---- The system menu

TEST_F(MainWindow, Has_lost_the_last_five_entries_of_its_system_menu) {
    EXPECT_EQ(GetMenuItemCount(GetSystemMenu(The<Form1>(), false)), 2);
    const Qt::WindowFlags flags = user.FindWindow("Form1")->windowFlags();
    EXPECT_FALSE(flags & Qt::WindowCloseButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMaximizeButtonHint);
}

TEST_F(MainWindow, Refuses_a_close_request) {
    Connect({0});
    wire->ClearTranscript();
    StopRequested = 0;
    user.Close("Form1");
    EXPECT_TRUE(user.Sees("Form1"));
    EXPECT_EQ(wire->Calls(), Texts{});
    EXPECT_EQ(StopRequested, 0);
}

// ---- What it opens

TEST_F(MainWindow, Opens_the_set_up_dialogs_modally) {
    Connect({0});
    for (const auto& [entry, window] :
         std::vector<std::pair<std::string, std::string>>{{"set_sc", "Set_Dev"},
                                                          {"set_read", "Form4"},
                                                          {"set_draw", "Form3"},
                                                          {"Connected_to_Instrument", "Connect"}})
        EXPECT_TRUE(ComesUpModally(window, [&, name = entry] { user.Menu(name); })) << entry;
}

TEST_F(MainWindow, At_the_start_nothing_happens_behind_the_record_browser) {
    MarkLiveTables();
    const auto before = OnAndOff();
    EXPECT_TRUE(ComesUpModally("Record_View_Form", [&] { user.Menu("Record_View"); }));
    EXPECT_EQ(OnAndOff(), before);
    for (const char* entry : {"set_sc", "set_read", "set_draw"}) EXPECT_FALSE(user.MenuEnabled(entry)) << entry;
    for (int dev = 0; dev < 4; ++dev) EXPECT_EQ(Reading(dev), "a reading") << dev;
    EXPECT_EQ(DeviceCount, 0);
    EXPECT_EQ(wire->Calls(), Texts{});
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(MainWindow, Opens_the_draw_settings_of_all_channels_modally) {
    Connect({0});
    EXPECT_TRUE(ComesUpModally("Form2", [&] { user.Click("Form1", "Command8"); }));
}

TEST_F(MainWindow, Opens_See_Value_the_assignment_dialog_and_About_beside_itself) {
    Connect({0});
    user.Click("Form1", "Command6");
    user.Click("Form1", "Command10");
    user.Menu("About");
    for (const char* window : {"DATA_Table", "DB_SET", "about_form"}) {
        ASSERT_TRUE(user.Sees(window)) << window;
        EXPECT_FALSE(user.FindWindow(window)->isModal()) << window;
    }
}

TEST_F(MainWindow, Rebuilds_the_live_tables_of_all_devices_behind_the_dialogs_that_change_them) {
    Connect({0, 1});
    const std::vector<std::pair<std::string, User::Action>> ways = {
        {"Set_Dev", [&] { user.Menu("set_sc"); }},
        {"Form3", [&] { user.Menu("set_draw"); }},
        {"Form2", [&] { user.Click("Form1", "Command8"); }},
    };
    for (const auto& [window, open] : ways) {
        MarkLiveTables();
        user.WhenShown(window, [&, name = window] {
            EXPECT_EQ(Reading(0), "a reading") << name;
            user.Close(name);
        });
        open();
        EXPECT_EQ(Reading(0), "") << window;
        EXPECT_EQ(Reading(1), "") << window;
    }
}

TEST_F(MainWindow, Leaves_the_live_tables_alone_behind_the_read_schedule) {
    Connect({0});
    MarkLiveTables();
    Schedule([] {});
    EXPECT_EQ(Reading(0), "a reading");
}

TEST_F(MainWindow, Rebuilds_nothing_without_a_device) {
    MarkLiveTables();
    user.WhenShown("Form2", [&] { user.Close("Form2"); });
    The<Form1>().Command8_Click();
    EXPECT_EQ(Reading(0), "a reading");
}

// ---- The device list

TEST_F(MainWindow, Lists_the_ticked_devices_and_shows_one_tab_for_each) {
    Connect({0, 1});
    EXPECT_EQ(user.Entries("Form1", "Combo1"), (Texts{DeviceSerial(0), DeviceSerial(1)}));
    EXPECT_EQ(user.Text("Form1", "Combo1"), DeviceSerial(0));
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 1), DeviceSerial(1));
    for (const int page : {0, 1}) EXPECT_TRUE(user.SeesTab("Form1", "SSTab1", page));
    for (const int page : {2, 3}) EXPECT_FALSE(user.SeesTab("Form1", "SSTab1", page));
}

TEST_F(MainWindow, Tells_at_the_empty_device_list_why_Start_is_off_until_a_device_is_there) {
    EXPECT_EQ(user.ToolTip("Form1", "Combo1"),
              "No instrument is connected, so Start is off.\nChoose Configuration, Connect to Instrument.");
    Connect({0});
    EXPECT_EQ(user.ToolTip("Form1", "Combo1"), "");
    Connect({});
    EXPECT_TRUE(user.ToolTip("Form1", "Combo1").starts_with("No instrument is connected"));
}

TEST_F(MainWindow, Rebuilds_all_live_tables_and_turns_the_controls_on_at_every_way_of_choosing_a_device) {
    Connect({0, 1});
    const std::vector<std::pair<std::string, User::Action>> ways = {
        {"another entry", [&] { user.Pick("Form1", "Combo1", DeviceSerial(1)); }},
        {"the same entry", [&] { user.Pick("Form1", "Combo1", DeviceSerial(1)); }},
        {"a key", [&] { user.TypeOn("Form1", "Combo1", "x"); }},
        {"a text from the program", [] { The<Form1>().Combo1.SetText("a text"); }},
        {"an index from the program", [] { The<Form1>().Combo1.SetListIndex(0); }},
    };
    for (const auto& [way, choose] : ways) {
        MarkLiveTables();
        The<Form1>().Disable_All();
        choose();
        EXPECT_EQ(Reading(0), "") << way;
        EXPECT_EQ(Reading(1), "") << way;
        EXPECT_TRUE(user.Enabled("Form1", "Command3")) << way;
    }
}

TEST_F(MainWindow, Rebuilds_the_tables_before_it_turns_the_controls_on) {
    Connect({0});
    The<Form1>().Disable_All();
    SlotOf(0) = 5;  // a row beyond the plan
    EXPECT_EQ(ErrorOf([] { The<Form1>().Combo1.SetListIndex(0); }), kSubscript);
    EXPECT_FALSE(user.Enabled("Form1", "Command3"));
}

TEST_F(MainWindow, Leaves_the_tab_in_front_when_a_device_is_chosen) {
    Connect({0, 1});
    user.Pick("Form1", "Combo1", DeviceSerial(1));
    EXPECT_EQ(user.Index("Form1", "SSTab1"), 0);
}

TEST_F(MainWindow, Turns_no_control_on_for_a_text_in_the_empty_device_list) {
    user.TypeOn("Form1", "Combo1", "x");
    EXPECT_FALSE(user.Enabled("Form1", "Command3"));
}

TEST_F(MainWindow, Rebuilds_the_tables_and_turns_Start_on_in_a_run_when_a_device_is_chosen) {
    Connect({0, 1});
    std::string reading;
    bool start_before = true;
    bool start_after = false;
    bool exit_after = true;
    clock.At(static_cast<int>(clock.Elapsed()) + 3000, [&] {
        start_before = user.Enabled("Form1", "Command3");
        MarkLiveTables();
        user.Pick("Form1", "Combo1", DeviceSerial(1));
        reading = Reading(0);
        start_after = user.Enabled("Form1", "Command3");
        exit_after = user.MenuEnabled("exit_item");
    });
    RunAndStopAfter(5000);
    EXPECT_FALSE(start_before);
    EXPECT_EQ(reading, "");
    EXPECT_TRUE(start_after);
    EXPECT_FALSE(exit_after);
}

TEST_F(MainWindow, Offers_printing_only_while_no_run_is_on) {
    Connect({0});
    bool in_run = true;
    clock.At(static_cast<int>(clock.Elapsed()) + 3000, [&] { in_run = user.Enabled("Form1", "Command5"); });
    RunAndStopAfter(5000);
    EXPECT_FALSE(in_run);
    EXPECT_TRUE(user.Enabled("Form1", "Command5"));
}

// ---- The end

std::uint64_t TellClose(std::uint64_t object) {
    std::fprintf(stderr, "viClose(%d) stop %d status %x\n", static_cast<int>(object), static_cast<int>(StopRequested),
                 static_cast<unsigned>(VisaStatus));
    return 0xBFFF0000 + object;  // a failing status, which is kept and not tested
}

/// A VISA library that tells of each close on the error output.
void TellCloses() {
    VisaEntryPoints library;
    library.viClose = TellClose;
    UseVisa(library);
}

TEST_F(MainWindow, Exit_stops_closes_the_sessions_in_order_and_ends_the_process) {
    EXPECT_EXIT(
        {
            VisaStatus = 0;
            FindList = 7;
            DefaultRM = 8;
            FindCount = 3;
            for (int i = 0; i < 4; ++i) InstrSession(i) = static_cast<ViSession>(11 + i);
            TellCloses();
            user.Menu("exit_item");
        },
        testing::ExitedWithCode(0),
        "^viClose\\(7\\) stop -1 status 0\nviClose\\(8\\) stop -1 status bfff0007\n"
        "viClose\\(11\\) stop -1 status bfff0008\nviClose\\(12\\) stop -1 status bfff000b\n"
        "viClose\\(13\\) stop -1 status bfff000c\n$");
}

TEST_F(MainWindow, Exit_without_a_search_closes_two_zeros_and_no_device) {
    EXPECT_EXIT(
        {
            TellCloses();
            user.Menu("exit_item");
        },
        testing::ExitedWithCode(0), "^viClose\\(0\\) stop -1 status 0\nviClose\\(0\\) stop -1 status bfff0000\n$");
}

TEST_F(MainWindow, Exit_is_off_in_a_run_until_Stop) {
    Connect({0});
    bool before = true;
    bool after = false;
    clock.At(static_cast<int>(clock.Elapsed()) + 3000, [&] {
        before = user.MenuEnabled("exit_item");
        user.Click("Form1", "Command4");
        after = user.MenuEnabled("exit_item");
    });
    Run();
    EXPECT_FALSE(before);
    EXPECT_TRUE(after);
}

TEST_F(MainWindowLoad, Exit_behind_Stop_ends_the_process_inside_the_run_and_leaves_the_rows) {
    EXPECT_EXIT(
        {
            Open();
            Connect({0});
            Assign({"Record1"});
            clock.At(static_cast<int>(clock.Elapsed()) + 5000, [&] {
                user.Click("Form1", "Command4");
                user.Menu("exit_item");
            });
            Run();
            std::_Exit(3);  // the run came to its own end
        },
        testing::ExitedWithCode(0), "");
    folder.TakeFilesOfChild();
    EXPECT_GT(RowsOf(Record("Record1")).size(), 1U);
}

TEST_F(MainWindow, Unloading_it_stops_and_closes_the_sessions_but_does_not_end_the_process) {
    Connect({0});
    Texts closes = {"viClose(" + std::to_string(FindList) + ")", "viClose(" + std::to_string(DefaultRM) + ")"};
    for (int i = 0; i < static_cast<int>(FindCount); ++i)
        closes.push_back("viClose(" + std::to_string(InstrSession(i)) + ")");
    wire->ClearTranscript();
    EndSession();
    EXPECT_EQ(wire->Calls(), closes);
    EXPECT_EQ(StopRequested, -1);
    EXPECT_FALSE(user.Sees("Form1"));
}

TEST_F(MainWindow, Unloading_it_stops_before_it_closes_and_keeps_the_status_of_the_last_close) {
    EXPECT_EXIT(
        {
            FindList = 7;
            DefaultRM = 8;
            TellCloses();
            EndSession();
            std::_Exit(VisaStatus == static_cast<ViStatus>(0xBFFF0008) ? 3 : 4);
        },
        testing::ExitedWithCode(3), "^viClose\\(7\\) stop -1 status 0\nviClose\\(8\\) stop -1 status bfff0007\n$");
}

// ---- About

using About = Desk;

TEST_F(About, Tells_name_version_maker_and_address) {
    Open();
    user.Menu("About");
    EXPECT_EQ(user.Caption("about_form"), "About Orlane VANTREL");
    EXPECT_TRUE(user.Sees("about_form", "Picture1"));
    EXPECT_EQ(user.Text("about_form", "Label1"), "Orlane VANTREL");
    EXPECT_EQ(user.Text("about_form", "Label2"), "version " VANTREL_VERSION);
    EXPECT_NE(user.Text("about_form", "Label3"), "");
    EXPECT_TRUE(user.Text("about_form", "Label4").starts_with("https://"));
    EXPECT_EQ(user.Text("about_form", "Command1"), "EXIT");
}

TEST_F(About, Is_unloaded_by_EXIT) {
    Open();
    user.Menu("About");
    user.Click("about_form", "Command1");
    EXPECT_FALSE(IsLoaded<about_form>());
    EXPECT_TRUE(user.Sees("Form1"));
}

/// Has the system look for the command interpreter in a folder, and find none but what the test has put there.
void HideInterpreter(const TempFolder& folder) {
#ifdef _WIN32
    SetEnvironment("ComSpec", folder / "cmd.exe");
#else
    SetEnvironment("PATH", folder.Path());
#endif
}

TEST_F(About, Opens_its_address_through_the_command_interpreter) {
    const std::string told = folder / "told";
#ifdef _WIN32
    SetEnvironment("ComSpec", os::ProgramFolder() + "/other_program.exe");
    SetEnvironment("VANTREL_TOLD", told);
    Open();
    user.Menu("About");
    user.Click("about_form", "Label4");
    while (FileBytes(told).find('\n') == std::string::npos) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(FileBytes(told), "cmd.exe /c start " + user.Text("about_form", "Label4") + " minimised\n");
#else
    ASSERT_EQ(mkfifo(told.c_str(), 0600), 0);
    WriteFileBytes(folder / "cmd.exe", "#!/bin/sh\necho \"$@\" >" + told + "\n");
    std::filesystem::permissions(folder / "cmd.exe", std::filesystem::perms::owner_all);
    setenv("PATH", (folder.Path() + ":" + std::getenv("PATH")).c_str(), 1);
    Open();
    user.Menu("About");
    user.Click("about_form", "Label4");
    EXPECT_EQ(FileBytes(told), "/c start " + user.Text("about_form", "Label4") + "\n");
#endif
}

/// Clicks the address, which the default browser shows then.
void ExpectDefaultBrowser(User& user) {
    QTextBrowser browser;
    QDesktopServices::setUrlHandler("https", &browser, "setSource");
    user.Menu("About");
    user.Click("about_form", "Label4");
    EXPECT_EQ(FromQt(browser.source().toString()), user.Text("about_form", "Label4"));
}

TEST_F(About, Opens_its_address_in_the_default_browser_where_there_is_no_such_interpreter) {
    HideInterpreter(folder);
    Open();
    ExpectDefaultBrowser(user);
}

TEST_F(About, Opens_its_address_in_the_default_browser_where_the_interpreter_cannot_be_run) {
    WriteFileBytes(folder / "cmd.exe", "no program");
    HideInterpreter(folder);
    Open();
    ExpectDefaultBrowser(user);
}

#ifndef _WIN32  // the interpreter is not looked for in PATH
TEST_F(About, Opens_its_address_in_the_default_browser_where_no_folder_of_programs_is_named) {
    unsetenv("PATH");
    Open();
    ExpectDefaultBrowser(user);
}
#endif

TEST_F(About, Opens_its_address_by_keyboard_and_comes_up_with_EXIT_ready) {
    HideInterpreter(folder);
    Open();
    QTextBrowser browser;
    QDesktopServices::setUrlHandler("https", &browser, "setSource");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        browser.setSource({});
        user.Menu("About");
        const QWidget* about = user.FindWindow("about_form");
        EXPECT_EQ(about->focusWidget()->objectName(), "Command1");
        user.Press("about_form", Qt::Key_Tab);
        EXPECT_EQ(about->focusWidget()->objectName(), "Label4");
        user.Press("about_form", key);
        EXPECT_EQ(FromQt(browser.source().toString()), user.Text("about_form", "Label4"));
        user.Close("about_form");
    }
}

}  // namespace
}  // namespace vantrel
