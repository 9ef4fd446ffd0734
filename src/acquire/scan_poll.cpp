#include "acquire/scan_poll.h"

#include "acquire/live_tables.h"
#include "link/messaging.h"
#include "platform/toolkit/events.h"
#include "records/record_writer.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/Form1.h"
#include "windows/Form4.h"

#include <cmath>

namespace vantrel {

namespace {

constexpr int kPollWait = 200;  // ms

double ReplyNumber() { return Val(ReplyBuffer); }

/// Time stamp of row `row` of the pass; an empty text where none was taken.
std::string FetchTime(Integer device, Integer row) {
    const auto& times = ListFetchTime(device);
    return row >= 0 && row < static_cast<int>(times.size()) ? times[static_cast<std::size_t>(row)] : "";
}

/// Fills ScanRow of `device` from channel `start` on with the fields from `f` on, and moves `f` behind those it
/// took. Each field that is not empty is one reading more in `got`.
void FillRow(Integer device, int start, const std::vector<std::string>& fields, Integer& f, Integer& got) {
    for (int ch = start; ch < ChannelCount(device); ++ch) {
        const auto at = static_cast<std::size_t>(f);
        // Kept: K-row-or-device
        if (IsOff(ChannelPlan(device, ch)) || at >= fields.size()) {
            ScanRow(device, ch) = " ";
            continue;
        }
        // Kept: K-empty-field
        if (!fields[at].empty()) {
            ScanRow(device, ch) = Trim(fields[at]);  // Kept: K-last-line-feed
            ++got;
        }
        ++f;
    }
}

/// Records and shows the row that the first `got` readings of the pass complete, with the time stamp that was taken for
/// it.
void HandOnRow(Integer device, Integer got) {
    const Integer row = std::ceil(Divide(got, ActiveChannels(device))) - 1;
    ScanTime = CDate(FetchTime(device, row));
    WriteRecord(device);
    Update_Tables(device);
}

void FinishPass(Integer device) {
    Fetch_Readings(device);
    ScanTarget(device) = 0;  // Kept: K-start-nested
}

// Kept: K-no-end
void PollOne(Integer device) {
    while (true) {
        SendScpi("rout:scan:state?", device);
        // Kept: K-equal-count
        if (ReplyNumber() == ScanThreshold(device)) {
            ScanThreshold(device) = ScanThreshold(device) + ActiveChannels(device);
            Add_Fetch_Time(device);
        }
        Sleep(kPollWait);
        DoEvents();
        if (!LinkIsGood()) {
            The<Form1>().Disable_All();
            return;
        }
        // Whatever a handler put into the buffer in the meantime is what is read here.
        // Kept: K-shared-buffer
        if (ReplyNumber() == ScanTarget(device)) {
            FinishPass(device);
            return;
        }
    }
}

/// Watches all devices at once, so that the stamps of the later ones are taken while `device` is waited for.
void PollSweeping(Integer device) {
    while (true) {
        for (const Integer i : Each(DeviceCount)) {
            SendScpi("rout:scan:state?", i);
            const double count = ReplyNumber();
            // Kept: K-equal-count, K-sweep-target
            if (count == ScanThreshold(i) || count == ScanTarget(device)) {
                ScanThreshold(i) = ScanThreshold(i) + ActiveChannels(i);  // Kept: K-moving-threshold
                Add_Fetch_Time(i);
            }
            if (i == device && count == ScanTarget(device)) {
                FinishPass(device);
                return;
            }
        }
        Sleep(kPollWait);  // Kept: K-sweep-status
        DoEvents();
    }
}

}  // namespace

void Add_Fetch_Time(Integer device) {
    ScanTime = Now();
    ListFetchTime(device).push_back(DateText(ScanTime));
}

void Poll_Scan(Integer device) {
    if (The<Form4>().OneShot())
        PollSweeping(device);
    else
        PollOne(device);
}

void Fetch_Readings(Integer device) {
    Integer got = 0;
    Integer start = 0;
    SendScpi("fetch?", device);
    while (true) {
        const std::vector<std::string> fields = Split(ReplyBuffer, ',');
        const Integer last = fields.size() - 1;
        Integer f = 0;
        Integer active = 0;
        do {
            const Integer taken_before = f;
            FillRow(device, start, fields, f, got);
            // A plan that has lost its channels since the last row, as by Connect, takes no field ever again.
            if (f == taken_before && start == 0 && got > 0) break;
            const double n = Val(The<Form4>().N_SCAN.Text());
            active = ActiveChannels(device);
            // Kept: K-number-row
            if (Mod(got, active) == 0 || n == got) {
                HandOnRow(device, got);
                start = 0;
            } else if (f == taken_before) {
                start = 0;  // the plan has no channel left for the fields: they begin the next row
            }
        } while (f <= last);
        start = Mod(got, active);  // Kept: K-cut-by-reads
        if (VisaStatus != kViSuccessMaxCnt) break;
        ReadScpi(device);
    }
    ListFetchTime(device).clear();
}

}  // namespace vantrel
