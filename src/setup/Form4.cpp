#include "windows/Form4.h"

#include "platform/numbers.h"
#include "platform/toolkit/dialogs.h"

namespace vantrel {

namespace {

constexpr int kCountLimit = 2000;
constexpr int kPacedUpDownLimit = 65536;
// Kept: K-count-box
constexpr int kUpDownLimit = 200;  // less than the count's own limit

void RefuseCount(TextBox& count, const std::string& limit) {
    count.SetText(limit);
    MsgBox("Scan count range is 1 to 2000");
}

}  // namespace

Form4::Form4() : Window("Form4", "Set Read", {4575, 3195}) {
    PerSan.SetValue(FromLocalFields({2000, 1, 1, 0, 0, 0}));
    N_SCAN.OnKeyPress = TypesWholeNumber;
    per_scan_interval.OnClick = [this] { per_scan_interval_Click(); };
    stop_after_n_scan.OnClick = [this] { stop_after_n_scan_Click(); };
    UpDown1.OnChange = [this] { UpDown1_Change(); };
    Command1.OnClick = [this] { Command1_Click(); };
}

void Form4::Form_Load() {
    StartTime.SetValue(Now());
    StopTime.SetValue(Now());
    stop_time.SetEnabled(false);
    StopTime.SetEnabled(false);
    if (stop_after_n_scan.Value() == 1 && per_scan_interval.Value() == 0) {
        stop_after_n_scan.SetCaption("Stop after N scan");
        UpDown1.SetMax(kPacedUpDownLimit);
    } else {
        stop_after_n_scan.SetCaption("Scan Count");
        UpDown1.SetMax(kCountLimit);
    }
}

bool Form4::OneShot() const { return stop_after_n_scan.Value() == 1 && per_scan_interval.Value() != 1; }

void Form4::AllowStopTime(bool allowed) {
    stop_time.SetEnabled(allowed);
    StopTime.SetEnabled(allowed);
    if (!allowed) stop_time.SetValue(0);
}

void Form4::per_scan_interval_Click() {
    // Kept: K-count-box
    stop_after_n_scan.SetCaption(per_scan_interval.Value() == 1 ? "Stop after N scan" : "Scan Count");
    if (per_scan_interval.Value() == 1 && stop_after_n_scan.Value() == 0) {
        AllowStopTime(true);
        UpDown1.SetMax(kPacedUpDownLimit);
    } else {
        AllowStopTime(false);
        UpDown1.SetMax(kUpDownLimit);
    }
}

void Form4::stop_after_n_scan_Click() {
    AllowStopTime(stop_after_n_scan.Value() == 0 && per_scan_interval.Value() == 1);
}

void Form4::UpDown1_Change() { N_SCAN.SetText(Str(UpDown1.Value())); }

void Form4::Command1_Click() {
    // Kept: K-count-check
    if (per_scan_interval.Value() == 0) {
        if (Val(N_SCAN.Text()) > kCountLimit) RefuseCount(N_SCAN, "2000");
        if (Val(N_SCAN.Text()) < 1) RefuseCount(N_SCAN, "1");
    }
    Hide();  // Kept: K-schedule-kept
}

}  // namespace vantrel
