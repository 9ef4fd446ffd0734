// Start and Stop. A run is one long execution of the Start handler, which yields to the event loop at fixed points;
// Stop only raises the flag that the run reads in its waits and at the end of a pass.

#include "acquire/live_tables.h"
#include "acquire/scan_poll.h"
#include "link/messaging.h"
#include "platform/toolkit/desktop.h"
#include "platform/toolkit/dialogs.h"
#include "platform/toolkit/events.h"
#include "plot/live_trend.h"
#include "plot/trend_scale.h"
#include "records/record_store.h"
#include "setup/plan_readback.h"
#include "state/shared.h"
#include "windows/Form1.h"
#include "windows/Form4.h"

namespace vantrel {

namespace {

constexpr int kStartWait = 1000;    // ms
constexpr int kIntervalWait = 200;  // ms

double ScanNumber() { return Val(The<Form4>().N_SCAN.Text()); }

/// The interval between passes, as a fraction of a day.
double Interval() {
    const DateFields time = LocalFields(The<Form4>().PerSan.Value());
    return (time.hour * 3600 + time.minute * 60 + time.second) / 86400.0;
}

void PrepareTables(Form1& main) {
    const BusyCursor busy;  // 20 channels take a second to be asked
    for (const Integer device : Each(DeviceCount)) {
        main.SSTab1.SetTabVisible(device, true);
        main.SSTab1.SetTab(device);
        main.SSTab1.SetTabCaption(device, main.Combo1.List(device));
        RefreshChannelFunctions(device);
        Make_Live_Table(device);
        ListFetchTime(device).clear();
    }
    main.SSTab1.SetTab(0);
    for (const Integer device : Each(main.MSFlexGrid2.Size())) {
        // Two headings, and one row without the old run's text.
        main.MSFlexGrid2(device).SetRows(2);
        main.MSFlexGrid2(device).SetRows(3);  // Kept: K-see-value
    }
}

/// Makes and opens the record of every device that has one. False: a record's file is not there.
bool OpenRecords() {
    const BusyCursor busy;  // while a long record is numbered
    // A device that Connect brings into the run, or a record that is assigned in it, waits for the next Start.
    for (int device = DeviceCount; device < RecordRs.Size(); ++device) RecordRs(device) = {};
    for (const Integer device : Each(DeviceCount)) {
        Reset_Trend(device);
        CreateRecord(device);
        ScanCount(device) = 0;
        if (!HasRecord(device)) {
            RecordRs(device) = {};
            continue;
        }
        if (!FileExists(RecordPath(device))) {
            MsgBox("The database is error!!Please choice a database again.");  // Kept: K-texts
            return false;
        }
        OpenRecord(device);
    }
    return true;
}

void WaitForStartTime() {
    if (The<Form4>().at_time.Value() != 1) return;
    // Kept: K-one-pass, K-reached
    while (!(StopRequested == -1 || Now() > The<Form4>().StartTime.Value())) {
        Sleep(kStartWait);
        DoEvents();
    }
}

void SendScanCount() {
    if (DeviceCount < 1) return;                                                     // Kept: K-first-device
    const double count = The<Form4>().OneShot() ? ScanNumber() : ActiveChannels(0);  // Kept: K-no-channel
    SendScpi("rout:scan:count " + Str(count), 0);
}

void SetTargets() {
    for (const Integer device : Each(DeviceCount)) {
        if (The<Form4>().OneShot()) {
            ScanTarget(device) = ScanNumber();  // Kept: K-16-bits
            ScanThreshold(device) =
                ScanTarget(device) > ActiveChannels(device) ? Integer(ActiveChannels(device)) : ScanTarget(device);
            StopRequested = -1;  // Kept: K-one-pass
        } else {
            ScanTarget(device) = ActiveChannels(device);
            ScanThreshold(device) = ActiveChannels(device);
        }
    }
}

void WaitInterval() {
    if (The<Form4>().per_scan_interval.Value() != 1) return;
    const DateTime end = Now() + Interval();
    while (!(StopRequested == -1 || Now() >= end)) {
        Sleep(kIntervalWait);
        DoEvents();
    }
}

/// One pass over all devices. True: the run goes on with another.
bool RunPass() {
    if (DeviceCount >= 1) SendScpi("rout:" + ScanModeWord(SlotOf(0)), 0);
    SetTargets();
    // Kept: K-connect-in-run
    for (const Integer device : Each(DeviceCount)) {
        Poll_Scan(device);
        DoEvents();
    }
    Draw_Trend();
    WaitInterval();  // Kept: K-interval
    // Kept: K-equal-number
    if (The<Form4>().stop_after_n_scan.Value() == 1 && ScanNumber() == ScanCount(0)) return false;
    if (The<Form4>().stop_time.Value() == 1 && Now() > The<Form4>().StopTime.Value()) return false;
    DoEvents();
    return StopRequested != -1;
}

void EndRun(Form1& main) {
    for (const Integer device : Each(DeviceCount))
        if (HasRecord(device)) CloseRecord(device);  // Kept: K-start-opens
    main.Command4_Click();
    // Kept: K-one-status
    if (!LinkIsGood()) {
        StopRequested = -1;
        main.Disable_Keep_View();
    }
    MsgBox("End of Job.");
}

}  // namespace

void Form1::Command3_Click() {
    exit_item.SetEnabled(false);
    Disable_All();
    Command4.SetEnabled(true);
    Command5.SetEnabled(false);
    Command6.SetEnabled(true);
    Command8.SetEnabled(true);  // Kept: K-dialog-holds
    PrepareTables(*this);
    StopRequested = 0;  // Kept: K-cleared-flag
    // Without a record's file everything stays as it is: Stop gives the controls back.
    // Kept: K-missing-record
    if (!OpenRecords()) return;
    WaitForStartTime();
    SendScanCount();
    while (RunPass()) {
    }
    EndRun(*this);
}

void Form1::Command4_Click() {
    Command5.SetEnabled(true);
    StopRequested = -1;
    Enable_All();  // Kept: K-start-nested
    exit_item.SetEnabled(true);
}

void Form1::Disable_All() { SwitchControls(false, false); }

void Form1::Disable_Keep_View() { SwitchControls(false, true); }

void Form1::Enable_All() { SwitchControls(true, true); }

void Form1::SwitchControls(bool run_controls, bool viewers) {
    set_draw.SetEnabled(run_controls);
    set_read.SetEnabled(run_controls);
    set_sc.SetEnabled(run_controls);
    Command3.SetEnabled(run_controls);
    Command4.SetEnabled(run_controls);
    Command6.SetEnabled(viewers);
    Command8.SetEnabled(run_controls);
    Command10.SetEnabled(viewers);
}

}  // namespace vantrel
