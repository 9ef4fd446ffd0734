#include "windows/DB_SET.h"

#include "records/record_assignment.h"
#include "state/shared.h"
#include "windows/Form1.h"

namespace vantrel {

// Kept: K-texts
DB_SET::DB_SET() : Window("DB_SET", "", {5175, 2655}) {
    for (const Integer i : Each(Combo1.Size()))
        Combo1(i).OnChange = Combo1(i).OnClick = [this, i] { Combo1_Change(i); };
    OK.OnClick = [this] { OK_Click(); };
}

void DB_SET::Form_Load() {
    ComboBox& devices = The<Form1>().Combo1;
    MSFlexGrid1.SetRows(devices.ListCount() + 1);
    MSFlexGrid1.SetColWidth(0, MSFlexGrid1.Width() / 2);
    MSFlexGrid1.SetColWidth(1, MSFlexGrid1.Width() / 2);
    MSFlexGrid1.SetTextMatrix(0, 0, "Device");
    MSFlexGrid1.SetTextMatrix(0, 1, "DataBase");
    for (const Integer i : Each(devices.ListCount())) {
        MSFlexGrid1.SetTextMatrix(i + 1, 0, devices.List(i));
        MSFlexGrid1.SetRowHeight(i + 1, Combo1(i).Height());
        Combo1(i).SetVisible(true);
        FillDbCombo(i);
        Combo1(i).SetLeft(MSFlexGrid1.Left() + MSFlexGrid1.ColWidth(0));
        Combo1(i).SetTop(MSFlexGrid1.Top() + MSFlexGrid1.RowHeight(0) +
                         static_cast<float>(i) * MSFlexGrid1.RowHeight(1));
        Combo1(i).SetWidth(MSFlexGrid1.ColWidth(1));
    }
    for (int i = devices.ListCount(); i < Combo1.Size(); ++i) Combo1(i).SetVisible(false);
    if (devices.ListCount() > 0) Combo1(0).SetFocus();
}

void DB_SET::FillDbCombo(Integer device) {
    filling_ = true;
    Combo1(device).Clear();
    OfferRecords(Combo1(device));
    Combo1(device).SetText(RecordPrompt(device));
    filling_ = false;
}

void DB_SET::Form_Activate() {
    for (const Integer i : Each(Combo1.Size())) Combo1(i).Select(0, 0);
}

void DB_SET::Combo1_Change(Integer device) {
    if (filling_) return;
    AssignRecord(device, Combo1(device).Text(), The<Form1>().Combo1.ListCount());
}

void DB_SET::OK_Click() { Unload<DB_SET>(); }

}  // namespace vantrel
