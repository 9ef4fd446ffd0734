#include "windows/Form1.h"

#include "acquire/live_tables.h"
#include "platform/toolkit/desktop.h"
#include "platform/toolkit/events.h"
#include "platform/toolkit/system_menu.h"
#include "plot/trend_scale.h"
#include "setup/plan_readback.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/Connect.h"
#include "windows/DATA_Table.h"
#include "windows/DB_SET.h"
#include "windows/Form2.h"
#include "windows/Form3.h"
#include "windows/Form4.h"
#include "windows/Record_View_Draw.h"
#include "windows/Record_View_Form.h"
#include "windows/Set_Dev.h"
#include "windows/about_form.h"

#include <cmath>

namespace vantrel {

namespace {

/// Takes the close entry, and what stands above it, out of the window's system menu: the way out is exit_item.
// Kept: K-exit
void TrimSystemMenu(Window& window) {
    SystemMenu* menu = GetSystemMenu(window, false);
    if (menu == nullptr) return;
    const int entries = GetMenuItemCount(menu);
    if (entries == 0) return;
    for (int i = 1; i <= 5; ++i) RemoveMenu(menu, entries - i, kMfByPositionRemove);
    DrawMenuBar(window);
}

void SetTableSizes(MSFlexGrid& table) {
    for (const Integer j : Each(10)) {
        table.SetColWidth(j, std::floor(table.Width() / 10.1F));
        if (j < 4) table.SetRowHeight(j, std::floor(table.Height() / 4));
    }
}

/// The tool tip of Start is given; the list beside it can say why there is nothing to start.
void ExplainEmptyList(ComboBox& devices) {
    devices.SetToolTipText(devices.ListCount() > 0 ? ""
                                                   : "No instrument is connected, so Start is off.\n"
                                                     "Choose Configuration, Connect to Instrument.");
}

void CloseSessions() {
    VisaStatus = viClose(FindList);
    VisaStatus = viClose(DefaultRM);
    for (int i = 0; i < static_cast<int>(FindCount); ++i) VisaStatus = viClose(InstrSession(i));
}

}  // namespace

Form1::Form1() : Window("Form1", "VANTREL MAIN", {15015, 10260}, kMain) {
    for (const Integer device : Each(MSFlexGrid2.Size())) MSFlexGrid2(device).SetVisible(false);

    set_sc.OnClick = [this] { set_sc_Click(); };
    set_read.OnClick = [this] { set_read_Click(); };
    set_draw.OnClick = [this] { set_draw_Click(); };
    Connected_to_Instrument.OnClick = [this] { Connected_to_Instrument_Click(); };
    About.OnClick = [this] { About_Click(); };
    exit_item.OnClick = [this] { exit_item_Click(); };
    Record_View.OnClick = [this] { Record_View_Click(); };
    Record_Draw.OnClick = Command9.OnClick = [this] { Record_Draw_Click(); };

    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
    Command3.OnClick = [this] { Command3_Click(); };
    Command4.OnClick = [this] { Command4_Click(); };
    Command5.OnClick = [this] { Command5_Click(); };
    Command6.OnClick = [this] { Command6_Click(); };
    Command7.OnClick = [this] { Command7_Click(); };
    Command8.OnClick = [this] { Command8_Click(); };
    Command10.OnClick = [this] { Command10_Click(); };
    Combo1.OnChange = Combo1.OnClick = [this] { Combo1_Click(); };
}

void Form1::Form_Load() {
    BuildColorTable();
    TrimSystemMenu(*this);
    Disable_All();
    ExplainEmptyList(Combo1);
    ClearRunState();
    SetTrendDefaults();
    FillVocabulary();
    for (const Integer device : Each(MSFlexGrid1.Size())) SetTableSizes(MSFlexGrid1(device));
    SetDeviceDefaults();
    PlaceMarker();
}

void Form1::Form_Unload() {
    Command4_Click();
    CloseSessions();
}

void Form1::exit_item_Click() {
    Command4_Click();
    CloseSessions();
    End();  // Kept: K-exit-in-run
}

void Form1::set_sc_Click() {
    The<Set_Dev>().ShowModal();
    MakeLiveTables();
}

void Form1::set_read_Click() { The<Form4>().ShowModal(); }

void Form1::set_draw_Click() {
    // Connect may have left one loaded unshown: the settings are to be read as they stand now.
    Unload<Form3>();
    The<Form3>().ShowModal();
    MakeLiveTables();
}

void Form1::Command8_Click() {
    The<Form2>().ShowModal();
    MakeLiveTables();
}

void Form1::Command6_Click() { The<DATA_Table>().Show(); }

void Form1::Record_View_Click() {
    The<Record_View_Form>().Hide();  // where it stands open beside this window
    The<Record_View_Form>().ShowModal();
}

// Kept: K-two-ways-in
void Form1::Command7_Click() { The<Record_View_Form>().Show(); }

void Form1::Record_Draw_Click() { The<Record_View_Draw>().ShowModal(); }

void Form1::Command10_Click() { The<DB_SET>().Show(); }

void Form1::About_Click() { The<about_form>().Show(); }

void Form1::Combo1_Click() {
    // A text typed while there is no device: Start stays off.
    if (DeviceCount == 0) return;
    MakeLiveTables();
    Enable_All();  // Kept: K-choose-device
}

void Form1::Connected_to_Instrument_Click() {
    Unload<DATA_Table>();
    Unload<Set_Dev>();
    Unload<Form3>();
    Unload<Connect>();
    The<Connect>().ShowModal();
    if (!IsLoaded<Connect>()) return;  // the session ended over it: its sessions are closed, and nothing was chosen
    const BusyCursor busy;
    ExplainEmptyList(Combo1);
    if (DeviceCount == 0) {
        Disable_All();
    } else {
        Combo1.SetListIndex(0);
        The<Form3>().Combo_dev.SetListIndex(0);
        The<Set_Dev>().Combo1_dev.SetListIndex(0);  // Kept: K-three-reads
        for (const Integer device : Each(DeviceCount)) {
            SSTab1.SetTabVisible(device, true);
            SSTab1.SetTab(device);
            SSTab1.SetTabCaption(device, Combo1.List(device));
            RefreshChannelFunctions(device);
            Make_Live_Table(device);
        }
        for (int i = DeviceCount; i < kDevices; ++i) SSTab1.SetTabVisible(i, false);
        Enable_All();
        SSTab1.SetTab(0);
    }
    Unload<Set_Dev>();
}

}  // namespace vantrel
