// The scanner card dialog: function and sensor type of each channel, scan mode and timer of each instrument.
#pragma once

#include "platform/numbers.h"
#include "platform/tables.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/font.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct Set_Dev : Window {
    Set_Dev();

    SmallLetters letters{*this};  // "4W,TEMP" has a quarter of the table beside its RTD type
    Label Label1{*this, "Label1", {120, 120, 855, 255}, "Device:"};
    ComboBox Combo1_dev{*this, "Combo1_dev", {1080, 120, 6015, 315}};
    MSFlexGrid Grid_Fun{*this, "Grid_Fun", {240, 600, 6855, 3255}, 10, 4, 0, 0};
    ControlArray<ComboBox, 20> ch{*this, "ch", {240, 600, 1713, 315}};
    ControlArray<ComboBox, 20> temp{*this, "temp", {240, 600, 525, 315}};
    Label Label2{*this, "Label2", {360, 4080, 1095, 255}, "Scan Mode"};
    ComboBox Combo_Scan_model{*this, "Combo_Scan_model", {1560, 3960, 2535, 315}, "SCAN"};
    Label Label3{*this, "Label3", {360, 4560, 1095, 255}, "Scan Timer"};
    TextBox Timer_Set{*this, "Timer_Set", {1560, 4560, 2535, 375}, "0.5"};
    Label Label4{*this, "Label4", {4200, 4680, 735, 255}, "second"};
    CommandButton Command1{*this, "Command1", {240, 5160, 3375, 375}, "SET"};
    CommandButton Command2{*this, "Command2", {3840, 5160, 3255, 375}, "EXIT"};

    bool Show_ACI_DCI = false;  ///< the shunt dialog may open: the dialog is up and steady
    bool Plan_Busy = false;     ///< load or SET in progress: neither tool tips nor the shunt dialog
    Integer Dev_Sel = 0;        ///< current device; -1 when nothing is selected
    Integer Grid_Cols = 4;      ///< grid columns in use: 2 for a card of 10 channels, else 4

    ChannelTable<std::string> Fun_Set;  ///< working functions, by discovery row and channel
    Table<std::string, 21> Temp_Set;    ///< working sensor types, by channel: shared by all devices
    Table<std::string, 5> Mode_Set;     ///< working scan modes, by discovery row
    Table<std::string, 5> Timer_Text;   ///< working scan timers, by device

    // Defined in setup/Set_Dev.cpp:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void Fill_Combos();
    void Combo1_dev_Change();
    void ch_Change(Integer Index);
    void temp_Change(Integer Index);
    void Timer_Set_Change();
    void Combo_Scan_model_Change();
    void Command1_Click();  ///< SET
    void Command2_Click();  ///< EXIT

private:
    void Set_Grid();
    void Reset_Combos();
    void ShowSensorCombo(Integer Index);
    void OfferSensorTypes(Integer Index, const std::vector<std::string>& names);
    void PairChannels();
    /// Width of one grid column in use, twips.
    float CellWidth() const;
};

}  // namespace vantrel
