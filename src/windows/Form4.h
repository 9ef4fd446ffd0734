// The read schedule: when a run starts, how it is paced and when it ends. The run reads the controls themselves.
#pragma once

#include "platform/toolkit/controls.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct Form4 : Window {
    Form4();

    CheckBox at_time{*this, "at_time", {240, 240, 1695, 255}, "At Time"};
    DTPicker StartTime{*this, "StartTime", {2040, 120, 2415, 375}, "yyyy/MM/dd  hh:mm:ss"};  // Kept: K-12-hours
    CheckBox stop_time{*this, "stop_time", {240, 840, 1815, 255}, "Stop Time"};
    DTPicker StopTime{*this, "StopTime", {2040, 840, 2415, 375}, "yyyy/MM/dd  hh:mm:ss"};
    CheckBox per_scan_interval{*this, "per_scan_interval", {240, 1440, 1695, 375}, "Per Scan Interval"};
    DTPicker PerSan{*this, "PerSan", {2040, 1440, 2415, 375}, "HH:mm:ss"};
    CheckBox stop_after_n_scan{*this, "stop_after_n_scan", {240, 2160, 1695, 255}, "Stop after N scan"};
    TextBox N_SCAN{*this, "N_SCAN", {2040, 2040, 2145, 375}, "1"};
    UpDown UpDown1{*this, "UpDown1", {4186, 2040, 255, 375}, 1, 2000};
    CommandButton Command1{*this, "Command1", {240, 2640, 4095, 375}, "OK"};

    // Defined in setup/Form4.cpp:
    void Form_Load() override;
    void per_scan_interval_Click();
    void stop_after_n_scan_Click();
    void UpDown1_Change();
    void Command1_Click();  ///< OK: hides the dialog, so that the run can go on reading it

    /// One pass of the number of readings in N_SCAN, and no more.
    bool OneShot() const;

private:
    void AllowStopTime(bool allowed);
};

}  // namespace vantrel
