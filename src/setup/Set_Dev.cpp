#include "windows/Set_Dev.h"

#include "platform/toolkit/desktop.h"
#include "setup/plan_readback.h"
#include "setup/plan_writing.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/DCI_ACI_SET.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

constexpr float kLetterWidth = 525;  // twips: the narrow list of the thermocouple letters

}  // namespace

Set_Dev::Set_Dev() : Window("Set_Dev", "Set Device", {7335, 5655}) {
    Grid_Fun.SetScrollBars(false);  // on a card of 10 channels two of its columns lie beyond its edge
    Grid_Fun.SetTabStop(false);
    // As the eye reads: a function, the sensor type beside it, the next channel.
    std::vector<Control*> order;
    for (const Integer i : Each(ch.Size())) order.insert(order.end(), {&ch(i), &temp(i)});
    SetTabOrder(order);
    Combo1_dev.OnChange = Combo1_dev.OnClick = [this] { Combo1_dev_Change(); };
    for (const Integer i : Each(ch.Size())) {
        ch(i).OnChange = ch(i).OnClick = [this, i] { ch_Change(i); };
        temp(i).OnChange = temp(i).OnClick = [this, i] { temp_Change(i); };
    }
    Combo_Scan_model.OnChange = Combo_Scan_model.OnClick = [this] { Combo_Scan_model_Change(); };
    Timer_Set.OnChange = [this] { Timer_Set_Change(); };
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
}

void Set_Dev::Form_Load() {
    const BusyCursor busy;
    Plan_Busy = true;
    Combo_Scan_model.Clear();
    Combo_Scan_model.AddItem("SCAN");
    Combo_Scan_model.AddItem("STEP");
    Combo_Scan_model.SetListIndex(0);
    Combo1_dev.Clear();
    ComboBox& devices = The<Form1>().Combo1;
    for (const Integer i : Each(devices.ListCount())) Combo1_dev.AddItem(devices.List(i));
    Plan_Busy = false;
    for (const Integer device : Each(DeviceCount))
        Mode_Set(SlotOf(device)) = Contains(ScanModeWord(SlotOf(device)), "STEP") ? "STEP" : "SCAN";
    if (Combo1_dev.ListCount() > 0) {
        Plan_Busy = true;
        Combo1_dev.SetListIndex(0);
        Combo1_dev_Change();  // Kept: K-three-reads
        for (const Integer device : Each(DeviceCount)) ReadDevicePlan(device);
        Fill_Combos();
        Plan_Busy = false;
    }
}

void Set_Dev::Form_Activate() { Show_ACI_DCI = true; }

void Set_Dev::Form_Unload() { Show_ACI_DCI = false; }

void Set_Dev::Combo1_dev_Change() {
    const BusyCursor busy;
    Show_ACI_DCI = false;
    for (const Integer device : Each(DeviceCount)) ReadDevicePlan(device);  // Kept: K-unsent
    Dev_Sel = Combo1_dev.ListIndex();
    if (Dev_Sel == -1) return;  // Kept: K-typed-device
    Grid_Cols = ChannelCount(Dev_Sel) == 10 ? 2 : 4;
    for (const Integer i : Each(ch.Size())) {
        ch(i).SetWidth(CellWidth());
        ch(i).SetLeft(Grid_Fun.Left() + CellWidth() * (i < 10 ? 1.0F : 3.0F));
    }
    Set_Grid();
    Reset_Combos();
    Fill_Combos();
    Show_ACI_DCI = true;
}

float Set_Dev::CellWidth() const { return Grid_Fun.Width() / static_cast<float>(Grid_Cols); }

void Set_Dev::Set_Grid() {
    Grid_Fun.Clear();
    for (int i = 10; i < ch.Size(); ++i) ch(i).SetVisible(ChannelCount(Dev_Sel) != 10);
    for (const Integer i : Each(ChannelCount(Dev_Sel))) {
        const int label = i < 10 ? 0 : 2;
        Grid_Fun.SetColWidth(label, ch(0).Width());
        Grid_Fun.SetColWidth(label + 1, ch(0).Width());
        Grid_Fun.SetRowHeight(i % 10, ch(0).Height());
        Grid_Fun.SetRow(i % 10);
        Grid_Fun.SetCol(label);
        Grid_Fun.SetCellBackColor(ButtonFace());
        Grid_Fun.SetText("CH " + Str(i + 1));
    }
    Grid_Fun.SetHeight(10 * ch(0).Height() + 10);
}

void Set_Dev::Reset_Combos() {
    for (const Integer i : Each(ch.Size())) {
        const float top = Grid_Fun.Top() + static_cast<float>(i % 10) * Grid_Fun.RowHeight(0);
        ch(i).Clear();
        temp(i).Clear();
        ch(i).SetTop(top);
        temp(i).SetTop(top);
        temp(i).SetVisible(false);
    }
}

void Set_Dev::Fill_Combos() {
    const int channels = ChannelCount(Dev_Sel);
    const int half = channels / 2;
    for (const Integer j : Each(channels)) ch(j).Clear();
    for (const Integer name : Each(kFunctionNames)) {
        for (const Integer j : Each(channels)) {
            const bool slave = j + 1 > half;
            if (!(slave && TakesFourWires(FunctionNames(name)))) ch(j).AddItem(FunctionNames(name));
        }
    }
    for (const Integer j : Each(channels)) ch(j).SetText(Fun_Set(SlotOf(Dev_Sel), j));
    Timer_Set.SetText(Timer_Text(Dev_Sel));
    Combo_Scan_model.SetText(Mode_Set(SlotOf(Dev_Sel)));
}

void Set_Dev::ch_Change(Integer Index) {
    ShowSensorCombo(Index);
    PairChannels();
    const std::string function = ch(Index).Text();
    Fun_Set(SlotOf(Dev_Sel), Index) = function;  // Kept: K-typed-plan
    if (Plan_Busy) return;                       // Kept: K-late-tips
    if (IsCurrent(function)) {
        ShuntDevice = Dev_Sel;
        ShuntChannel = Index;
        if (Show_ACI_DCI) The<DCI_ACI_SET>().ShowModal();  // Kept: K-shunt
        // Kept: K-row-or-device
        ch(Index).SetToolTipText("R=" + Str(ShuntOhm(SlotOf(Dev_Sel), Index)) +
                                 ", I= " + Str(ShuntOffset(SlotOf(Dev_Sel), Index)));
    } else {
        ch(Index).SetToolTipText("");
    }
}

void Set_Dev::ShowSensorCombo(Integer Index) {
    ComboBox& function = ch(Index);
    ComboBox& sensor = temp(Index);
    const Sensor kind = SensorOfName(function.Text());
    if (kind == Sensor::kRtd) {
        sensor.Clear();
        sensor.SetVisible(true);
        function.SetWidth(Grid_Fun.Width() / static_cast<float>(Grid_Cols * 2));
        sensor.SetWidth(function.Width());
        sensor.SetLeft(function.Left() + function.Width());
        OfferSensorTypes(Index, SensorTypes(kind));
    } else if (kind == Sensor::kThermocouple) {
        sensor.Clear();
        sensor.SetVisible(true);
        function.SetWidth(CellWidth() - kLetterWidth);
        sensor.SetWidth(kLetterWidth);
        sensor.SetLeft(function.Left() + CellWidth() - kLetterWidth - 1);
        OfferSensorTypes(Index, SensorTypes(kind));
    } else {
        sensor.SetVisible(false);
        function.SetWidth(CellWidth());
    }
}

void Set_Dev::OfferSensorTypes(Integer Index, const std::vector<std::string>& names) {
    bool known = false;
    for (const std::string& name : names) {
        temp(Index).AddItem(name);
        if (Temp_Set(Index) == name) known = true;  // Kept: K-sensor-line-feed
    }
    if (!known) Temp_Set(Index) = "";
    // The combo's own change handling stores the first entry.
    if (Temp_Set(Index).empty()) temp(Index).SetText(temp(Index).List(0));
    temp(Index).SetText(Temp_Set(Index));
}

void Set_Dev::PairChannels() {
    const int half = ChannelCount(Dev_Sel) / 2;
    for (const Integer i : Each(half)) {
        ch(i).SetEnabled(true);
        if (TakesFourWires(ch(i).Text())) {
            ch(i + half).SetEnabled(false);
            ch(i + half).SetText(kOff);  // Kept: K-slave-none
        } else {
            ch(i + half).SetEnabled(true);
        }
    }
}

void Set_Dev::temp_Change(Integer Index) { Temp_Set(Index) = temp(Index).Text(); }

void Set_Dev::Timer_Set_Change() { Timer_Text(Dev_Sel) = Timer_Set.Text(); }

void Set_Dev::Combo_Scan_model_Change() { Mode_Set(SlotOf(Dev_Sel)) = Combo_Scan_model.Text(); }

void Set_Dev::Command1_Click() {
    const BusyCursor busy;
    WriteDevicePlans();
}

void Set_Dev::Command2_Click() { Unload<Set_Dev>(); }

}  // namespace vantrel
