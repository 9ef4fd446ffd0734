#include "windows/Form3.h"

#include "platform/toolkit/dialogs.h"
#include "records/record_assignment.h"
#include "state/shared.h"
#include "windows/Form1.h"

namespace vantrel {

Form3::Form3() : Window("Form3", "Set Draw", {4785, 3360}) {
    Combo_db.SetTabStop(false);
    Combo_dev.OnChange = Combo_dev.OnClick = [this] { Combo_dev_Change(); };
    // Picks only: a text that is still being typed is not a channel yet.
    // Kept: K-picked-only
    Combo_chan.OnClick = [this] { Combo_chan_Click(); };
    division_text.OnChange = [this] { division_text_Change(); };
    offset_text.OnChange = [this] { offset_text_Change(); };
    Command1.OnClick = [this] { Command1_Click(); };
    Command3.OnClick = [this] { Command3_Click(); };
    Combo_db.OnClick = [this] { Combo_db_Click(); };
}

void Form3::Form_Load() {
    Combo_dev.Clear();
    ComboBox& devices = The<Form1>().Combo1;
    for (const Integer i : Each(devices.ListCount())) Combo_dev.AddItem(devices.List(i));
    if (Combo_dev.ListCount() > 0) {
        Combo_dev.SetListIndex(0);
        Combo_dev_Change();
    }
}

// Kept: K-cleaned-twice
void Form3::Form_Unload() { Command1_Click(); }

void Form3::Combo_dev_Change() {
    Dev_Index = Combo_dev.ListIndex();
    if (Dev_Index == -1) return;
    Fill_Record_List();
    Fill_Channel_List();
    Combo_db.SetText(RecordPrompt(Dev_Index));
    Combo_chan_Click();
}

void Form3::Fill_Channel_List() {
    Combo_chan.Clear();
    for (const Integer i : Each(ChannelCount(Dev_Index))) Combo_chan.AddItem("Ch " + Str(i + 1));  // Kept: K-texts
    Combo_chan.SetListIndex(0);
}

void Form3::Fill_Record_List() {
    Combo_db.Clear();
    OfferRecords(Combo_db);
}

void Form3::Combo_chan_Click() {
    const int ch = Combo_chan.ListIndex();
    color_text.SetBackColor(ChannelColor(Dev_Index, ch));
    division_text.SetText(ChannelDivision(Dev_Index, ch));
    offset_text.SetText(ChannelOffset(Dev_Index, ch));
}

// Kept: K-no-device
void Form3::division_text_Change() { ChannelDivision(Dev_Index, Combo_chan.ListIndex()) = division_text.Text(); }

void Form3::offset_text_Change() { ChannelOffset(Dev_Index, Combo_chan.ListIndex()) = offset_text.Text(); }

void Form3::Command3_Click() {
    const Colour chosen = ShowColor(color_text.BackColor());
    color_text.SetBackColor(chosen);
    ChannelColor(Dev_Index, Combo_chan.ListIndex()) = chosen;
    Combo_chan_Click();
}

void Form3::Combo_db_Click() { AssignRecord(Dev_Index, Combo_db.Text(), DeviceCount); }

void Form3::Command1_Click() {
    for (const Integer device : Each(DeviceCount)) {
        for (const Integer ch : Each(ChannelCount(device))) {
            const double division = Val(ChannelDivision(device, ch));
            if (division <= 0) {
                ChannelDivision(device, ch) = "1";
                // Kept: K-shown-names
                MsgBox(Combo_dev.List(device) + " ,  " + Combo_chan.List(ch) +
                       "\n\nDivision : " + ChannelDivision(device, ch));
            } else {
                ChannelDivision(device, ch) = Str(division);
            }
            ChannelOffset(device, ch) = Str(Val(ChannelOffset(device, ch)));
        }
    }
    Unload<Form3>();
}

}  // namespace vantrel
