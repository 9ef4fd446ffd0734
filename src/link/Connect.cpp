#include "windows/Connect.h"

#include "platform/toolkit/desktop.h"
#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "windows/Form1.h"
#include "windows/Form3.h"
#include "windows/Set_Dev.h"

#include <algorithm>

namespace vantrel {

namespace {

constexpr std::uint32_t kTimeout = 5000;  // ms

// The sessions stand by place in the search here: no device exists yet.
void Write(int place, const std::string& bytes, std::uint32_t count) {
    VisaStatus = viWrite(InstrSession(place), bytes, count, &RetCount);
}

/// Reads a reply and returns the bytes that arrived. The buffer is not cleared before: behind them stands what is left
/// of earlier replies.
std::string Read(int place) {
    std::string reply;
    VisaStatus = viRead(InstrSession(place), &reply, kReplyBytes, &RetCount);
    ReplyBuffer = reply + ReplyBuffer.Text().substr(reply.size());  // Kept: K-search-buffer
    return Left(ReplyBuffer, RetCount);
}

/// The text between the first comma and the next one; without either, error 5.
std::string SecondField(const std::string& identity) {
    const auto first = identity.find(',');
    const auto second = first == std::string::npos ? first : identity.find(',', first + 1);
    if (second == std::string::npos) throw RunTimeError(kInvalidCall);  // Kept: K-identity
    return identity.substr(first + 1, second - first - 1);
}

}  // namespace

Connect::Connect() : Window("Connect", "Connect to instrument", {6615, 3480}) {
    for (const Integer i : Each(Check1.Size())) Check1(i).SetVisible(false);
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
}

void Connect::Form_Load() {
    DoEvents();
    MSFlexGrid1.SetColWidth(0, 700);
    MSFlexGrid1.SetColWidth(1, 2000);
    MSFlexGrid1.SetColWidth(2, MSFlexGrid1.Width() - 2700);
    MSFlexGrid1.SetColAlignmentLeft(1);
    MSFlexGrid1.SetColAlignmentLeft(2);
    MSFlexGrid1.SetTextMatrix(0, 0, " ");
    MSFlexGrid1.SetTextMatrix(0, 1, "Model");
    MSFlexGrid1.SetTextMatrix(0, 2, "Information");
    Command1_Click();
    if (DeviceCount > 0) Check1(0).SetFocus();
}

// Kept: K-no-cancel
void Connect::Form_CloseBox() { Command2_Click(); }

void Connect::Command1_Click() {
    const BusyCursor busy;
    VisaStatus = viClose(FindList);  // Kept: K-six-closes
    VisaStatus = viClose(DefaultRM);
    for (const Integer i : Each(kDevices)) VisaStatus = viClose(InstrSession(i));
    MSFlexGrid1.SetRows(1);
    Find_Instruments();
    MSFlexGrid1.SetToolTipText(DeviceCount > 0 ? ""
                                               : "No instrument with a scanner card was found.\n"
                                                 "Check power and cable, then press Find.");
    Place_Check_Boxes();
    for (const Integer i : Each(DeviceCount)) {
        MSFlexGrid1.SetTextMatrix(i + 1, 2, DeviceSerial(i));
        MSFlexGrid1.SetTextMatrix(i + 1, 1, DeviceModel(i));
        Check1(i).SetValue(0);
    }
    ComboBox& chosen = The<Form1>().Combo1;
    for (const Integer i : Each(DeviceCount)) {
        for (const Integer entry : Each(chosen.ListCount()))
            if (chosen.List(entry) == DeviceSerial(i)) Check1(i).SetValue(1);  // Kept: K-twins
    }
    if (DeviceCount != kDevices) {
        for (int i = DeviceCount; i <= kDevices; ++i) Check1(i).SetVisible(false);
    }
}

void Connect::Find_Instruments() {
    DeviceCount = 0;
    VisaStatus = viOpenDefaultRM(&DefaultRM);
    if (VisaStatus < 0) return;
    std::string descriptor;
    VisaStatus = viFindRsrc(DefaultRM, "(USB|GPIB)?*INSTR", &FindList, &FindCount, &descriptor);
    InstrDesc = descriptor;
    if (VisaStatus < 0) {
        VisaStatus = viClose(DefaultRM);
        return;
    }
    if (FindCount == 0) return;
    for (int i = 0; i < static_cast<int>(FindCount); ++i) {
        VisaStatus = viOpen(DefaultRM, Trim(InstrDesc), 0, 0, &InstrSession(i));
        VisaStatus = viSetAttribute(InstrSession(i), kViAttrTmoValue, kTimeout);
        Write(i, "rout:state?\n", 12);
        double card = Val(Read(i));
        if (card == 1 || card == 2 || card == 3) {
            if (card == 3) card = 1;  // Kept: K-card-3
            FoundSession(DeviceCount) = i;
            ChannelCount(DeviceCount) = 10 * card;  // Kept: K-row-or-device
            Write(i, "cal:sec:serial?\n", 16);
            DeviceSerial(DeviceCount) = WithoutLineFeeds(Read(i));
            // The count leaves the line feed out: the instrument gets exactly these five bytes.
            // Kept: K-idn
            Write(i, "*IDN?\n", 5);
            const std::string identity = Read(i);
            if (RetCount != 0) {
                DeviceModel(DeviceCount) = identity;
                DeviceModel(DeviceCount) = SecondField(identity);
                ++DeviceCount;
            }
        }
        VisaStatus = viFindNext(FindList, &descriptor);  // Kept: K-last-status
        InstrDesc = descriptor;
    }
    if (DeviceCount == 0) return;
    // Kept: K-places
    DeviceCount = std::min<int>(DeviceCount, kDevices);
    MSFlexGrid1.SetRows(DeviceCount + 1);
}

void Connect::Place_Check_Boxes() {
    for (const Integer row : Each(DeviceCount + 1)) MSFlexGrid1.SetRowHeight(row, Check1(0).Height());
    for (const Integer i : Each(DeviceCount)) {
        CheckBox& box = Check1(i);
        box.SetVisible(true);
        box.SetTop(MSFlexGrid1.Top() + MSFlexGrid1.RowHeight(0) * static_cast<float>(i + 1));
        box.SetLeft(MSFlexGrid1.Left() + box.Width());
        box.SetBackColor(RGB(255, 255, 255));
    }
}

void Connect::Command2_Click() {
    // The order counts: the two dialogs load here, and find an empty device list.
    The<Form1>().Combo1.Clear();
    The<Form3>().Combo_dev.Clear();
    The<Set_Dev>().Combo1_dev.Clear();
    Integer k = 0;
    for (int i = 0; i < static_cast<int>(FindCount); ++i) {
        if (Check1(i).Value() != 1) continue;  // Kept: K-hidden-tick, K-places
        The<Form1>().Combo1.AddItem(DeviceSerial(i));
        The<Form3>().Combo_dev.AddItem(DeviceSerial(i));
        The<Set_Dev>().Combo1_dev.AddItem(DeviceSerial(i));
        SlotOf(k) = i;
        ++k;
    }
    DeviceCount = k;
    if (k == 0) ResetTabs();
    Hide();
}

void Connect::ResetTabs() {
    Form1& main = The<Form1>();
    for (const Integer i : Each(kDevices)) {
        main.SSTab1.SetTabVisible(i, true);
        main.SSTab1.SetTab(i);
        main.SSTab1.SetTabCaption(i, "Deviec " + Str(i));  // Kept: K-texts
        main.MSFlexGrid1(i).Clear();
        main.MSFlexGrid1(i).SetRows(4);
        main.MSFlexGrid1(i).SetCols(10);
    }
    main.SSTab1.SetTab(0);
}

}  // namespace vantrel
