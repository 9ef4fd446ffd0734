#include "windows/DCI_ACI_SET.h"

#include "platform/toolkit/dialogs.h"
#include "state/shared.h"

namespace vantrel {

// Kept: K-texts
DCI_ACI_SET::DCI_ACI_SET() : Window("DCI_ACI_SET", "", {6015, 1815}) {
    Command1.OnClick = [this] { Command1_Click(); };
}

void DCI_ACI_SET::Form_Load() {
    ohm_set.SetText(Str(ShuntOhm(ShuntDevice, ShuntChannel)));
    curr_set.SetText(Str(ShuntOffset(ShuntDevice, ShuntChannel)));
}

void DCI_ACI_SET::Command1_Click() {
    const double ohm = Val(ohm_set.Text());
    // Kept: K-shunt
    if (ohm <= 0) {
        MsgBox("Please key a number (>0).");
        return;
    }
    ShuntOhm(ShuntDevice, ShuntChannel) = ohm;  // Kept: K-row-or-device
    ShuntOffset(ShuntDevice, ShuntChannel) = Val(curr_set.Text());
    Unload<DCI_ACI_SET>();
}

}  // namespace vantrel
