#include "setup/plan_writing.h"

#include "link/messaging.h"
#include "platform/toolkit/dialogs.h"
#include "setup/plan_readback.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/Form1.h"
#include "windows/Set_Dev.h"

namespace vantrel {

namespace {

constexpr double kTimerLimit = 9999.999;  // seconds, exclusive

void WriteTimer(const std::string& text, Integer device) {
    const double seconds = CDbl(text);
    if (seconds < 0 || seconds >= kTimerLimit) return;  // Kept: K-timer-range
    ScanTimerText(device) = text;
    SendScpi("ROUTe:SCAN:TIMER " + text, device);
}

/// A timer that is not a number, or too large for a float, ends SET where it would be converted. The scan mode of
/// `device` has been taken by then, but nothing has been sent to it; the devices before it have been set. The user
/// is told whose timer to correct. The working arrays stay as they are.
void RefuseTimer(Set_Dev& dialog, Integer device) {
    // The shown device may have been written and read back already.
    if (dialog.Dev_Sel >= 0 && dialog.Dev_Sel < device) dialog.Fill_Combos();
    dialog.Plan_Busy = false;
    MsgBox("The scan timer of " + The<Form1>().Combo1.List(device) + " is not a number of seconds: \"" +
           dialog.Timer_Text(device) + "\". Please key a number.");
    dialog.Timer_Set.SetFocus();
}

void WriteChannel(Set_Dev& dialog, Integer device, Integer i) {
    const Integer slot = SlotOf(device);
    const int half = ChannelCount(device) / 2;
    const bool master = i + 1 <= half;
    const std::string on_channel = " ,@" + Str(i + 1);

    ChannelPlan(slot, i) = dialog.Fun_Set(slot, i);
    // The contacts of the slave belong to its four-wire master.
    if (!master && TakesFourWires(dialog.Fun_Set(slot, i - half))) return;

    MapFunctionName(ChannelPlan(slot, i));
    SendScpi("rout:scan:func " + Str(i + 1) + "," + MapResult, device);
    const Sensor sensor = SensorOfWord(MapResult);
    if (sensor == Sensor::kRtd) {
        SendScpi("SENSe:TEMP:RTD:TYPE " + dialog.temp(i).Text() + on_channel, device);  // Kept: K-sensors-shared
        // Kept: K-slave-none
        if (master) {
            const bool four_wire = TakesFourWires(ChannelPlan(slot, i));
            SendScpi((four_wire ? "SENSe:TEMP:TRAN FRTD" : "SENSe:TEMP:TRAN RTD") + on_channel, device);
        }
    } else if (sensor == Sensor::kThermocouple) {
        SendScpi("SENSe:TCOuple:TYPE " + dialog.temp(i).Text() + on_channel, device);
    }
}

}  // namespace

void WriteDevicePlans() {
    Set_Dev& dialog = The<Set_Dev>();
    dialog.Plan_Busy = true;
    for (const Integer device : Each(DeviceCount)) {
        const Integer slot = SlotOf(device);
        ScanModeWord(slot) = dialog.Mode_Set(slot) == "SCAN" ? "SCAN" : "SCAN:STEP";  // Kept: K-typed-plan
        if (!IsNumeric(dialog.Timer_Text(device))) {
            RefuseTimer(dialog, device);
            return;
        }
        WriteTimer(dialog.Timer_Text(device), device);  // Kept: K-row-or-device
        for (const Integer i : Each(ChannelCount(device))) WriteChannel(dialog, device, i);
        ReadDevicePlan(device);
    }
    dialog.Fill_Combos();  // Kept: K-typed-device
    dialog.Plan_Busy = false;
    MsgBox("Setting complete!");  // Kept: K-complete
}

}  // namespace vantrel
